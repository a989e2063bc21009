// The rules of steps, merging, groups, limits and texts, one by one.
#include "toolbox/undo.h"

#include <gtest/gtest.h>

#include <new>

#include "cells.h"
#include "toolbox/messages.h"
#include "undo/menu_label.h"

namespace {

class Undo : public ::testing::Test {
  protected:
    Edit::Outcome put(std::size_t cell, int value, unsigned gesture = 0) {
        return set(stack, cells, cell, value, gesture);
    }
    /// The first three cells, then the numbers of steps to undo and redo, "*" when changed.
    [[nodiscard]] std::string state() const {
        std::string all;
        for (int i = 0; i < 3; ++i) all += std::to_string(cells.values[i]) + " ";
        all += std::to_string(stack.undoCount()) + "+" + std::to_string(stack.redoCount());
        return all + (stack.isClean() ? "" : "*");
    }
    /// Edits fail, from the given one of these operations on.
    void failFrom(const std::string& what, int nth) {
        cells.hook = [=](std::string_view called) mutable {
            return called != what || --nth > 0;
        };
    }
    void failNoMore() { cells.hook = Cells().hook; }

    Cells cells;
    UndoStack stack;
};

struct Counting : UndoListener {
    int count = 0;

  private:
    void undoChanged() override { ++count; }
};

TEST_F(Undo, LeavesEverythingAsItWasWhenAnEditDoesNothing) {
    put(0, 1);
    put(1, 1);
    stack.undo();
    Counting listener;
    listener.listenTo(&stack);
    const struct {
        const char* what;
        std::function<bool(std::string_view)> hook;
        int value;
        Edit::Outcome outcome;
    } cases[] = {
        {"fails", [](std::string_view what) { return what != "apply"; }, 2, Edit::Failed},
        {"has no memory",
         [](std::string_view what) -> bool {
             return what != "apply" ? true : throw std::bad_alloc();
         },
         2, Edit::Failed},
        {"is pointless", Cells().hook, 1, Edit::Pointless},
    };
    for (const auto& each : cases) {
        cells.hook = each.hook;
        EXPECT_EQ(put(0, each.value), each.outcome) << each.what;
        EXPECT_EQ(state(), "1 0 0 1+1*") << each.what;
    }
    EXPECT_EQ(stack.perform(nullptr), Edit::Failed);
    failFrom("revert", 1);
    EXPECT_EQ(stack.undo(), 0);
    failNoMore();
    cells.values[1] = 1;  // behind the stack's back
    EXPECT_EQ(stack.redo(), 0) << "there is nothing to do";
    EXPECT_EQ(state(), "1 1 0 1+1*");
    EXPECT_EQ(listener.count, 0);
}

TEST_F(Undo, MergesOneGestureUpToTheCleanPoint) {
    const unsigned first = stack.newGesture(), second = stack.newGesture();
    const struct {
        std::size_t cell;
        int value;
        unsigned gesture;
        const char* state;
    } steps[] = {
        {0, 1, first, "1 0 0 1+0*"}, {0, 2, first, "2 0 0 1+0*"},  {0, 3, second, "3 0 0 2+0*"},
        {1, 1, second, "3 1 0 3+0*"}, {1, 2, 0, "3 2 0 4+0*"},     {1, 3, 0, "3 3 0 5+0*"},
        {2, 1, first, "3 3 1 6+0*"}, {2, 0, first, "3 3 0 5+0*"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(put(step.cell, step.value, step.gesture), Edit::Done);
        EXPECT_EQ(state(), step.state);
    }
    put(2, 1, first);
    EXPECT_EQ(stack.setClean(), 1);
    put(2, 2, first);
    EXPECT_EQ(state(), "3 3 2 7+0*") << "the clean point stays reachable";
    put(2, 1, first);
    EXPECT_EQ(state(), "3 3 1 6+0") << "back at it";
    put(2, 5, second);
    put(1, 9);
    stack.undo();
    put(2, 6, second);
    EXPECT_EQ(state(), "3 3 6 7+0*") << "what could be redone is dropped by a merged step too";
}

TEST_F(Undo, TakesWhatCannotBeReachedForChangedUntilTheNextSave) {
    put(0, 1);
    stack.setClean();
    stack.undo();
    put(0, 2);
    EXPECT_EQ(state(), "2 0 0 1+0*") << "dropped by a new branch";
    stack.undo();
    EXPECT_EQ(state(), "0 0 0 0+1*");
    stack.setClean();
    stack.redo();
    EXPECT_EQ(state(), "2 0 0 1+0*") << "saving keeps the steps";
    stack.undo();
    EXPECT_EQ(state(), "0 0 0 0+1");
    put(1, 1);
    put(1, 2);
    stack.setLimits(1, UndoStack::kNoLimit);
    stack.undo();
    EXPECT_EQ(state(), "0 1 0 0+1*") << "dropped by the limit";
    stack.setClean();
    stack.clear();
    EXPECT_EQ(state(), "0 1 0 0+0");
    stack.setChanged();
    EXPECT_EQ(state(), "0 1 0 0+0*");
}

TEST_F(Undo, KeepsItsLimits) {
    for (int i = 1; i <= 5; ++i) put(0, i);
    EXPECT_EQ(stack.bytes(), 50u);
    stack.undo();
    stack.undo();
    stack.setLimits(UndoStack::kNoLimit, 39);
    EXPECT_EQ(state(), "3 0 0 1+2*") << "the oldest go first";
    stack.setLimits(2, UndoStack::kNoLimit);
    EXPECT_EQ(state(), "3 0 0 1+1*") << "then those that are farthest";
    put(0, 7);
    stack.setLimits(UndoStack::kNoLimit, 5);
    EXPECT_EQ(state(), "7 0 0 1+0*") << "one stays";
    stack.undo();
    EXPECT_EQ(state(), "3 0 0 0+1*");
    stack.openGroup("two");
    put(0, 1);
    put(1, 1);
    stack.closeGroup();
    EXPECT_EQ(stack.bytes(), 20u);
    stack.setLimits(0, UndoStack::kNoLimit);
    put(0, 8);
    EXPECT_EQ(state(), "8 1 0 0+0*");
    EXPECT_EQ(stack.bytes(), 0u);
}

TEST_F(Undo, TreatsAGroupAsOneStep) {
    put(0, 1);
    stack.undo();
    {
        UndoGroup group(stack, "outer");
        put(1, 1);
        EXPECT_EQ(put(1, 1), Edit::Pointless);
        EXPECT_FALSE(stack.canUndo() || stack.canRedo() || stack.undo() || stack.redo());
        EXPECT_EQ(stack.clear(), 0);
        {
            UndoGroup inner(stack, "inner");
            put(2, 1);
        }
        EXPECT_EQ(state(), "0 1 0 0+1*") << "the inner one was cancelled at its end";
        put(2, 2);
        EXPECT_EQ(group.cancel(), 1);
        EXPECT_EQ(group.close(), 0);
    }
    EXPECT_EQ(state(), "0 0 0 0+1") << "nothing happened";
    UndoGroup group(stack, "outer");
    put(1, 1, 7);
    stack.openGroup("inner");
    put(1, 2, 7);
    stack.openGroup("forgotten");
    EXPECT_EQ(group.close(), 1);
    put(1, 3, 7);
    EXPECT_EQ(state(), "0 3 0 2+0*") << "not merged with a group";
    stack.undo();
    EXPECT_EQ(stack.undoText(), "Annuler outer");
    stack.undo();
    EXPECT_EQ(state(), "0 0 0 0+2");
    stack.openGroup("empty");
    EXPECT_EQ(stack.closeGroup(), 1);
    EXPECT_EQ(state(), "0 0 0 0+2");
    EXPECT_FALSE(stack.closeGroup() || stack.cancelGroup());
}

TEST_F(Undo, RollsAGroupBackWhenAnEditFails) {
    put(0, 1);
    stack.undo();
    for (const bool contained : {false, true}) {
        stack.openGroup("outer");
        put(1, 1);
        stack.openGroup("inner");
        put(2, 1);
        failFrom("apply", 1);
        EXPECT_EQ(put(2, 2), Edit::Failed);
        failNoMore();
        EXPECT_EQ(put(2, 3), Edit::Failed) << "the group takes no more";
        stack.openGroup("inside");
        EXPECT_EQ(put(2, 3), Edit::Failed);
        EXPECT_EQ(stack.closeGroup(), 0);
        EXPECT_EQ(state(), "0 1 0 0+1*");
        EXPECT_EQ(contained ? stack.cancelGroup() : stack.closeGroup(), contained);
        EXPECT_EQ(put(1, 2), contained ? Edit::Done : Edit::Failed);
        EXPECT_EQ(stack.closeGroup(), contained);
        EXPECT_EQ(state(), contained ? "0 2 0 1+0*" : "0 0 0 0+1");
    }
}

TEST_F(Undo, TakesAGroupBackWholeOrNotAtAll) {
    stack.openGroup("three");
    for (std::size_t i = 0; i < 3; ++i) put(i, 1);
    stack.closeGroup();
    failFrom("revert", 3);
    EXPECT_EQ(stack.undo(), 0);
    EXPECT_EQ(state(), "1 1 1 1+0*");
    failNoMore();
    stack.undo();
    failFrom("apply", 3);
    EXPECT_EQ(stack.redo(), 0);
    EXPECT_EQ(state(), "0 0 0 0+1");
}

TEST_F(Undo, TellsTheTruthOfAStepThatGotStuck) {
    const auto onlyOnce = [](std::string_view what) {
        return [=, done = 0](std::string_view called) mutable {
            return (called != what && called != "apply") || ++done == 1;
        };
    };
    stack.openGroup("three");
    for (std::size_t i = 0; i < 3; ++i) put(i, 1);
    stack.closeGroup();
    cells.hook = onlyOnce("revert");
    EXPECT_EQ(stack.undo(), 0);
    EXPECT_EQ(state(), "1 1 0 1+0*");
    EXPECT_TRUE(stack.canRedo());
    failNoMore();
    EXPECT_EQ(stack.redo(), 1);
    EXPECT_EQ(state(), "1 1 1 1+0*");
    cells.hook = onlyOnce("revert");
    stack.undo();
    failNoMore();
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(state(), "0 0 0 0+1");

    stack.openGroup("stuck");
    put(0, 5);
    failFrom("revert", 1);
    EXPECT_EQ(stack.cancelGroup(), 0);
    EXPECT_EQ(state(), "5 0 0 1+0*") << "what could not be taken back can be undone later";
    failNoMore();
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(state(), "0 0 0 0+1");
}

TEST_F(Undo, NamesTheNextStepInBothLanguages) {
    put(0, 1);
    put(3, 1);
    stack.undo();
    EXPECT_EQ(stack.undoText(), "Annuler cell 0");
    EXPECT_EQ(stack.redoText(), "R\351tablir cell 3");
    GMSG::language = GMSG::English;
    EXPECT_EQ(stack.undoText(), "Undo cell 0");
    EXPECT_EQ(stack.redoText(), "Redo cell 3");
    stack.openGroup("50 %s\t&c");
    EXPECT_EQ(stack.undoText(), "Undo");
    EXPECT_EQ(stack.redoText(), "Redo");
    put(0, 2);
    stack.closeGroup();
    EXPECT_EQ(stack.undoText(), "Undo 50 %s\t&c");
    GMSG::language = GMSG::French;
}

TEST(UndoMenuLabel, KeepsTheKeyAndTheUnderlinedLetter) {
    const struct {
        const char *text, *former, *label;
    } cases[] = {
        {"Undo R&D", "&Undo\tCtrl+Z", "&Undo R&&D\tCtrl+Z"},
        {"Undo\tx", "Save && undo", "Undo x"},
        {"Undo", "Undo\t&", "Undo\t&"},
        {"Undo", "", "Undo"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(toolbox::undo::menuLabel(each.text, each.former), each.label);
}

}  // namespace
