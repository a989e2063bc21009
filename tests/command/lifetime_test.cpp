// Tools that delete, remove and end what they are told about while they are told: who is left is
// told once, and nothing is touched that is gone. The sanitizers see what these tests cannot.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "told_tool.h"
#include "toolbox/command_manager.h"

namespace {

/// Three commands of one context, shown in three tools; the manager owns commands and context.
struct World {
    World() {
        SetPointer<Tool> tools;
        for (auto* tool : {&first, &second, &third}) {
            *tool = std::make_unique<ToldTool>(tools.nItem() + 1);
            manager->manage(tool->get(), 0);
            tools.add(tool->get());
        }
        manager->createAndManageContext(1);
        const GCOMMBase::CommRec table[] = {{10, 1}, {20, 1}, {30, 1}};
        EXPECT_EQ(manager->manage(3, table, tools, 1), 1);
        command(20).setCheckStatus(1);
        for (const auto* tool : {&first, &second, &third}) (*tool)->take();
    }
    Command& command(int id) { return (*manager)[id]; }
    Context& context() { return *manager->getContext(1); }

    std::unique_ptr<ToldTool> first, second, third;
    std::unique_ptr<GCOMMBase> manager = std::make_unique<GCOMMBase>(nullptr, nullptr);
};

TEST(Lifetime, OutlastsWhatToolsEndWhileTheyAreTold) {
    using Action = void (*)(World&);
    const std::pair<const char*, Action> operations[] = {
        {"check", [](World& w) { w.command(10).setCheckStatus(1); }},
        {"uncheck", [](World& w) { w.command(20).setCheckStatus(0); }},
        {"disable", [](World& w) { w.command(20).setEnableStatus(0); }},
        {"select", [](World& w) { w.context().setSel(&w.command(30)); }},
        {"leave", [](World& w) { w.context().remove(&w.command(20)); }},
        {"join",
         [](World& w) {
             auto* const checked = new Command(40, 0, 1, 1);
             const SetPointer<Tool> none;
             if (!w.manager->manage(checked, none, 1, 1)) delete checked;
         }},
        {"disable all", [](World& w) { w.context().setEnableStatus(0); }},
        {"by attribute", [](World& w) { w.manager->setCommandEnableStatusByAttribute(0, 1); }},
        {"unmanage", [](World& w) { w.manager->unmanage(&w.command(20)); }},
        {"delete", [](World& w) { delete &w.command(20); }},
        {"end", [](World& w) { w.manager.reset(); }},
    };
    const std::pair<const char*, Action> actions[] = {
        {"unmanages the command", [](World& w) { w.manager->unmanage(&w.command(20)); }},
        {"unmanages another", [](World& w) { w.manager->unmanage(&w.command(10)); }},
        {"deletes another", [](World& w) { delete &w.command(30); }},
        {"deletes the context", [](World& w) { delete w.manager->getContext(1); }},
        {"deletes a tool", [](World& w) { w.second.reset(); }},
        {"deletes itself", [](World& w) { w.first.reset(); }},
        {"ends the manager", [](World& w) { w.manager.reset(); }},
        {"selects another", [](World& w) { w.context().setSel(&w.command(30)); }},
    };
    for (const auto& [operation, run] : operations)
        for (const auto& [what, act] : actions) {
            SCOPED_TRACE(std::string(operation) + ": a tool " + what);
            World world;
            world.first->action = [&world, act = act] {
                if (world.manager) act(world);
            };
            run(world);
            if (!world.manager) continue;
            const int shown = world.third->getNumCommand();
            world.manager.reset();
            EXPECT_LE(shown, 4);
            EXPECT_EQ(world.third->getNumCommand(), 0);
        }
}

TEST(Lifetime, TellsTheNeighboursOfAToolThatLeaves) {
    for (const bool itself : {true, false}) {
        World world;
        world.first->action = [&] {
            (itself ? world.first : world.second)->remove(&world.command(10));
        };
        EXPECT_EQ(world.command(10).setEnableStatus(0), 1);
        EXPECT_EQ(world.second->take(), itself ? "e10=0 " : "");
        EXPECT_EQ(world.first->take() + world.third->take(), "e10=0 e10=0 ");
    }
}

TEST(Lifetime, LeavesTheSelectionToTheToolThatChooses) {
    World world;
    world.first->action = [&] { world.context().setSel(&world.command(30)); };
    EXPECT_EQ(world.context().setSel(&world.command(10)), 0);
    EXPECT_EQ(world.context().getSelID(), 30);
    EXPECT_FALSE(world.command(10).isChecked());
    EXPECT_FALSE(world.command(20).isChecked());

    Command* const deleted = &world.command(30);
    world.second->action = [&] { world.manager->unmanage(deleted); };
    EXPECT_EQ(deleted->setCheckStatus(0), 0) << "the command is gone";
    EXPECT_EQ(world.context().getSel(), nullptr);
}

TEST(Lifetime, ForgetsCommandsWhereverTheyAre) {
    Context first(1), second(2);
    {
        auto command = std::make_unique<Command>(10, 0, 0, 1);
        first.add(command.get());
        second.add(command.get());
        Command stranger(20, 0, 0, 1);
        EXPECT_EQ(first.setSel(&stranger), 1);
        command.reset();
        EXPECT_EQ(first.getNumCommand(), 0) << "also of the context that it was added to first";
        EXPECT_EQ(second.getNumCommand(), 0);
    }
    EXPECT_EQ(first.getSel(), nullptr) << "also a selection that was no member";
    auto gone = std::make_unique<Context>(3);
    Command left(30, 0, 0, 1);
    gone->setSel(&left);
    gone.reset();
    EXPECT_EQ(left.setCheckStatus(0), 1);
}

}  // namespace
