// Calls edits, and moves them only when they have done what they should. An edit is held while it
// is called, since it may delete the stack; after every call is asked whether it has.
#include <new>

#include "undo/calls.h"
#include "undo/operation.h"
#include "undo/step_text.h"

using namespace toolbox::undo;

Edit::~Edit() = default;

Edit::Merging Edit::merge(Edit&) {
    return Apart;
}

UndoStack::UndoStack() : history_(std::make_unique<History>()) {}

Edit::Outcome UndoStack::perform(std::unique_ptr<Edit> edit, unsigned gesture) {
    if (!edit || phase_ != Phase::Idle || !history_->takesEdits()) return Edit::Failed;
    Operation operation(*this);
    Entries made;
    const Edit::Outcome outcome =
        enter(made, edit, gesture, history_->label()) ? applied(*made.front().edit) : Edit::Failed;
    if (operation.gone()) return Edit::Failed;
    const bool failsGroup = outcome == Edit::Failed && history_->depth() > 0;
    if (outcome == Edit::Done) keep(operation, made);
    if (failsGroup) failGroup(operation);
    operation.dropped.splice(operation.dropped.end(), made);
    if (outcome == Edit::Done || failsGroup) operation.tell();
    return operation.end(outcome);
}

void UndoStack::keep(Operation& operation, Entries& made) {
    Entry& entry = made.front();
    entry.size = sizeOf(*entry.edit, 0);
    if (operation.gone()) return;
    const Entry* const last = history_->mergeable(entry.gesture, clean_);
    if (!last) return history_->append(made, operation.dropped);
    const std::shared_ptr<Edit> former = last->edit;
    const std::uint64_t formerSize = last->size;
    const Edit::Merging merging = mergedInto(*former, *entry.edit);
    if (operation.gone()) return;
    if (merging == Edit::Apart) return history_->append(made, operation.dropped);
    if (merging == Edit::Annulled) return history_->annulled(operation.dropped);
    const std::uint64_t size = sizeOf(*former, formerSize);
    if (!operation.gone()) history_->merged(size, operation.dropped);
}

unsigned UndoStack::newGesture() {
    if (++lastGesture_ == 0) ++lastGesture_;
    return lastGesture_;
}

int UndoStack::undo() {
    return canUndo() ? step(true) : 0;
}

int UndoStack::redo() {
    return canRedo() ? step(false) : 0;
}

int UndoStack::step(bool back) {
    if (phase_ != Phase::Idle) return 0;
    Operation operation(*this);
    std::size_t moved = 0;
    bool whole = true;
    do {
        whole = move(operation, back);
        if (operation.gone()) return 0;
        if (whole) ++moved;
    } while (whole && !history_->atEdge() && (back ? history_->last() : history_->next()));
    if (!whole) {
        while (moved > 0 && move(operation, !back)) --moved;
        if (operation.gone() || moved == 0) return 0;
    }
    if (whole) history_->trim(!back, operation.dropped);
    return operation.end(operation.tell() && whole);
}

bool UndoStack::move(Operation& operation, bool back) {
    const Entry* const entry = back ? history_->last() : history_->next();
    if (!entry) return false;
    const std::shared_ptr<Edit> edit = entry->edit;
    const bool done = back ? reverted(*edit) : applied(*edit) == Edit::Done;
    if (operation.gone() || !done) return false;
    const std::uint64_t size = sizeOf(*edit, entry->size);
    if (operation.gone()) return false;
    history_->move(back, size);
    return true;
}

int UndoStack::canUndo() const {
    return phase_ != Phase::Editing && history_->depth() == 0 && history_->last();
}

int UndoStack::canRedo() const {
    return phase_ != Phase::Editing && history_->depth() == 0 && history_->next();
}

CString UndoStack::undoText() const {
    return undoTextOf(canUndo() ? nameOf(*history_->last()) : "");
}

CString UndoStack::redoText() const {
    return redoTextOf(canRedo() ? nameOf(*history_->next()) : "");
}

CString UndoStack::nameOf(const Entry& entry) {
    const std::shared_ptr<const Edit> edit = entry.edit;  // held: asking it may delete the stack
    return entry.label ? *entry.label : edit->text();
}

std::size_t UndoStack::undoCount() const {
    return history_->doneSteps();
}

std::size_t UndoStack::redoCount() const {
    return history_->undoneSteps();
}

int UndoStack::isClean() const {
    return history_->current() == clean_;
}

int UndoStack::setClean() {
    if (phase_ != Phase::Idle) return 0;
    Operation operation(*this);
    clean_ = history_->current();
    return operation.end(operation.tell() ? 1 : 0);
}

int UndoStack::setChanged() {
    if (phase_ != Phase::Idle) return 0;
    Operation operation(*this);
    clean_ = kUnreachable;
    return operation.end(operation.tell() ? 1 : 0);
}

int UndoStack::setLimits(std::size_t steps, std::size_t bytes) {
    if (phase_ != Phase::Idle) return 0;
    Operation operation(*this);
    history_->setLimits(steps, bytes);
    history_->trim(true, operation.dropped);
    return operation.end(operation.tell() ? 1 : 0);
}

std::uint64_t UndoStack::bytes() const {
    return history_->bytes();
}

int UndoStack::clear() {
    if (phase_ != Phase::Idle || history_->depth() > 0) return 0;
    Operation operation(*this);
    history_->clear(operation.dropped);
    return operation.end(operation.tell() ? 1 : 0);
}
