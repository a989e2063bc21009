// A sorted list while that costs nothing, then a hash table.
#include "commands/identifiers.h"

#include <algorithm>

namespace tbfile {

bool Identifiers::has(std::uint32_t id) const {
    return table_.empty() ? std::ranges::binary_search(rising_, id) : table_.contains(id);
}

bool Identifiers::add(std::uint32_t id) {
    if (table_.empty() && (rising_.empty() || rising_.back() < id)) {
        rising_.push_back(id);
        return true;
    }
    if (table_.empty()) {
        table_.reserve(rising_.size() * 2);
        table_.insert(rising_.begin(), rising_.end());
        rising_ = {};
    }
    return table_.insert(id).second;
}

}  // namespace tbfile
