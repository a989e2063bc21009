// One operation of a stack at a time: what it calls finds the stack busy, and may delete it.
#pragma once

#include "undo/history.h"

/// From the start of an operation to its end.
class UndoStack::Operation {
  public:
    explicit Operation(UndoStack& stack) : stack_(stack), watch_(stack.life_) {
        stack.phase_ = Phase::Editing;
    }
    ~Operation() { end(0); }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// The stack was deleted.
    [[nodiscard]] bool gone() const { return watch_.gone(); }
    /// Tells the listeners. False when the stack is gone.
    bool tell();
    /// The stack is at rest again, then what was dropped is deleted. Gives `result`; 0 when the
    /// stack is gone by then.
    template <class Result>
    Result end(Result result) {
        if (!ended_ && !gone()) {
            stack_.phase_ = Phase::Idle;
            stack_.endLeftGroups();
        }
        ended_ = true;
        dropped.clear();
        return gone() ? Result{} : result;
    }

    toolbox::undo::Entries dropped;  ///< edits that are not kept any more

  private:
    UndoStack& stack_;
    toolbox::detail::Watch<> watch_;
    bool ended_ = false;
};
