// Rows, filter and selection of the list of keys.
#include "dialog/keys/key_list_model.h"

#include <utility>

#include "toolbox/keys.h"

namespace toolbox::keys {

Ids currentKeys() {
    Ids keys;
    for (auto it = UDManager::getKeywordIterator(); it();) keys.push_back(it.key());
    return keys;
}

void KeyListModel::setKeys(const Ids& ids) {
    keys_.clear();
    places_.clear();
    rows_.clear();
    keys_.reserve(ids.size());
    places_.reserve(ids.size());
    for (const UINT id : ids)
        if (places_.try_emplace(id, keys_.size()).second) keys_.push_back({id});
    std::erase_if(selected_, [&](UINT id) { return !contains(id); });
    setChosen(Ids(chosen_));
}

void KeyListModel::setChosen(const Ids& ids) {
    for (Entry& entry : keys_) entry.place = 0;
    Ids chosen;
    for (const UINT id : ids) {
        const auto found = places_.find(id);
        if (found == places_.end() || keys_[found->second].place != 0) continue;
        chosen.push_back(id);
        keys_[found->second].place = chosen.size();
    }
    chosen_ = std::move(chosen);
}

KeyListModel::Entry& KeyListModel::searchable(Entry& entry) {
    if (entry.searched.empty()) {
        const KeyTexts texts = texts_(entry.id);
        entry.searched = folded(texts.key.view());
        entry.keyLength = entry.searched.size();
        entry.searched += '\n';
        entry.searched += folded(texts.description.view());
    }
    return entry;
}

bool KeyListModel::isInSight(Entry& entry) {
    return (!group_ || group_->contains(entry.id)) &&
           (filter_.areNone() || filter_.areIn(searchable(entry).searched));
}

void KeyListModel::addRow(std::size_t place) {
    Entry& entry = keys_[place];
    entry.row = 0;
    if (!isInSight(entry)) return;
    rows_.push_back(place);
    entry.row = rows_.size();
}

void KeyListModel::arrange() {
    rows_.clear();
    rows_.reserve(keys_.size());
    for (const UINT id : chosen_) addRow(places_.at(id));
    for (std::size_t place = 0; place < keys_.size(); ++place)
        if (keys_[place].place == 0) addRow(place);
}

const KeyListModel::Entry* KeyListModel::entryOf(UINT id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? nullptr : &keys_[found->second];
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
        const Entry& entry = searchable(keys_[rows_[row]]);
        if (entry.searched.starts_with(wanted) && wanted.size() <= entry.keyLength) return row;
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
