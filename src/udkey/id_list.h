// Ids in the order in which they were added, each once, with a quick answer to whether one is
// there.
#pragma once

#include <unordered_set>

#include "toolbox/containers.h"
#include "toolbox/win_types.h"

namespace toolbox::udkey {

class IdList {
  public:
    /// False when it is there already.
    bool add(UINT id) {
        if (!present_.insert(id).second) return false;
        ordered_.append(id);
        return true;
    }
    bool remove(UINT id) { return present_.erase(id) != 0 && ordered_.remove(id); }
    void clear() {
        present_.clear();
        ordered_.clear();
    }
    /// Replaces the content by the distinct ids of a list, which may be this one's.
    void assign(const RWTValOrderedVector<UINT>& ids) {
        IdList replacement;
        for (const UINT id : ids) replacement.add(id);
        *this = std::move(replacement);
    }

    [[nodiscard]] bool contains(UINT id) const { return present_.contains(id); }
    [[nodiscard]] const RWTValOrderedVector<UINT>& ids() const { return ordered_; }

  private:
    RWTValOrderedVector<UINT> ordered_;
    std::unordered_set<UINT> present_;
};

}  // namespace toolbox::udkey
