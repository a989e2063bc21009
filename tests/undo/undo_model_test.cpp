// A million random operations beside a model that copies the whole document at every step. Every
// value that is set is new, so that two states have the same bytes only when they are the same.
#include <gtest/gtest.h>

#include <new>
#include <random>

#include "cells.h"

namespace {

using Values = std::vector<int>;

class Model {
  public:
    explicit Model(std::size_t limit) : random_(static_cast<unsigned>(limit)), limit_(limit) {
        stack_.setLimits(limit, UndoStack::kNoLimit);
    }

    /// One operation, on both, and whether they agree then.
    void operate() {
        const char* const what = operation();
        ASSERT_EQ(cells_.values, now_) << what;
        ASSERT_EQ(stack_.isClean() != 0, now_ == saved_) << what;
        ASSERT_EQ(stack_.undoCount(), at_) << what;
        ASSERT_EQ(stack_.redoCount(), steps_.size() - at_) << what;
        ASSERT_EQ(stack_.groupDepth(), groups_.size()) << what;
        ASSERT_EQ(stack_.canUndo() != 0, groups_.empty() && at_ > 0) << what;
    }

    // What came up, so that a test can see that it tests something.
    int walksToClean = 0, merged = 0, annulled = 0, rolledBack = 0, restored = 0;

  private:
    struct Step {
        Values before, after;
        std::size_t cell = 0;
        unsigned gesture = 0;  // 0 for groups
    };
    struct Group {
        Values before;
        bool failed, filled;
    };

    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    const char* operation() {
        const int drawn = below(24);
        if (drawn == 0) return save();
        if (drawn == 1) return open();
        if (drawn <= 4) return end(drawn < 4);
        if (drawn == 5) return failInGroup();
        if (drawn == 6) return pointless();
        if (drawn <= 11) return walk(true);
        if (drawn <= 15) return walk(false);
        return drawn == 16 ? annul() : put();
    }

    const char* save() {
        EXPECT_EQ(stack_.setClean(), 1);
        saved_ = now_;
        return "save";
    }

    const char* pointless() {
        EXPECT_EQ(set(stack_, cells_, 1, now_[1], gesture_),
                  takesEdits() ? Edit::Pointless : Edit::Failed);
        return "pointless";
    }

    const char* put() {
        if (below(4) == 0) gesture_ = stack_.newGesture();
        const unsigned gesture = below(3) ? gesture_ : 0;
        const auto cell = static_cast<std::size_t>(below(4));
        const bool takes = takesEdits();
        EXPECT_EQ(set(stack_, cells_, cell, ++fresh_, gesture), takes ? Edit::Done : Edit::Failed);
        if (!takes) return "put into a failed group";
        Step step{now_, now_, cell, gesture};
        now_[cell] = step.after[cell] = fresh_;
        if (!groups_.empty()) {
            groups_.back().filled = true;
        } else if (merges(cell, gesture)) {
            ++merged;
            steps_.resize(at_);
            steps_.back().after = now_;
        } else {
            add(step);
        }
        return "put";
    }

    const char* annul() {
        if (!groups_.empty() || at_ == 0) return "nothing";
        const Step last = steps_[at_ - 1];
        if (!merges(last.cell, last.gesture)) return "nothing";
        EXPECT_EQ(set(stack_, cells_, last.cell, last.before[last.cell], last.gesture), Edit::Done);
        now_ = last.before;
        steps_.resize(--at_);
        ++annulled;
        return "annul";
    }
    /// With the last step, by an edit made in the state that it left.
    [[nodiscard]] bool merges(std::size_t cell, unsigned gesture) const {
        if (gesture == 0 || at_ == 0) return false;
        const Step& last = steps_[at_ - 1];
        return last.gesture == gesture && last.cell == cell && last.after != saved_;
    }
    void add(const Step& step) {
        steps_.resize(at_);
        steps_.push_back(step);
        if (steps_.size() > limit_) steps_.erase(steps_.begin());
        at_ = steps_.size();
    }

    /// Sometimes an edit of the step fails; the others come back.
    const char* walk(bool back) {
        const bool can = groups_.empty() && (back ? at_ > 0 : at_ < steps_.size());
        bool failed = false;
        if (below(3) == 0) failCall(back ? "revert" : "apply", 1 + below(3), failed);
        const int done = back ? stack_.undo() : stack_.redo();
        cells_.hook = Cells().hook;
        EXPECT_EQ(done, can && !failed);
        restored += failed;
        if (done) now_ = back ? steps_[--at_].before : steps_[at_++].after;
        walksToClean += done && now_ == saved_;
        return back ? "undo" : "redo";
    }
    /// One call fails, or has no memory.
    void failCall(const char* what, int nth, bool& failed) {
        cells_.hook = [=, this, &failed](std::string_view called) mutable {
            if (called != what || --nth != 0) return true;
            failed = true;
            return below(2) ? false : throw std::bad_alloc();
        };
    }

    [[nodiscard]] bool takesEdits() const { return groups_.empty() || !groups_.back().failed; }

    const char* open() {
        if (groups_.size() == 4) return "nothing";
        groups_.push_back({now_, !takesEdits(), false});
        EXPECT_EQ(stack_.openGroup("group"), 1);
        return "open";
    }

    const char* failInGroup() {
        bool failed = false;
        failCall("apply", 1, failed);
        EXPECT_EQ(set(stack_, cells_, 0, ++fresh_), Edit::Failed);
        cells_.hook = Cells().hook;
        fail();
        return "fail";
    }
    void fail() {
        if (groups_.empty()) return;
        rolledBack += groups_.back().filled;
        groups_.back().failed = true;
        now_ = groups_.back().before;
    }

    const char* end(bool close) {
        const bool stands = !groups_.empty() && close && takesEdits();
        EXPECT_EQ(close ? stack_.closeGroup() : stack_.cancelGroup(),
                  close ? stands : !groups_.empty());
        if (groups_.empty()) return "nothing";
        const Group ended = groups_.back();
        groups_.pop_back();
        if (!stands) now_ = ended.before;
        if (close && !stands) fail();
        if (!stands || !ended.filled) return "end";
        if (groups_.empty())
            add({ended.before, now_});
        else
            groups_.back().filled = true;
        return "close";
    }

    Cells cells_;
    UndoStack stack_;
    std::mt19937 random_;
    std::size_t limit_;
    Values now_ = cells_.values, saved_ = now_;
    std::vector<Step> steps_;
    std::size_t at_ = 0;  // how many of them are done
    std::vector<Group> groups_;
    unsigned gesture_ = stack_.newGesture();
    int fresh_ = 0;
};

#if defined(_WIN32)
constexpr int kTimes = 50'000;  // the same code; Linux has the million
#else
constexpr int kTimes = 250'000;
#endif

TEST(UndoModel, IsCleanExactlyWhenTheBytesAreThoseThatWereSaved) {
    for (const std::size_t limit : {1, 3, 10, 40}) {
        Model model(limit);
        for (int i = 0; i < kTimes && !HasFatalFailure(); ++i) model.operate();
        for (const int times : {model.walksToClean, model.merged, model.annulled, model.rolledBack,
                                model.restored})
            EXPECT_GT(times, 200) << limit;
    }
}

}  // namespace
