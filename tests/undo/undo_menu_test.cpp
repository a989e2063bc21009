// A real menu bar whose items follow a stack.
#include <gtest/gtest.h>

#include "cells.h"
#include "toolbox/command_manager.h"
#include "toolbox/messages.h"
#include "toolbox/tools.h"

namespace {

constexpr int kUndo = 101, kRedo = 102;

/// Text of an item, in brackets when it is greyed.
std::string item(HMENU menu, UINT id) {
    char text[100] = "";
    GetMenuStringA(menu, id, text, sizeof text, MF_BYCOMMAND);
    const bool greyed = GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED;
    return greyed ? "[" + std::string(text) + "]" : text;
}

TEST(UndoMenu, SaysWhatTheNextStepIs) {
    const HMENU bar = CreateMenu(), edit = CreatePopupMenu(), popup = CreatePopupMenu();
    AppendMenuA(edit, MF_STRING, kUndo, "&Undo\tCtrl+Z");
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), "&Edit");
    AppendMenuA(bar, MF_STRING, kRedo, "Redo");
    const HWND frame = CreateWindowExA(0, "STATIC", "Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       300, 200, nullptr, bar, nullptr, nullptr);
    GCOMMBase manager(frame, GetModuleHandleA(nullptr));
    MenuTool menu(1, bar, frame);
    manager.manage(&menu, 0);
    SetPointer<Tool> tools;
    tools.add(&menu);
    const GCOMMBase::CommRec table[] = {{kUndo, 0}, {kRedo, 0}};
    manager.manage(2, table, tools, -1);
    Cells cells;
    UndoStack stack;
    UndoCommands commands(kUndo, kRedo);
    EXPECT_FALSE(commands.showIn(popup) || commands.showIn(nullptr)) << "without such an item";
    AppendMenuA(popup, MF_STRING, kRedo, "Redo");
    EXPECT_TRUE(commands.showIn(popup) && commands.showIn(bar, frame));

    GMSG::language = GMSG::English;
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[&] { commands.follow(&stack); }, "[&Undo\tCtrl+Z], [Redo]"},
        {[&] { set(stack, cells, 1, 1); }, "&Undo cell 1\tCtrl+Z, [Redo]"},
        {[&] { set(stack, cells, 2, 1); }, "&Undo cell 2\tCtrl+Z, [Redo]"},
        {[&] { commands.command(kUndo); }, "&Undo cell 1\tCtrl+Z, Redo cell 2"},
        {[&] { DestroyMenu(popup), commands.refresh(); }, "&Undo cell 1\tCtrl+Z, Redo cell 2"},
    };
    for (const auto& [act, seen] : steps) {
        act();
        EXPECT_EQ(item(edit, kUndo) + ", " + item(bar, kRedo), seen);
    }
    GMSG::language = GMSG::French;
    DestroyWindow(frame);
}

}  // namespace
