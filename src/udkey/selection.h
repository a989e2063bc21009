// The selected ids and the cursor on one of them.
#pragma once

#include <cstddef>
#include <optional>

#include "udkey/id_list.h"

namespace toolbox::udkey {

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

    [[nodiscard]] std::optional<UINT> current() const;
    [[nodiscard]] const RWTValOrderedVector<UINT>& ids() const { return list_.ids(); }

  private:
    [[nodiscard]] int count() const { return static_cast<int>(list_.ids().entries()); }

    IdList list_;
    int current_ = -1;
};

}  // namespace toolbox::udkey
