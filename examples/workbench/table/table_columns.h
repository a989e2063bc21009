// The columns of a virtual list that shows user-defined keys.
#pragma once

#include <vector>

#include "toolbox/controls.h"
#include "toolbox/keys.h"

class TableColumns {
  public:
    /// Brings the list's columns to the manager's selection of keys. A column whose heading and
    /// format width did not change keeps the width that the user gave it.
    void show(HWND list, UDManager& keys);

    [[nodiscard]] int count() const { return static_cast<int>(columns_.size()); }
    /// 0 for a column that there is not.
    [[nodiscard]] UINT key(int column) const;
    [[nodiscard]] const CString& heading(int column) const {
        return columns_[static_cast<std::size_t>(column)].heading;
    }
    /// In the order of the columns' indices.
    [[nodiscard]] std::vector<UINT> keys() const;
    /// -1 when there is none.
    [[nodiscard]] int indexOf(UINT key) const;
    /// The keys in the order in which the user dragged the columns.
    [[nodiscard]] std::vector<UINT> dragged(HWND list) const;

  private:
    struct Column {
        UINT key;
        CString heading;  ///< "M [kNm]"
        int characters;   ///< of the format
        Justification side;
        int width = 0;  ///< pixels

        bool operator==(const Column&) const = default;
        [[nodiscard]] bool looksLike(const Column& other) const {
            return key == other.key && heading == other.heading && characters == other.characters;
        }
    };
    static Column columnFor(UDManager& keys, UINT key);

    std::vector<Column> columns_;  // by their index in the list
};
