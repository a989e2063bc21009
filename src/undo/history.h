// The edits that were done, those that can be done again and those of the open groups, without
// calling any of them. Each has the number of the document's state after it; a state never gets the
// number of another, so what cannot be reached again is never taken for what was saved.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

#include "toolbox/undo.h"

namespace toolbox::undo {

using State = std::uint64_t;

/// An edit in its place.
struct Entry {
    std::shared_ptr<Edit> edit;            // shared with the operation that calls it
    std::shared_ptr<const CString> label;  // of the outermost group; null: the edit's own text
    State after = 0;
    std::uint64_t size = 0;
    unsigned gesture = 0;
    bool first = true;  // of its step
};

/// Nodes move from list to list, so that what was done is kept without needing memory.
using Entries = std::list<Entry>;

class History {
  public:
    // What would be taken back next, and done next; null when there is none.
    [[nodiscard]] const Entry* last() const { return done_.empty() ? nullptr : &done_.back(); }
    [[nodiscard]] const Entry* next() const { return undone_.empty() ? nullptr : &undone_.front(); }
    [[nodiscard]] std::size_t doneSteps() const { return doneSteps_; }
    [[nodiscard]] std::size_t undoneSteps() const { return undoneSteps_; }
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

    /// The state of the document.
    [[nodiscard]] State current() const;

    // What ceases to be kept goes to `dropped`.

    /// The edit that one of this gesture may be merged with; null when there is none. The state
    /// `clean` stays reachable.
    [[nodiscard]] const Entry* mergeable(unsigned gesture, State clean) const;
    /// Takes the one of `made`, which was done.
    void append(Entries& made, Entries& dropped);
    /// mergeable() has taken in another edit and has this size.
    void merged(std::uint64_t size, Entries& dropped);
    /// mergeable() and the edit after it change nothing together.
    void annulled(Entries& dropped);

    /// last() was taken back, or next() done, and has this size.
    void move(bool back, std::uint64_t size);
    /// True between two steps.
    [[nodiscard]] bool atEdge() const { return undone_.empty() || undone_.front().first; }

    void setLimits(std::size_t steps, std::size_t bytes) {
        maxSteps_ = steps;
        // Also where a sum of sizes is larger than the constant.
        maxBytes_ = bytes == UndoStack::kNoLimit ? kUnlimited : bytes;
    }
    /// Keeps the limits, and rather the step before or after the document's state.
    void trim(bool keepsDone, Entries& dropped);
    void clear(Entries& dropped);

    // Groups. One that fails takes no more edits, and neither do those inside it.

    void openGroup(const CString& text) noexcept;
    [[nodiscard]] std::size_t depth() const { return groups_.size() + shut_; }
    [[nodiscard]] bool takesEdits() const {
        return shut_ == 0 && (groups_.empty() || !groups_.back().failed);
    }
    /// The text of the outermost group; null when there is none.
    [[nodiscard]] std::shared_ptr<const CString> label() const;
    /// The innermost group took no edits from the start.
    [[nodiscard]] bool isShut() const { return shut_ > 0; }
    [[nodiscard]] bool hasFailed() const { return groups_.back().failed; }
    void fail() { groups_.back().failed = true; }
    /// Ends the innermost; the edits of the outermost become a step.
    void endGroup(Entries& dropped);
    /// The last edit of the innermost group; null when it has none.
    [[nodiscard]] const Entry* lastOfGroup() const;
    /// That one was taken back.
    void dropLastOfGroup(Entries& dropped);

  private:
    struct Group {
        std::size_t start;  // of its edits in open_
        std::shared_ptr<const CString> label;
        bool failed;
    };

    static constexpr std::uint64_t kUnlimited = static_cast<std::uint64_t>(-1);

    [[nodiscard]] bool exceeds() const;
    void dropOldest(Entries& dropped);
    void dropFarthest(Entries& dropped);
    void dropUndone(Entries& dropped);

    Entries done_, undone_, open_;
    std::vector<Group> groups_;
    std::size_t shut_ = 0;  // groups inside groups_ that took no edits from the start
    State base_ = 0;        // before done_
    State newest_ = 0;
    std::size_t doneSteps_ = 0, undoneSteps_ = 0;
    std::uint64_t bytes_ = 0;  // of done_ and undone_
    std::size_t maxSteps_ = UndoStack::kNoLimit;
    std::uint64_t maxBytes_ = kUnlimited;
};

}  // namespace toolbox::undo
