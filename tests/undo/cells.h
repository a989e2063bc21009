// A small document with an edit that tests can make fail, throw, and do anything while it is
// called.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolbox/undo.h"

struct Cells {
    std::vector<int> values = std::vector<int>(5);

    /// Called first by every operation of an edit, with its name; false makes it fail.
    using Hook = std::function<bool(std::string_view what)>;
    Hook hook = [](std::string_view) { return true; };
};

class SetCell : public Edit {
  public:
    SetCell(Cells& cells, std::size_t cell, int value)
        : cells_(cells), cell_(cell), other_(value) {}
    ~SetCell() override { cells_.hook("destroy"); }
    SetCell(const SetCell&) = delete;
    SetCell& operator=(const SetCell&) = delete;

    Outcome apply() override {
        if (!cells_.hook("apply")) return Failed;
        if (cells_.values[cell_] == other_) return Pointless;
        std::swap(cells_.values[cell_], other_);
        return Done;
    }
    int revert() override {
        if (!cells_.hook("revert")) return 0;
        std::swap(cells_.values[cell_], other_);
        return 1;
    }
    CString text() const override { return ("cell " + std::to_string(cell_)).c_str(); }
    std::size_t size() const override { return cells_.hook("size") ? 10 : 0; }
    Merging merge(Edit& later) override {
        const auto& other = static_cast<SetCell&>(later);
        if (!cells_.hook("merge") || other.cell_ != cell_) return Apart;
        return cells_.values[cell_] == other_ ? Annulled : Merged;
    }

  private:
    Cells& cells_;
    std::size_t cell_;
    int other_;  // the value that the cell has not
};

/// Sets a cell by way of a stack.
inline Edit::Outcome set(UndoStack& stack, Cells& cells, std::size_t cell, int value,
                         unsigned gesture = 0) {
    return stack.perform(std::make_unique<SetCell>(cells, cell, value), gesture);
}
