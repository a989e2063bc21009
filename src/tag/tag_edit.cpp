// An edit knows the state of each of its tags before and after, and puts the set into either.
#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "tag/tag_bytes.h"
#include "tag/tag_texts.h"
#include "toolbox/tag_edits.h"

struct TvTagEdit::Wish {
    enum What { Fields, Leave, Front, Back, Arrive };
    TvTagId id = 0;                      // 0 for a new tag
    What what = Fields;                  // what becomes of it
    std::shared_ptr<const TvTag> tag{};  // its new fields; null: they stay
};

namespace {

using States = std::vector<TvTagState>;

/// What is stored of both is the same: zeros of different sign are equal, but not stored alike.
bool isSame(const TvTagState& a, const TvTagState& b) {
    if (!a.tag || !b.tag) return !a.tag && !b.tag;
    if (a.place != b.place || a.tag == b.tag) return a.place == b.place;
    std::string fields;
    std::string others;
    toolbox::tag::addFields(fields, *a.tag);
    toolbox::tag::addFields(others, *b.tag);
    return fields == others;
}

bool areSame(const States& a, const States& b) {
    return std::ranges::equal(a, b, isSame);
}

std::size_t bytesOf(const States& states) {
    std::size_t bytes = states.size() * sizeof(TvTagState);
    for (const TvTagState& each : states)
        if (each.tag) bytes += sizeof(TvTag) + each.tag->text.capacity();
    return bytes;
}

}  // namespace

TvTagEdit::TvTagEdit(TvTagSet& set, Action action) : set_(set), action_(action) {}

TvTagEdit::~TvTagEdit() = default;

TvTagEdit::Wish& TvTagEdit::wish(TvTagId id) {
    const auto [known, isFirst] = wishOf_.try_emplace(id, wishes_.size());
    if (!isFirst) return wishes_[known->second] = Wish{id};
    return wishes_.emplace_back(Wish{id});
}

void TvTagEdit::add(const TvTag& tag) {
    wishes_.push_back({0, Wish::Arrive, std::make_shared<const TvTag>(tag)});
}

void TvTagEdit::change(TvTagId id, const TvTag& tag) {
    wish(id).tag = std::make_shared<const TvTag>(tag);
}

void TvTagEdit::remove(TvTagId id) {
    wish(id).what = Wish::Leave;
}

void TvTagEdit::bringToFront(std::span<const TvTagId> ids) {
    for (const TvTagId id : ids) wish(id).what = Wish::Front;
}

void TvTagEdit::sendToBack(std::span<const TvTagId> ids) {
    for (const TvTagId id : ids) wish(id).what = Wish::Back;
}

int TvTagEdit::check(CString* why) const {
    return std::ranges::all_of(wishes_,
                               [=](const Wish& each) { return !each.tag || each.tag->check(why); });
}

/// What the wishes come to, in the set as it is. False when it lacks one of the tags.
// NOLINTNEXTLINE(readability-function-cognitive-complexity): one case for each kind of wish
bool TvTagEdit::prepare() {
    std::array<std::vector<TvTagId>, 3> order;  // below the others, as before, on top
    std::vector<TvTagState> before;
    for (const TvTagId id : set_.ids()) {
        const auto wished = wishOf_.find(id);
        const bool isWished = wished != wishOf_.end();
        if (isWished) before.push_back({id, set_.find(id), set_.place(id)});
        const Wish::What what = isWished ? wishes_[wished->second].what : Wish::Fields;
        if (what != Wish::Leave)
            order[what == Wish::Back ? 0 : what == Wish::Front ? 2 : 1].push_back(id);
    }
    std::unordered_map<TvTagId, std::size_t> places;
    for (const auto& part : order)
        for (const TvTagId id : part) places.emplace(id, places.size());

    std::vector<TvTagState> after;
    for (const TvTagState& was : before) {
        const Wish& wished = wishes_[wishOf_.at(was.id)];
        const auto place = places.find(was.id);
        if (place == places.end())
            after.push_back({was.id});
        else
            after.push_back({was.id, wished.tag ? wished.tag : was.tag, place->second});
    }
    std::size_t place = places.size();
    for (const Wish& each : wishes_) {
        if (each.what != Wish::Arrive) continue;
        before.push_back({});
        after.push_back({0, each.tag, place++});
    }
    if (after.size() != wishes_.size()) return false;
    before_ = std::move(before);
    after_ = std::move(after);
    return true;
}

bool TvTagEdit::isAt(const std::vector<TvTagState>& states) const {
    return std::ranges::all_of(states, [this](const TvTagState& each) {
        const auto tag = set_.find(each.id);
        return isSame({each.id, tag, tag ? set_.place(each.id) : 0}, each);
    });
}

Edit::Outcome TvTagEdit::apply() {
    const bool isFirst = after_.empty();
    if (isFirst && !prepare()) return Failed;
    if (areSame(before_, after_)) return Pointless;
    if (!isFirst && !isAt(before_)) return Failed;
    wishes_.clear();
    wishOf_.clear();
    return set_.putStates(after_) ? Done : Failed;
}

int TvTagEdit::revert() {
    if (!isAt(after_)) return 0;
    // New tags have got their numbers.
    for (std::size_t i = 0; i < after_.size(); ++i) before_[i].id = after_[i].id;
    return set_.putStates(before_);
}

CString TvTagEdit::text() const {
    const std::size_t count = wishes_.empty() ? after_.size() : wishes_.size();
    return toolbox::tag::stepText(action_, count);
}

std::size_t TvTagEdit::size() const {
    return sizeof *this + bytesOf(before_) + bytesOf(after_);
}

Edit::Merging TvTagEdit::merge(Edit& later) {
    auto* const other = dynamic_cast<TvTagEdit*>(&later);
    const bool isOfTheSame =
        other && &other->set_ == &set_ &&
        std::ranges::equal(after_, other->before_, {}, &TvTagState::id, &TvTagState::id) &&
        areSame(after_, other->before_);
    if (!isOfTheSame) return Apart;
    after_ = std::move(other->after_);
    return areSame(before_, after_) ? Annulled : Merged;
}
