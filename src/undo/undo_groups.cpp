// Groups: their edits are kept apart until the outermost closes, so that taking them back leaves
// everything else alone.
#include <algorithm>
#include <utility>

#include "undo/calls.h"
#include "undo/operation.h"

int UndoStack::openGroup(const CString& text) {
    if (phase_ != Phase::Idle) return 0;
    Operation operation(*this);
    history_->openGroup(text);
    return history_->depth() > 1 || operation.tell();
}

int UndoStack::closeGroup() {
    if (phase_ != Phase::Idle || history_->depth() == 0) return 0;
    Operation operation(*this);
    const bool stands = history_->takesEdits();
    // What could not be rolled back is tried once more.
    if (!stands && !history_->isShut()) rollBack(operation);
    if (operation.gone()) return 0;
    history_->endGroup(operation.dropped);
    if (history_->depth() > 0) {
        if (!stands && !history_->isShut()) failGroup(operation);
        if (stands) return 1;
    }
    return operation.end(operation.tell() && stands);
}

int UndoStack::cancelGroup() {
    if (phase_ != Phase::Idle || history_->depth() == 0) return 0;
    Operation operation(*this);
    const bool whole = history_->isShut() || rollBack(operation);
    if (operation.gone()) return 0;
    history_->endGroup(operation.dropped);
    return operation.end(operation.tell() && whole);
}

std::size_t UndoStack::groupDepth() const {
    return history_->depth();
}

void UndoStack::failGroup(Operation& operation) {
    if (history_->isShut()) return;
    history_->fail();
    rollBack(operation);
}

bool UndoStack::rollBack(Operation& operation) {
    while (const toolbox::undo::Entry* const last = history_->lastOfGroup()) {
        const std::shared_ptr<Edit> edit = last->edit;
        const bool done = toolbox::undo::reverted(*edit);
        if (operation.gone() || !done) return false;
        history_->dropLastOfGroup(operation.dropped);
    }
    return true;
}

void UndoStack::endLeftGroups() {
    const std::size_t depth = std::exchange(leftGroup_, 0);
    if (depth == 0) return;
    const toolbox::detail::Watch<> self(life_);
    while (!self.gone() && history_->depth() >= depth) cancelGroup();
}

UndoGroup::UndoGroup(UndoStack& stack, const CString& text)
    : stack_(stack), watch_(stack.life_), depth_(stack.openGroup(text) ? stack.groupDepth() : 0) {}

UndoGroup::~UndoGroup() {
    if (!isOpen()) return;
    if (stack_.phase_ == UndoStack::Phase::Idle)
        cancel();
    else  // when what is under way ends
        stack_.leftGroup_ = stack_.leftGroup_ > 0 ? std::min(stack_.leftGroup_, depth_) : depth_;
}

bool UndoGroup::isOpen() const {
    return !watch_.gone() && depth_ > 0 && stack_.groupDepth() >= depth_;
}

int UndoGroup::close() {
    return end(&UndoStack::closeGroup);
}

int UndoGroup::cancel() {
    return end(&UndoStack::cancelGroup);
}

int UndoGroup::end(int (UndoStack::*endOne)()) {
    int done = 0;
    while (isOpen()) {
        if (stack_.phase_ != UndoStack::Phase::Idle) return 0;
        done = (stack_.*endOne)();
    }
    depth_ = 0;
    return done;
}
