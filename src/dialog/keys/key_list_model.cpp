// Rows, filter and selection of the list of keys.
#include "dialog/keys/key_list_model.h"

#include <algorithm>
#include <utility>

#include "udkey/shared.h"

namespace toolbox::keys {

Ids currentKeys() {
    Ids keys;
    const udkey::Shared* const all = udkey::shared().get();
    if (!all) return keys;
    keys.reserve(all->keys.entries().size());
    for (const udkey::KeyEntry& entry : all->keys.entries()) keys.push_back(entry.id());
    return keys;
}

void KeyListModel::setKeys(const Ids& ids) {
    keys_.clear();
    places_.clear();
    searched_.clear();
    rows_.clear();
    keys_.reserve(ids.size());
    places_.reserve(ids.size());
    for (const UINT id : ids) {
        places_.push_back({id, keys_.size()});
        keys_.push_back({id});
    }
    // As they mostly are.
    if (!std::ranges::is_sorted(places_, {}, &Place::id))
        std::ranges::sort(places_, {}, &Place::id);
    std::erase_if(selected_, [&](UINT id) { return !contains(id); });
    setChosen(Ids(chosen_));
}

std::size_t KeyListModel::find(UINT id) const {
    const auto found = std::ranges::lower_bound(places_, id, {}, &Place::id);
    return found != places_.end() && found->id == id ? found->at : keys_.size();
}

void KeyListModel::setChosen(const Ids& ids) {
    for (Entry& entry : keys_) entry.place = 0;
    Ids chosen;
    for (const UINT id : ids) {
        const std::size_t at = find(id);
        if (at == keys_.size() || keys_[at].place != 0) continue;
        chosen.push_back(id);
        keys_[at].place = chosen.size();
    }
    chosen_ = std::move(chosen);
}

const KeyListModel::Searched& KeyListModel::searched(std::size_t place) {
    searched_.resize(keys_.size());
    Searched& searched = searched_[place];
    if (searched.text.empty()) {
        const KeyTexts texts = texts_(keys_[place].id);
        searched.text = folded(texts.key.view());
        searched.keyLength = searched.text.size();
        searched.text += '\n';
        searched.text += folded(texts.description.view());
    }
    return searched;
}

bool KeyListModel::isInSight(std::size_t place) {
    return (!group_ || group_->contains(keys_[place].id)) &&
           (filter_.areNone() || filter_.areIn(searched(place).text));
}

void KeyListModel::addRow(std::size_t place) {
    keys_[place].row = 0;
    if (!isInSight(place)) return;
    rows_.push_back(place);
    keys_[place].row = rows_.size();
}

void KeyListModel::arrange() {
    rows_.clear();
    rows_.reserve(keys_.size());
    for (const UINT id : chosen_) addRow(find(id));
    for (std::size_t place = 0; place < keys_.size(); ++place)
        if (keys_[place].place == 0) addRow(place);
}

const KeyListModel::Entry* KeyListModel::entryOf(UINT id) const {
    const std::size_t at = find(id);
    return at < keys_.size() ? &keys_[at] : nullptr;
}

std::optional<std::size_t> KeyListModel::rowOf(UINT id) const {
    const Entry* const entry = entryOf(id);
    return entry && entry->row > 0 ? std::optional(entry->row - 1) : std::nullopt;
}

Ids KeyListModel::ids() const {
    Ids ids;
    ids.reserve(rows_.size());
    for (const std::size_t place : rows_) ids.push_back(keys_[place].id);
    return ids;
}

std::optional<std::size_t> KeyListModel::find(std::string_view text, std::size_t from) {
    const std::string wanted = folded(text);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::size_t row = (from + i) % rows_.size();
        const Searched& key = searched(rows_[row]);
        if (key.text.starts_with(wanted) && wanted.size() <= key.keyLength) return row;
    }
    return std::nullopt;
}

std::size_t KeyListModel::placeOf(UINT id) const {
    const Entry* const entry = entryOf(id);
    return entry ? entry->place : 0;
}

void KeyListModel::select(const Ids& ids) {
    selected_.clear();
    for (const UINT id : ids)
        if (contains(id)) selected_.insert(id);
}

Ids KeyListModel::selection() const {
    Ids ids;
    if (selected_.empty()) return ids;
    for (const std::size_t place : rows_)
        if (isSelected(keys_[place].id)) ids.push_back(keys_[place].id);
    return ids;
}

std::size_t KeyListModel::chosenRows() const {
    std::size_t count = 0;
    while (count < rows_.size() && keys_[rows_[count]].place != 0) ++count;
    return count;
}

}  // namespace toolbox::keys
