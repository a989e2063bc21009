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
        const int drawn = below(480);
        if (drawn < 3)
            forget();
        else if (drawn < 20)
            save();
        else if (drawn < 40)
            open();
        else if (drawn < 100)
            end(drawn < 80);
        else if (drawn < 120)
            putWhatFails();
        else if (drawn < 320)
            walk(drawn < 220);
        else
            put(drawn < 340);
        ASSERT_EQ(cells_.values, now_) << drawn;
        ASSERT_EQ(stack_.isClean() != 0, now_ == saved_) << drawn;
        ASSERT_EQ(stack_.undoCount(), at_) << drawn;
        ASSERT_EQ(stack_.redoCount(), steps_.size() - at_) << drawn;
        ASSERT_EQ(stack_.groupDepth(), groups_.size()) << drawn;
        ASSERT_EQ(stack_.canUndo() != 0, groups_.empty() && at_ > 0) << drawn;
    }

    int walksToClean = 0;  ///< so that the test can see that it tests something

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
    [[nodiscard]] bool takesEdits() const { return groups_.empty() || !groups_.back().failed; }

    void save() {
        EXPECT_EQ(stack_.setClean(), 1);
        saved_ = now_;
    }

    void forget() {
        EXPECT_EQ(stack_.setChanged(), 1);
        saved_.clear();
        if (stack_.clear()) steps_.resize(at_ = 0);
    }

    /// With the last step, by an edit made in the state that it left.
    [[nodiscard]] bool merges(std::size_t cell, unsigned gesture) const {
        if (gesture == 0 || at_ == 0 || !groups_.empty()) return false;
        const Step& last = steps_[at_ - 1];
        return last.gesture == gesture && last.cell == cell && last.after != saved_;
    }

    /// `back` to the value before the step that it is merged with.
    void put(bool back) {
        if (below(4) == 0) gesture_ = stack_.newGesture();
        const unsigned gesture = below(3) ? gesture_ : 0;
        const auto cell = static_cast<std::size_t>(below(3));
        const bool takes = takesEdits(), merging = merges(cell, gesture);
        if (back && !merging) return;
        const Values before = merging ? steps_[at_ - 1].before : now_;
        const int value = back ? before[cell] : ++fresh_;
        EXPECT_EQ(set(stack_, cells_, cell, value, gesture), takes ? Edit::Done : Edit::Failed);
        if (!takes) return;
        now_[cell] = value;
        if (!groups_.empty()) {
            groups_.back().filled = true;
            return;
        }
        at_ -= merging;
        if (back)
            steps_.resize(at_);
        else
            add({before, now_, cell, gesture});
    }
    void add(const Step& step) {
        steps_.resize(at_);
        steps_.push_back(step);
        if (steps_.size() > limit_) steps_.erase(steps_.begin());
        at_ = steps_.size();
    }

    /// The nth call from now fails, or has no memory.
    void failCall(std::string_view what, int nth, bool& failed) {
        cells_.hook = [=, this, &failed](std::string_view called) mutable {
            if (called != what || --nth != 0) return true;
            failed = true;
            return below(2) ? false : throw std::bad_alloc();
        };
    }

    void putWhatFails() {
        EXPECT_EQ(set(stack_, cells_, 1, now_[1]), takesEdits() ? Edit::Pointless : Edit::Failed);
        if (below(2)) return;
        bool failed = false;
        failCall("apply", 1, failed);
        EXPECT_EQ(set(stack_, cells_, 0, ++fresh_), Edit::Failed);
        cells_.hook = Cells().hook;
        failGroup();
    }
    void failGroup() {
        if (groups_.empty()) return;
        groups_.back().failed = true;
        now_ = groups_.back().before;
    }

    /// Sometimes an edit of the step fails; the others come back.
    void walk(bool back) {
        const bool can = groups_.empty() && (back ? at_ > 0 : at_ < steps_.size());
        bool failed = false;
        if (below(3) == 0) failCall(back ? "revert" : "apply", 1 + below(3), failed);
        const int done = back ? stack_.undo() : stack_.redo();
        cells_.hook = Cells().hook;
        EXPECT_EQ(done, can && !failed);
        if (done) now_ = back ? steps_[--at_].before : steps_[at_++].after;
        walksToClean += done && now_ == saved_;
    }

    void open() {
        if (groups_.size() == 4) return;
        groups_.push_back({now_, !takesEdits(), false});
        EXPECT_EQ(stack_.openGroup("group"), 1);
    }

    void end(bool close) {
        const bool is = !groups_.empty(), stands = is && close && takesEdits();
        EXPECT_EQ(close ? stack_.closeGroup() : stack_.cancelGroup(), close ? stands : is);
        if (!is) return;
        const Group ended = groups_.back();
        groups_.pop_back();
        if (!stands) now_ = ended.before;
        if (close && !stands) failGroup();
        if (!stands || !ended.filled) return;
        if (groups_.empty())
            add({ended.before, now_});
        else
            groups_.back().filled = true;
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

#if defined(_WIN32) || defined(__SANITIZE_ADDRESS__)
constexpr int kTimes = 50'000;  // the same code, slower; the plain build has the million
#else
constexpr int kTimes = 250'000;
#endif

TEST(UndoModel, IsCleanExactlyWhenTheBytesAreThoseThatWereSaved) {
    for (const std::size_t limit : {1, 3, 10, 40}) {
        Model model(limit);
        for (int i = 0; i < kTimes && !HasFatalFailure(); ++i) model.operate();
        EXPECT_GT(model.walksToClean, 50) << limit;
    }
}

}  // namespace
