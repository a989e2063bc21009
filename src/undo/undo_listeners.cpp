// Who is told of a stack's changes, and of its end.
#include <new>

#include "undo/operation.h"

UndoListener::~UndoListener() {
    if (stack_) stack_->listeners_.remove(this);
}

int UndoListener::listenTo(UndoStack* stack) {
    if (stack == stack_) return 1;
    if (stack && (stack->phase_ == UndoStack::Phase::Ending || !stack->listeners_.add(this)))
        return 0;
    if (stack_) stack_->listeners_.remove(this);
    stack_ = stack;
    return 1;
}

UndoStack::~UndoStack() {
    phase_ = Phase::Ending;
    while (listeners_.nItem() > 0) {
        UndoListener* const listener = listeners_[0];
        listeners_.remove(listener);
        listener->stack_ = nullptr;
        tell(listener);
    }
    toolbox::undo::Entries dropped;
    history_->clear(dropped);
}

void UndoStack::tell(UndoListener* listener) {
    try {
        listener->undoChanged();
    } catch (const std::bad_alloc&) {
        // It shows what it had; the others are told all the same.
    }
}

bool UndoStack::Operation::tell() {
    if (gone()) return false;
    stack_.phase_ = Phase::Telling;
    return tellEach(stack_.listeners_, watch_, [](UndoListener* each) { UndoStack::tell(each); });
}
