// The two commands follow a stack, whichever it is and whatever tools do meanwhile.
#include <gtest/gtest.h>

#include "../command/told_tool.h"
#include "cells.h"
#include "toolbox/command_manager.h"

namespace {

constexpr int kUndo = 1, kRedo = 2;

/// A document with a step in each direction, the commands, and a tool that shows them.
struct Desk {
    Desk() {
        set(*stack, cells, 0, 1);
        set(*stack, cells, 0, 2);
        stack->undo();
        manager->manage(&tool, 0);
        SetPointer<Tool> tools;
        tools.add(&tool);
        const GCOMMBase::CommRec table[] = {{kUndo, 0}, {kRedo, 0}};
        manager->manage(2, table, tools, -1);
    }
    [[nodiscard]] std::string enabled() {
        return std::string((*manager)[kUndo].isEnabled() ? "u" : "-") +
               ((*manager)[kRedo].isEnabled() ? "r" : "-");
    }

    Cells cells;
    std::unique_ptr<UndoStack> stack = std::make_unique<UndoStack>();
    ToldTool tool{1};
    std::unique_ptr<GCOMMBase> manager = std::make_unique<GCOMMBase>(nullptr, nullptr);
    std::unique_ptr<UndoCommands> commands = std::make_unique<UndoCommands>(kUndo, kRedo);
};

TEST(UndoCommands, FollowTheStackThatTheyAreBoundTo) {
    UndoStack other;
    Desk desk;
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[&] { desk.commands->refresh(); }, "--"},
        {[&] { desk.commands->follow(desk.stack.get()); }, "ur"},
        {[&] { desk.commands->command(kUndo); }, "-r"},
        {[&] { desk.commands->command(kRedo); }, "ur"},
        {[&] { desk.stack->openGroup(""); }, "--"},
        {[&] { desk.stack->closeGroup(); }, "ur"},
        {[&] { desk.commands->follow(&other); }, "--"},
        {[&] { set(*desk.stack, desk.cells, 1, 1); }, "--"},
        {[&] { desk.commands->follow(desk.stack.get()); }, "u-"},
        {[&] { desk.stack.reset(); }, "--"},
    };
    for (const auto& [act, enabled] : steps) {
        act();
        EXPECT_EQ(desk.enabled(), enabled) << &enabled - &steps[0].second;
    }
    EXPECT_EQ(desk.commands->command(kUndo), 1) << "its command, though there is no stack";
    EXPECT_EQ(desk.commands->command(3), 0);
}

TEST(UndoCommands, OutlastWhatToolsDoWhenTheyAreTold) {
    void (*const actions[])(Desk&) = {
        [](Desk& d) { d.stack.reset(); },
        [](Desk& d) { d.commands.reset(); },
        [](Desk& d) { d.manager.reset(); },
        [](Desk& d) { d.manager->unmanage(&(*d.manager)[kUndo]); },
        [](Desk& d) { d.commands->follow(nullptr); },
        [](Desk& d) { d.stack.reset(), d.commands.reset(), d.manager.reset(); },
    };
    for (const auto act : actions) {
        Desk desk;
        desk.commands->follow(desk.stack.get());
        desk.tool.action = [&] { act(desk); };
        desk.stack->undo();
        const bool follows = desk.commands && desk.commands->stack();
        if (!desk.manager || !(*desk.manager)[kUndo] || !desk.commands) continue;
        EXPECT_EQ(desk.enabled(), follows ? "-r" : "--");
    }
}

}  // namespace
