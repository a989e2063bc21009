// Rows, filter and selection of the list of keys.
#include "dialog/keys/key_list_model.h"

#include <utility>

#include "toolbox/keys.h"

namespace toolbox::keys {

std::vector<ListedKey> currentKeys() {
    std::vector<ListedKey> keys;
    for (auto it = UDManager::getKeywordIterator(); it();) {
        const UDKeyData& data = it.value();
        keys.push_back({it.key(), CString(data.getKeyStr()), CString(data.getDescStr()),
                        CString(data.getHeaderStr())});
    }
    return keys;
}

void KeyListModel::setKeys(std::vector<ListedKey> keys) {
    keys_.clear();
    places_.clear();
    keys_.reserve(keys.size());
    places_.reserve(keys.size());
    for (ListedKey& key : keys) {
        if (!places_.try_emplace(key.id, keys_.size()).second) continue;
        std::string searched = folded(key.key.view());
        const std::size_t length = searched.size();
        searched += '\n';
        searched += folded(key.description.view());
        keys_.push_back({std::move(key), std::move(searched), length});
    }
    std::erase_if(selected_, [&](UINT id) { return !contains(id); });
    setChosen(std::exchange(chosen_, {}));
}

void KeyListModel::setChosen(const Ids& ids) {
    Ids chosen;
    order_.clear();
    for (const UINT id : ids)
        if (contains(id) && order_.try_emplace(id, chosen.size() + 1).second) chosen.push_back(id);
    chosen_ = std::move(chosen);
}

bool KeyListModel::isInSight(const Entry& entry) const {
    return (!group_ || group_->contains(entry.shown.id)) && filter_.areIn(entry.searched);
}

void KeyListModel::addRow(UINT id) {
    rowsById_.emplace(id, rows_.size());
    rows_.push_back(places_.at(id));
}

void KeyListModel::arrange() {
    rows_.clear();
    rowsById_.clear();
    for (const UINT id : chosen_)
        if (isInSight(keys_[places_.at(id)])) addRow(id);
    for (const Entry& entry : keys_)
        if (placeOf(entry.shown.id) == 0 && isInSight(entry)) addRow(entry.shown.id);
}

std::optional<std::size_t> KeyListModel::rowOf(UINT id) const {
    const auto found = rowsById_.find(id);
    return found == rowsById_.end() ? std::nullopt : std::optional(found->second);
}

Ids KeyListModel::ids() const {
    Ids ids;
    ids.reserve(rows_.size());
    for (const std::size_t place : rows_) ids.push_back(keys_[place].shown.id);
    return ids;
}

std::optional<std::size_t> KeyListModel::find(std::string_view text, std::size_t from) const {
    const std::string wanted = folded(text);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::size_t row = (from + i) % rows_.size();
        const Entry& entry = keys_[rows_[row]];
        if (entry.searched.starts_with(wanted) && wanted.size() <= entry.keyLength) return row;
    }
    return std::nullopt;
}

std::size_t KeyListModel::placeOf(UINT id) const {
    const auto found = order_.find(id);
    return found == order_.end() ? 0 : found->second;
}

void KeyListModel::select(const Ids& ids) {
    selected_.clear();
    for (const UINT id : ids)
        if (contains(id)) selected_.insert(id);
}

Ids KeyListModel::selection() const {
    Ids ids;
    for (const std::size_t place : rows_)
        if (isSelected(keys_[place].shown.id)) ids.push_back(keys_[place].shown.id);
    return ids;
}

std::size_t KeyListModel::chosenRows() const {
    std::size_t count = 0;
    while (count < rows_.size() && placeOf(row(count).id) != 0) ++count;
    return count;
}

}  // namespace toolbox::keys
