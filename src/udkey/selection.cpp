// The cursor is an index into the selected ids; -1 is none.
#include "udkey/selection.h"

#include <algorithm>

namespace toolbox::udkey {

bool Selection::add(UINT id) {
    if (!list_.add(id)) return false;
    current_ = count() - 1;
    return true;
}

void Selection::assign(const RWTValOrderedVector<UINT>& ids) {
    list_.assign(ids);
    current_ = count() == 1 ? 0 : -1;
}

void Selection::clear() {
    list_.clear();
    leave();
}

bool Selection::moveToFirst() {
    if (count() == 0) return false;
    current_ = 0;
    return true;
}

bool Selection::moveToNext() {
    if (current_ + 1 >= count()) return false;
    ++current_;
    return true;
}

bool Selection::moveTo(UINT id) {
    if (!list_.contains(id)) return false;
    current_ = static_cast<int>(std::find(ids().begin(), ids().end(), id) - ids().begin());
    return true;
}

std::optional<UINT> Selection::current() {
    if (current_ < 0) return std::nullopt;
    return ids()[static_cast<std::size_t>(current_)];
}

}  // namespace toolbox::udkey
