// Edits of tags: a random document against copies of it, and what gestures make of tags.
#include "toolbox/tag_edits.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tag/tag_moves.h"

namespace {

std::string bytesOf(const TvTagSet& set) {
    VarRecord record;
    set.store(record);
    return {record.getPData(), record.getLen()};
}

TvTag tagWith(const std::string& text, TvPoint anchor = {}) {
    TvTag tag;
    tag.text = text;
    tag.anchor = anchor;
    return tag;
}

/// Random edits, each a step or merged with the one before; the bytes after each step.
class Model {
  public:
    void operate() {
        const int drawn = below(100);
        if (drawn < 25 && at_ > 0)
            step(stack_.undo(), at_ - 1);
        else if (drawn < 45 && at_ + 1 < states_.size())
            step(stack_.redo(), at_ + 1);
        else if (drawn < 50)
            save();
        else
            edit();
        ASSERT_EQ(stack_.isClean() != 0, at_ == savedAt_) << drawn;
        ASSERT_EQ(bytesOf(set_), states_[at_]) << drawn;
    }
    int merged = 0, annulled = 0;

  private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    void step(int done, std::size_t to) {
        ASSERT_EQ(done, 1);
        at_ = to;
    }
    void save() {
        stack_.setClean();
        savedAt_ = at_;
    }
    void edit() {
        auto edit = std::make_unique<TvTagEdit>(set_, TvTagEdit::Change);
        const int kind = below(10);
        const int step = below(3) - 1;
        if (below(3) == 0) {  // otherwise those of the edit before, with which it may merge
            some_.clear();
            for (const TvTagId id : set_.ids())
                if (below(3) == 0) some_.push_back(id);
        }
        std::erase_if(some_, [this](TvTagId id) { return !set_.find(id); });
        for (int i = 0; i < below(3); ++i)
            if (kind < 4 && set_.count() < 9) edit->add(tagWith("new", {1.0 * below(9), 0}));
        for (const TvTagId id : some_) {
            TvTag tag = *set_.find(id);
            tag.offset.x += step;
            if (kind == 4)
                edit->remove(id);
            else if (kind > 5)
                edit->change(id, tag);
        }
        if (kind == 5) below(2) ? edit->bringToFront(some_) : edit->sendToBack(some_);
        if (below(3) == 0) gesture_ = stack_.newGesture();
        const std::size_t before = stack_.undoCount();
        const Edit::Outcome outcome = stack_.perform(std::move(edit), gesture_);
        const std::string now = bytesOf(set_);
        ASSERT_EQ(outcome == Edit::Pointless, now == states_[at_]);
        if (outcome == Edit::Pointless) return;
        ASSERT_EQ(outcome, Edit::Done);
        if (at_ < savedAt_) savedAt_ = static_cast<std::size_t>(-1);
        merged += stack_.undoCount() == before;
        annulled += stack_.undoCount() < before;
        at_ = stack_.undoCount();
        states_.resize(at_);
        states_.push_back(now);
    }

