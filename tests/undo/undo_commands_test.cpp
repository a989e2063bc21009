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
    Desk desk;
    UndoStack other;
    EXPECT_EQ(desk.commands->refresh(), 1);
    EXPECT_EQ(desk.enabled(), "--");
    EXPECT_EQ(desk.commands->command(kUndo), 1) << "its command, though there is no stack";
    EXPECT_EQ(desk.commands->follow(desk.stack.get()), 1);
    EXPECT_EQ(desk.enabled(), "ur");
    desk.tool.take();
    EXPECT_EQ(desk.commands->command(kUndo), 1);
    EXPECT_EQ(desk.tool.take(), "e1=0 ");
    EXPECT_EQ(desk.commands->command(kRedo), 1);
    EXPECT_EQ(desk.commands->command(3), 0);
    EXPECT_EQ(desk.cells.values[0], 1);
    {
        UndoGroup group(*desk.stack, "");
        EXPECT_EQ(desk.enabled(), "--");
    }
    EXPECT_EQ(desk.enabled(), "ur");
    desk.commands->follow(&other);
    EXPECT_EQ(desk.enabled(), "--");
    set(*desk.stack, desk.cells, 1, 1);
    EXPECT_EQ(desk.enabled(), "--");
    desk.commands->follow(desk.stack.get());
    EXPECT_EQ(desk.enabled(), "u-");
    desk.stack.reset();
    EXPECT_EQ(desk.enabled(), "--");
    EXPECT_EQ(desk.commands->stack(), nullptr);
    desk.manager.reset();
    EXPECT_EQ(desk.commands->refresh(), 1) << "nothing to show it";
}

TEST(UndoCommands, OutlastWhatToolsDoWhenTheyAreTold) {
    const std::pair<const char*, void (*)(Desk&)> actions[] = {
        {"deletes the stack", [](Desk& d) { d.stack.reset(); }},
        {"deletes the commands' object", [](Desk& d) { d.commands.reset(); }},
        {"deletes the manager", [](Desk& d) { d.manager.reset(); }},
        {"deletes a command", [](Desk& d) { d.manager->unmanage(&(*d.manager)[kUndo]); }},
        {"binds it to none", [](Desk& d) { d.commands->follow(nullptr); }},
        {"deletes all", [](Desk& d) { d.stack.reset(), d.commands.reset(), d.manager.reset(); }},
    };
    for (const auto& [what, act] : actions)
        for (const bool direct : {false, true}) {
            SCOPED_TRACE(what);
            Desk desk;
            desk.commands->follow(direct ? nullptr : desk.stack.get());
            desk.tool.action = [&, act = act] { act(desk); };
            if (direct)
                desk.commands->follow(desk.stack.get());
            else
                desk.stack->undo();
            const bool follows = desk.stack && desk.commands && desk.commands->stack();
            if (desk.manager && (*desk.manager)[kUndo] && desk.commands) {
                EXPECT_EQ(desk.enabled(), !follows ? "--" : direct ? "ur" : "-r");
            }
        }
}

}  // namespace
