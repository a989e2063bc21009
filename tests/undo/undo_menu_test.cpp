// A real menu bar whose items follow a stack.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "cells.h"
#include "toolbox/command_manager.h"
#include "toolbox/messages.h"
#include "toolbox/tools.h"

namespace {

constexpr int kUndo = 101, kRedo = 102;

class UndoMenu : public ::testing::Test {
  protected:
    UndoMenu() {
        AppendMenuA(edit, MF_STRING, kUndo, "&Undo\tCtrl+Z");
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), "&Edit");
        AppendMenuA(bar, MF_STRING, kRedo, "Redo");
        SetMenu(frame, bar);
        manager->manage(&menu, 0);
        SetPointer<Tool> tools;
        tools.add(&menu);
        const GCOMMBase::CommRec table[] = {{kUndo, 0}, {kRedo, 0}};
        EXPECT_EQ(manager->manage(2, table, tools, -1), 1);
        GMSG::language = GMSG::English;
    }
    ~UndoMenu() override {
        manager.reset();
        DestroyWindow(frame);
        GMSG::language = GMSG::French;
    }
    /// Text of an item, in brackets when it is greyed.
    [[nodiscard]] static std::string item(HMENU menu, UINT id) {
        char text[100] = "";
        GetMenuStringA(menu, id, text, sizeof text, MF_BYCOMMAND);
        const bool greyed = GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED;
        return greyed ? "[" + std::string(text) + "]" : text;
    }
    [[nodiscard]] std::string seen() const { return item(edit, kUndo) + ", " + item(bar, kRedo); }

    HMENU bar = CreateMenu(), edit = CreatePopupMenu();
    HWND frame = CreateWindowExA(0, "STATIC", "Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300,
                                 200, nullptr, nullptr, nullptr, nullptr);
    MenuTool menu{1, bar, frame};
    std::unique_ptr<GCOMMBase> manager =
        std::make_unique<GCOMMBase>(frame, GetModuleHandleA(nullptr));
    Cells cells;
    UndoStack stack;
    UndoCommands commands{kUndo, kRedo};
};

TEST_F(UndoMenu, SaysWhatTheNextStepIs) {
    EXPECT_EQ(commands.showIn(bar, frame), 1);
    EXPECT_EQ(seen(), "[&Undo\tCtrl+Z], [Redo]");
    commands.follow(&stack);
    set(stack, cells, 1, 1);
    EXPECT_EQ(seen(), "&Undo cell 1\tCtrl+Z, [Redo]");
    stack.openGroup("R&D");
    set(stack, cells, 2, 1);
    EXPECT_EQ(seen(), "[&Undo\tCtrl+Z], [Redo]");
    stack.closeGroup();
    EXPECT_EQ(seen(), "&Undo R&&D\tCtrl+Z, [Redo]");
    commands.command(kUndo);
    EXPECT_EQ(seen(), "&Undo cell 1\tCtrl+Z, Redo R&&D");
    GMSG::language = GMSG::French;
    commands.refresh();
    EXPECT_EQ(seen(), "&Annuler cell 1\tCtrl+Z, R\351tablir R&&D");
    commands.follow(nullptr);
    EXPECT_EQ(seen(), "[&Annuler\tCtrl+Z], [R\351tablir]");
}

TEST_F(UndoMenu, ForgetsMenusThatAreGoneAndRefusesOthers) {
    const HMENU popup = CreatePopupMenu();
    EXPECT_EQ(commands.showIn(popup), 0) << "it has no such item";
    EXPECT_EQ(commands.showIn(nullptr), 0);
    AppendMenuA(popup, MF_STRING | MF_GRAYED, kRedo, "Redo");
    commands.showIn(bar, frame);
    EXPECT_EQ(commands.showIn(popup), 1);
    set(stack, cells, 1, 1);
    stack.undo();
    commands.follow(&stack);
    EXPECT_EQ(item(popup, kRedo), "[Redo cell 1]") << "greyed by who opens it";
    DestroyMenu(popup);
    stack.redo();
    EXPECT_EQ(seen(), "&Undo cell 1\tCtrl+Z, [Redo]");
}

}  // namespace
