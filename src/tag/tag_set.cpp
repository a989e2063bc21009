// The set: tags in drawing order, with a table of the places where they stand. Tags are shared with
// the layouts that were made of them, so a change puts a new one in the place of the old.
#include <algorithm>
#include <limits>
#include <utility>

#include "canvas/styles.h"
#include "tag/sentences.h"
#include "toolbox/tags.h"

using toolbox::tag::refuse;
using toolbox::tag::Sentence;

TvTagId TvTagSet::add(const TvTag& tag, CString* why) {
    if (!tag.check(why)) return 0;
    if (last_ == std::numeric_limits<TvTagId>::max()) {
        refuse(why, Sentence::noNumber);
        return 0;
    }
    const TvTagId id = last_ + 1;
    put(count(), {id, std::make_shared<const TvTag>(tag)});
    tell(true, false);
    return id;
}

int TvTagSet::insert(std::size_t place, TvTagId id, const TvTag& tag) {
    if (id == 0 || has(id) || place > count() || !tag.check(nullptr)) return 0;
    put(place, {id, std::make_shared<const TvTag>(tag)});
    return tell(true, false);
}

void TvTagSet::put(std::size_t place, Entry entry) {
    last_ = std::max(last_, entry.id);
    places_.emplace(entry.id, place);
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(place), std::move(entry));
    number(place, count());
}

/// Enters the places of some entries anew.
void TvTagSet::number(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) places_[entries_[i].id] = i;
}

int TvTagSet::remove(TvTagId id) {
    return remove(std::span<const TvTagId>(&id, 1));
}

int TvTagSet::remove(std::span<const TvTagId> ids) {
    if (!std::all_of(ids.begin(), ids.end(), [this](TvTagId id) { return has(id); })) return 0;
    if (ids.empty()) return 1;
    std::size_t first = count();
    bool selected = false;
    for (const TvTagId id : ids) {
        const auto found = places_.find(id);
        if (found == places_.end()) continue;  // twice in the list
        first = std::min(first, found->second);
        selected = selected || entries_[found->second].selected;
        places_.erase(found);
    }
    std::erase_if(entries_, [this](const Entry& each) { return !has(each.id); });
    number(first, count());
    return tell(true, selected);
}

int TvTagSet::change(TvTagId id, const TvTag& tag, CString* why) {
    const auto found = places_.find(id);
    if (found == places_.end() || !tag.check(why)) return 0;
    std::shared_ptr<const TvTag>& old = entries_[found->second].tag;
    if (*old == tag) return 1;
    old = std::make_shared<const TvTag>(tag);
    return tell(true, false);
}

int TvTagSet::move(std::span<const TvTagMove> moves) {
    const auto isMove = [this](const TvTagMove& move) {
        return has(move.id) && toolbox::canvas::isNear(move.offset);
    };
    if (!std::all_of(moves.begin(), moves.end(), isMove)) return 0;
    bool changed = false;
    for (const TvTagMove& move : moves) {
        std::shared_ptr<const TvTag>& old = entries_[places_[move.id]].tag;
        TvTag tag = *old;
        tag.offset = move.offset;
        tag.unplaced = move.unplaced;
        if (tag == *old) continue;
        old = std::make_shared<const TvTag>(std::move(tag));
        changed = true;
    }
    return changed ? tell(true, false) : 1;
}

void TvTagSet::clear() {
    const std::vector<TvTagId> all = ids();
    remove(std::span(all));
}

int TvTagSet::moveTo(TvTagId id, std::size_t place) {
    const auto found = places_.find(id);
    if (found == places_.end()) return 0;
    const std::size_t from = found->second;
    const std::size_t to = std::min(place, count() - 1);
    if (from == to) return 1;
    const auto at = [this](std::size_t i) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(i);
    };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    number(std::min(from, to), std::max(from, to) + 1);
    return tell(true, false);
}

int TvTagSet::bringToFront(TvTagId id) {
    return moveTo(id, count());
}

int TvTagSet::sendToBack(TvTagId id) {
    return moveTo(id, 0);
}

std::vector<TvTagId> TvTagSet::ids() const {
    std::vector<TvTagId> all;
    all.reserve(count());
    for (const Entry& each : entries_) all.push_back(each.id);
    return all;
}

std::size_t TvTagSet::place(TvTagId id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? count() : found->second;
}

std::shared_ptr<const TvTag> TvTagSet::find(TvTagId id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? nullptr : entries_[found->second].tag;
}

int TvTagSet::setSelected(TvTagId id, bool selected) {
    const auto found = places_.find(id);
    if (found == places_.end()) return 0;
    if (entries_[found->second].selected == selected) return 1;
    entries_[found->second].selected = selected;
    return tell(false, true);
}

int TvTagSet::select(TvTagId id) {
    return setSelected(id, true);
}

int TvTagSet::deselect(TvTagId id) {
    return setSelected(id, false);
}

void TvTagSet::setSelection(std::span<const TvTagId> ids) {
    const std::unordered_set<TvTagId> wanted(ids.begin(), ids.end());
    bool changed = false;
    for (Entry& each : entries_) {
        const bool selected = wanted.contains(each.id);
        changed = changed || each.selected != selected;
        each.selected = selected;
    }
    if (changed) tell(false, true);
}

bool TvTagSet::isSelected(TvTagId id) const {
    const auto found = places_.find(id);
    return found != places_.end() && entries_[found->second].selected;
}

std::vector<TvTagId> TvTagSet::selection() const {
    std::vector<TvTagId> selected;
    for (const Entry& each : entries_)
        if (each.selected) selected.push_back(each.id);
    return selected;
}
