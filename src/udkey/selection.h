// The ids that a manager keeps in order: its matching set and, with a cursor, its selection.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "toolbox/containers.h"
#include "toolbox/win_types.h"
#include "udkey/lookup.h"

namespace toolbox::udkey {

/// Ids in the order in which they were added, each once. Adding, removing and asking for one cost
/// the same whatever their number.
class IdList {
  public:
    /// False when it is there already.
    bool add(UINT id) {
        if (contains(id)) return false;
        places_.add(id, ordered_.entries());
        ordered_.append(id);
        return true;
    }
    /// False when it is not there.
    bool remove(UINT id) {
        if (!places_.remove(id)) return false;
        ++gaps_;
        if (gaps_ > ordered_.entries() / 2) closeGaps();
        return true;
    }
    void clear() { *this = IdList(); }
    /// Replaces the content by the distinct ids of a list, which may be this one's.
    void assign(const RWTValOrderedVector<UINT>& ids) {
        IdList replacement;
        for (const UINT id : ids) replacement.add(id);
        *this = std::move(replacement);
    }

    [[nodiscard]] bool contains(UINT id) const { return places_.find(id) != nullptr; }
    /// In the order of adding; valid until a change.
    [[nodiscard]] const RWTValOrderedVector<UINT>& ids() {
        if (gaps_ > 0) closeGaps();
        return ordered_;
    }

  private:
    void closeGaps() {
        IdList dense;
        for (std::size_t at = 0; at < ordered_.entries(); ++at) {
            const std::size_t* place = places_.find(ordered_[at]);
            if (place && *place == at) dense.add(ordered_[at]);
        }
        *this = std::move(dense);
    }

    RWTValOrderedVector<UINT> ordered_;  ///< those that were removed too, for a while
    ById<std::size_t> places_;           ///< of those that are there
    std::size_t gaps_ = 0;               ///< ids of ordered_ that are not
};

/// The selected ids and the cursor on one of them.
class Selection {
  public:
    /// Appends an id and puts the cursor on it; false when it is selected already.
    bool add(UINT id);
    /// The cursor is on the only id of a list, else nowhere.
    void assign(const RWTValOrderedVector<UINT>& ids);
    void clear();

    bool moveToFirst();
    bool moveToNext();
    bool moveTo(UINT id);
    void leave() { current_ = -1; }

    [[nodiscard]] std::optional<UINT> current();
    [[nodiscard]] const RWTValOrderedVector<UINT>& ids() { return list_.ids(); }

  private:
    [[nodiscard]] int count() { return static_cast<int>(list_.ids().entries()); }

    IdList list_;
    int current_ = -1;
};

}  // namespace toolbox::udkey
