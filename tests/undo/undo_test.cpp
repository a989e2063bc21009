// What the model leaves out: bytes, steps that got stuck, texts.
#include "toolbox/undo.h"

#include <gtest/gtest.h>

#include "cells.h"
#include "toolbox/messages.h"
#include "undo/menu_label.h"

namespace {

class Undo : public ::testing::Test {
  protected:
    /// Sets the first cells to 1.
    void group(std::size_t cells_of_it) {
        UndoGroup group(stack, "group");
        stack.openGroup("closed with the other");
        for (std::size_t i = 0; i < cells_of_it; ++i) set(stack, cells, i, 1);
        EXPECT_EQ(group.close(), 1);
    }
    /// The first three cells, then the numbers of steps to undo and redo, "*" when changed.
    [[nodiscard]] std::string state() const {
        std::string all;
        for (std::size_t i = 0; i < 3; ++i) all += std::to_string(cells.values[i]) + " ";
        all += std::to_string(stack.undoCount()) + "+" + std::to_string(stack.redoCount());
        return all + (stack.isClean() ? "" : "*");
    }

    Cells cells;
    UndoStack stack;
};

TEST_F(Undo, KeepsItsLimits) {
    for (int i = 1; i <= 5; ++i) set(stack, cells, 0, i);
    EXPECT_EQ(stack.bytes(), 50u);
    stack.undo();
    stack.undo();
    const struct {
        std::size_t steps, bytes;
        const char* state;
    } cases[] = {
        {UndoStack::kNoLimit, 39, "3 0 0 1+2*"},  // the oldest go first
        {2, UndoStack::kNoLimit, "3 0 0 1+1*"},   // then those that are farthest
        {9, 5, "3 0 0 1+0*"},                     // one stays
        {0, 5, "3 0 0 0+0*"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(stack.setLimits(each.steps, each.bytes), 1);
        EXPECT_EQ(state(), each.state);
    }
    stack.setLimits(9, 15);
    group(2);
    EXPECT_EQ(stack.bytes(), 20u);
    stack.undo();
    EXPECT_EQ(state(), "3 0 0 0+1*") << "one stays";
}

TEST_F(Undo, TellsTheTruthOfAStepThatGotStuck) {
    const auto stickAtTheSecond = [this] {
        cells.hook = [done = 0](std::string_view what) mutable {
            return (what != "revert" && what != "apply") || ++done == 1;
        };
        EXPECT_EQ(stack.undo(), 0);
        EXPECT_EQ(state(), "1 1 0 1+0*");
        EXPECT_TRUE(stack.canUndo() && stack.canRedo());
        cells.hook = Cells().hook;
    };
    stack.setLimits(9, 15);
    group(3);
    stickAtTheSecond();
    EXPECT_EQ(stack.redo(), 1);
    EXPECT_EQ(state(), "1 1 1 1+0*");
    stickAtTheSecond();
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(state(), "0 0 0 0+1");

    stack.openGroup("stuck");
    set(stack, cells, 0, 5);
    cells.hook = [](std::string_view what) { return what != "revert"; };
    EXPECT_EQ(stack.cancelGroup(), 0);
    EXPECT_EQ(state(), "5 0 0 1+0*") << "what could not be taken back can be undone later";
    cells.hook = Cells().hook;
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(state(), "0 0 0 0+1");

    group(3);
    stickAtTheSecond();
    stack.setLimits(0, UndoStack::kNoLimit);
    EXPECT_FALSE(stack.canUndo() || stack.canRedo());
}

TEST_F(Undo, NamesTheNextStepInBothLanguages) {
    group(3);
    EXPECT_EQ(stack.undoText(), "Annuler group");
    stack.undo();
    EXPECT_EQ(stack.redoText(), "R\351tablir group");
    GMSG::language = GMSG::English;
    const UndoGroup open(stack, "50 %s");
    EXPECT_EQ(stack.undoText() + stack.redoText(), "UndoRedo");
    set(stack, cells, 2, 1);
    stack.closeGroup();
    EXPECT_EQ(stack.undoText(), "Undo 50 %s");
    GMSG::language = GMSG::French;
}

TEST(UndoMenuLabel, KeepsTheKeyAndTheUnderlinedLetter) {
    EXPECT_EQ(toolbox::undo::menuLabel("Undo R&D", "&Undo\tCtrl+Z"), "&Undo R&&D\tCtrl+Z");
    EXPECT_EQ(toolbox::undo::menuLabel("Undo\tx", "Save && undo"), "Undo x");
}

}  // namespace