    TvTagSet set_;
    UndoStack stack_;
    std::mt19937 random_{7};
    std::vector<std::string> states_{bytesOf(set_)};  // after so many steps
    std::size_t at_ = 0;
    std::size_t savedAt_ = 0;
    std::vector<TvTagId> some_;
    unsigned gesture_ = stack_.newGesture();
};

TEST(TagEdits, LeadToTheSameBytesWhereverTheStackStands) {
    Model model;
    for (int i = 0; i < 5000 && !::testing::Test::HasFatalFailure(); ++i) model.operate();
    EXPECT_GT(model.merged, 50);
    EXPECT_GT(model.annulled, 5);
}

TEST(TagEdits, RefuseTagsThatAreNotAsTheyLeftThem) {
    TvTagSet set;
    UndoStack stack;
    const TvTagId id = set.add(tagWith("a"));
    const auto perform = [&](auto say) {
        auto edit = std::make_unique<TvTagEdit>(set, TvTagEdit::Change);
        say(*edit);
        return stack.perform(std::move(edit));
    };
    for (const TvTagId none : {TvTagId{0}, id + 1}) {
        const auto change = [&](TvTagEdit& edit) { edit.change(none, tagWith("b")); };
        EXPECT_EQ(perform([&](TvTagEdit& edit) { edit.remove(none); }), Edit::Failed);
        EXPECT_EQ(perform(change), Edit::Failed);
        EXPECT_EQ(perform([&](TvTagEdit& edit) { edit.sendToBack({&none, 1}); }), Edit::Failed);
    }
    EXPECT_EQ(perform([](TvTagEdit&) {}), Edit::Pointless);
    const TvTag wrong = tagWith("b", {std::numeric_limits<double>::quiet_NaN(), 0});
    const auto bringWrong = [&](TvTagEdit& edit) { edit.remove(id), edit.add(wrong); };
    EXPECT_EQ(perform(bringWrong), Edit::Failed);
    EXPECT_EQ(set.count(), 1u);

    EXPECT_EQ(perform([&](TvTagEdit& edit) { edit.change(id, tagWith("b")); }), Edit::Done);
    set.change(id, tagWith("by another way"));
    EXPECT_EQ(stack.undo(), 0);
    EXPECT_EQ(set.find(id)->text, "by another way");
}

TEST(TagEdits, SelectWhatComesAndTellOnce) {
    struct Listener : TvTagListener {
        void tagsChanged() override { ++told; }
        int told = 0;
    } listener;
    TvTagSet set;
    UndoStack stack;
    const TvTagId a = set.add(tagWith("a"));
    const TvTagId b = set.add(tagWith("b"));
    const TvTagId c = set.add(tagWith("c"));
    set.select(b);
    listener.listenTo(&set);
    auto edit = std::make_unique<TvTagEdit>(set, TvTagEdit::Delete);
    edit->remove(a);
    edit->remove(c);
    EXPECT_EQ(stack.perform(std::move(edit)), Edit::Done);
    EXPECT_EQ(set.selection(), std::vector<TvTagId>{b});
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(set.ids(), (std::vector<TvTagId>{a, b, c}));
    EXPECT_EQ(set.selection(), (std::vector<TvTagId>{a, c}));
    EXPECT_EQ(listener.told, 2);
}

/// A tag on a page of two points to the unit, y up in the drawing, with a box of 40 by 10.
TvTagOnPage onPage(TvTag tag) {
    TvTagOnPage place;
    place.anchor = {2 * tag.anchor.x, -2 * tag.anchor.y};
    const TvPoint at{place.anchor.x + tag.offset.x, place.anchor.y + tag.offset.y};
    const double left = tag.align == TvAlign::left ? 0 : tag.align == TvAlign::center ? -20 : -40;
    place.box = {at.x + left, at.y, at.x + left + 40, at.y + 10};
    place.tag = std::make_shared<const TvTag>(std::move(tag));
    return place;
}

TEST(TagMoves, WidenTheBoxByItsFreeSide) {
    using namespace toolbox::tag;
    struct Case {
        TvAlign align;
        double x, width;
        std::vector<double> handles;
    };
    for (const Case& each :
         {Case{TvAlign::left, 120, 96, {60}}, Case{TvAlign::right, -70, 86, {-20}},
          Case{TvAlign::center, 50, 56, {40, 0}}, Case{TvAlign::center, -10, 56, {40, 0}},
          Case{TvAlign::left, 10, kLeastWidth, {60}}}) {
        TvTag tag = tagWith("a", {10, 0});
        tag.align = each.align;
        TvTagOnPage place = onPage(tag);
        EXPECT_EQ(widthAt(place, each.x), each.width);
        std::vector<double> sides;
        for (const Handle& handle : handlesOf(place))
            if (handle.grip == Grip::width) sides.push_back(handle.at.x);
        EXPECT_EQ(sides, each.handles);
        tag.locked = true;
        place = onPage(tag);
        EXPECT_TRUE(handlesOf(place).empty());
    }
}

}  // namespace
