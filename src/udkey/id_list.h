// Ids in the order in which they were added, each once, with a quick answer to whether one is
// there.
#pragma once

#include "toolbox/containers.h"
#include "toolbox/win_types.h"
#include "udkey/lookup.h"

namespace toolbox::udkey {

class IdList {
  public:
    /// False when it is there already.
    bool add(UINT id) {
        if (contains(id)) return false;
        present_.add(id, {});
        ordered_.append(id);
        return true;
    }
    bool remove(UINT id) {
        if (!contains(id) || !ordered_.remove(id)) return false;
        present_.clear();
        for (const UINT left : ordered_) present_.add(left, {});
        return true;
    }
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

    [[nodiscard]] bool contains(UINT id) const { return present_.find(id) != nullptr; }
    [[nodiscard]] const RWTValOrderedVector<UINT>& ids() const { return ordered_; }

  private:
    RWTValOrderedVector<UINT> ordered_;
    struct Nothing {};
    ById<Nothing> present_;
};

}  // namespace toolbox::udkey
