// Moves entries between the lists and counts steps and bytes.
#include "undo/history.h"

#include <iterator>
#include <new>
#include <utility>

namespace toolbox::undo {
namespace {

/// Moves an entry to the end of another list.
void moveTo(Entries& to, Entries& from, Entries::iterator entry) {
    to.splice(to.end(), from, entry);
}

}  // namespace

State History::current() const {
    if (!open_.empty()) return open_.back().after;
    return done_.empty() ? base_ : done_.back().after;
}

const Entry* History::mergeable(unsigned gesture, State clean) const {
    const Entry* const former = groups_.empty() ? last() : lastOfGroup();
    if (!former || gesture == 0 || former->gesture != gesture) return nullptr;
    return former->after == clean ? nullptr : former;
}

void History::append(Entries& made, Entries& dropped) {
    Entry& entry = made.front();
    entry.after = ++newest_;
    if (!groups_.empty()) {
        entry.first = false;
        open_.splice(open_.end(), made);
        return;
    }
    dropUndone(dropped);
    ++doneSteps_;
    bytes_ += entry.size;
    done_.splice(done_.end(), made);
    trim(true, dropped);
}

void History::merged(std::uint64_t size, Entries& dropped) {
    Entry& entry = groups_.empty() ? done_.back() : open_.back();
    entry.after = ++newest_;
    if (groups_.empty()) {
        bytes_ += size - entry.size;
        dropUndone(dropped);
    }
    entry.size = size;
    if (groups_.empty()) trim(true, dropped);
}

void History::annulled(Entries& dropped) {
    if (!groups_.empty()) return dropLastOfGroup(dropped);
    dropUndone(dropped);
    bytes_ -= done_.back().size;
    --doneSteps_;
    moveTo(dropped, done_, std::prev(done_.end()));
}

void History::move(bool back, std::uint64_t size) {
    Entry& entry = back ? done_.back() : undone_.front();
    bytes_ += size - entry.size;
    entry.size = size;
    const std::size_t steps = entry.first ? 1 : 0;
    if (back) {
        doneSteps_ -= steps;
        undoneSteps_ += steps;
        undone_.splice(undone_.begin(), done_, std::prev(done_.end()));
    } else {
        undoneSteps_ -= steps;
        doneSteps_ += steps;
        done_.splice(done_.end(), undone_, undone_.begin());
    }
}

bool History::exceeds() const {
    return doneSteps_ + undoneSteps_ > maxSteps_ || bytes_ > maxBytes_;
}

void History::trim(bool keepsDone, Entries& dropped) {
    const std::size_t done = maxSteps_ > 0 && keepsDone ? 1 : 0;
    const std::size_t undone = maxSteps_ > 0 && !keepsDone ? 1 : 0;
    while (exceeds()) {
        if (doneSteps_ > done)
            dropOldest(dropped);
        else if (undoneSteps_ > undone)
            dropFarthest(dropped);
        else
            return;
    }
}

void History::dropOldest(Entries& dropped) {
    --doneSteps_;
    do {
        base_ = done_.front().after;
        bytes_ -= done_.front().size;
        moveTo(dropped, done_, done_.begin());
    } while (!done_.empty() && !done_.front().first);
    if (!done_.empty() || atEdge()) return;
    undone_.front().first = true;  // the rest of a step that got stuck
    ++undoneSteps_;
}

void History::dropFarthest(Entries& dropped) {
    --undoneSteps_;
    bool first;
    do {
        first = undone_.back().first;
        bytes_ -= undone_.back().size;
        moveTo(dropped, undone_, std::prev(undone_.end()));
    } while (!first);
}

void History::dropUndone(Entries& dropped) {
    for (const Entry& entry : undone_) bytes_ -= entry.size;
    undoneSteps_ = 0;
    dropped.splice(dropped.end(), undone_);
}

void History::clear(Entries& dropped) {
    base_ = current();
    dropped.splice(dropped.end(), done_);
    dropped.splice(dropped.end(), undone_);
    dropped.splice(dropped.end(), open_);
    doneSteps_ = undoneSteps_ = 0;
    bytes_ = 0;
}

void History::openGroup(const CString& text) noexcept {
    if (!takesEdits()) {
        ++shut_;
        return;
    }
    try {
        Group group{open_.size(), nullptr, false};
        if (groups_.empty()) group.label = std::make_shared<CString>(text);
        groups_.push_back(std::move(group));
    } catch (const std::bad_alloc&) {
        ++shut_;
    }
}

std::shared_ptr<const CString> History::label() const {
    return groups_.empty() ? nullptr : groups_.front().label;
}

void History::endGroup(Entries& dropped) {
    if (shut_ > 0) {
        --shut_;
        return;
    }
    groups_.pop_back();
    if (!groups_.empty() || open_.empty()) return;
    dropUndone(dropped);
    open_.front().first = true;
    ++doneSteps_;
    for (Entry& entry : open_) {
        entry.gesture = 0;  // nothing is merged with a step of many
        bytes_ += entry.size;
    }
    done_.splice(done_.end(), open_);
    trim(true, dropped);
}

const Entry* History::lastOfGroup() const {
    return open_.size() > groups_.back().start ? &open_.back() : nullptr;
}

void History::dropLastOfGroup(Entries& dropped) {
    moveTo(dropped, open_, std::prev(open_.end()));
}

}  // namespace toolbox::undo
