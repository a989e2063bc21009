// Commands, contexts and tools, and the manager's registry of them: what tools are told, and what
// is refused.
#include "toolbox/commands.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/text_fakes.h"
#include "told_tool.h"
#include "toolbox/command_manager.h"

namespace {

/// A command that reports its end.
struct Counted : Command {
    Counted(int id, int& living) : Command(id, 0, 0, 1), living_(living) { ++living_; }
    ~Counted() override { --living_; }
    int& living_;
};

template <class T>
SetPointer<T> setOf(std::initializer_list<T*> items) {
    SetPointer<T> set;
    for (T* item : items) set.add(item);
    return set;
}

class Commands : public ::testing::Test {
  protected:
    Commands() {
        for (Command* command : {&a, &b}) {
            tool.add(command);
            context.add(command);
        }
        tool.take();
    }
    ToldTool tool{1};
    Context context{5};
    Command a{10, 4, 1, 1}, b{20, 0, 0, 1};
};

TEST_F(Commands, TellTheirToolsOfChangesAndExcludeOneAnother) {
    const struct {
        std::function<int()> operation;
        int result;
        const char* told;
        int selected, enabledSelected;
    } steps[] = {
        {[&] { return b.setCheckStatus(1); }, 1, "c10=0 c20=1 ", 20, 20},
        {[&] { return b.setCheckStatus(0); }, 1, "c20=0 ", 0, 0},
        {[&] { return a.setCheckStatus(1); }, 1, "c10=1 ", 10, 10},
        {[&] { return a.setEnableStatus(1); }, 1, "", 10, 10},
        {[&] { return a.setEnableStatus(0); }, 1, "e10=0 ", 10, 0},
        {[&] { return b.setCheckStatus(1); }, 1, "c10=0 c20=1 ", 20, 20},
        // Refused while the command or the context is disabled.
        {[&] { return a.setCheckStatus(1); }, 0, "", 20, 20},
        {[&] { return context.setSel(&a); }, 0, "", 20, 20},
        {[&] { return context.setEnableStatus(0); }, 1, "e20=0 ", 20, 0},
        {[&] { return a.setEnableStatus(1); }, 1, "e10=1 ", 20, 0},
        {[&] { return context.setSel(nullptr); }, 0, "", 20, 0},
        {[&] { return context.setEnableStatus(1); }, 1, "e20=1 ", 20, 20},
        {[&] { return context.setSel(&a); }, 1, "c20=0 c10=1 ", 10, 10},
        // A tool that does not show a command, a command without context.
        {[&] { return tool.remove(&b); }, 1, "", 10, 10},
        {[&] { return b.setCheckStatus(1); }, 1, "c10=0 ", 20, 20},
        {[&] { return context.remove(&a); }, 1, "", 20, 20},
        {[&] { return a.setCheckStatus(1); }, 1, "c10=1 ", 20, 20},
        {[&] { return context.remove(&b); }, 1, "", 0, 0},
    };
    EXPECT_EQ(context.getSel(), &a) << "checked when it was added";
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        EXPECT_EQ(step.operation(), step.result);
        EXPECT_EQ(tool.take(), step.told);
        EXPECT_EQ(context.getSelID(), step.selected);
        EXPECT_EQ(context.getEnabledSelID(), step.enabledSelected);
    }
}

class Manager : public ::testing::Test {
  protected:
    const SetPointer<Tool> none;
    std::unique_ptr<GCOMMBase> manager = std::make_unique<GCOMMBase>(nullptr, nullptr);
};

TEST_F(Manager, RefusesWhatItCannotPlace) {
    ToldTool known(1), stranger(2);
    Context context(7);
    EXPECT_EQ(manager->manage(&known, 0), 0);
    EXPECT_EQ(manager->getTool(1), &known);
    EXPECT_EQ(manager->manage(&context, 0), 0);

    Command first(10, 0, 0, 1), twin(10, 0, 0, 1), other(11, 0, 0, 1);
    EXPECT_EQ(manager->manage(&first, setOf<Tool>({&known}), 7, 0), 1);
    EXPECT_EQ(manager->manage(&twin, none, -1, 0), 0);
    EXPECT_EQ(&(*manager)[10], &first);
    EXPECT_EQ(manager->manage(&other, none, 8, 0), 0);
    EXPECT_EQ(manager->manage(&other, setOf<Tool>({&known, &stranger}), -1, 0), 0);
    EXPECT_EQ(known.getNumCommand(), 1) << "looked at before anything is done";
    EXPECT_EQ(manager->manage(nullptr, none, -1, 0), 0);

    context.add(&other);
    EXPECT_EQ(manager->manage(&other, setOf<Tool>({&known}), 7, 0), 0);
    EXPECT_EQ(known.getNumCommand(), 2) << "kept by the tools before the failure";

    const GCOMMBase::CommRec table[] = {{20, 0}, {10, 0}, {30, 0}};
    EXPECT_EQ(manager->manage(3, table, setOf<Tool>({&known}), 7), 0);
    EXPECT_EQ(context.getNumCommand(), 3) << "those before the failure";
    EXPECT_EQ(manager->unmanage(&context), 0) << "it has commands";
}

TEST_F(Manager, DeletesWhatItOwnsAndLeavesTheRest) {
    int living = 0;
    Context* owned = manager->createAndManageContext(1);
    Counted mine(10, living);
    EXPECT_EQ(manager->manage(&mine, none, 1, 0), 1);
    for (const int id : {11, 12, 13})
        EXPECT_EQ(manager->manage(new Counted(id, living), none, 1, 1), 1);
    EXPECT_EQ(manager->unmanage(&(*manager)[11]), 1);
    EXPECT_EQ(living, 3);
    delete &(*manager)[12];
    EXPECT_FALSE((*manager)[12]) << "who deletes it unmanages it";

    ToldTool tool(3);
    Context set(2);
    EXPECT_EQ(manager->manage(&tool, 1), 1);
    EXPECT_EQ(manager->manage(&set, 0), 0) << "managed and not owned";
    Command unknown(99, 0, 1, 1);
    tool.add(&unknown);
    set.add(&unknown);
    owned->setSel(&mine);
    manager.reset();
    EXPECT_FALSE(mine.isChecked());
    EXPECT_EQ(tool.getNumCommand() + set.getNumCommand(), 0);
    EXPECT_EQ(living, 1);
    EXPECT_EQ(Tool::getGCOMMBase(), nullptr);
}

TEST_F(Manager, ReportsEveryUseOfAnUndefinedCommand) {
    toolbox::testing::FakedTexts faked;
    Command& undefined = (*manager)[-55];
    for (const int result :
         {undefined.setCheckStatus(1), undefined.setEnableStatus(0), undefined.isChecked(),
          undefined.isEnabled(), undefined.getID(), undefined.getAttribute(1)})
        EXPECT_EQ(result, 0);
    EXPECT_EQ(faked.prompt.boxes.size(), 6u);
    EXPECT_EQ(faked.prompt.boxes[0].text, "Commande #-55 n'est pas d\351finie (command)");
    EXPECT_EQ(faked.prompt.fatal, std::vector<std::string>(6, "Bye"));
}

}  // namespace
