// Edits and listeners that end the stack and use it again while it calls them, and memory that runs
// out at any moment. The sanitizers see what these tests cannot.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "cells.h"

static long allowed = 0;  // the last of so many allocations fails; 0: none does

void* operator new(std::size_t size) {
    const bool fails = allowed > 0 && --allowed == 0;
    void* const block = fails ? nullptr : std::malloc(size ? size : 1);
    return block ? block : throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

/// A stack with two steps to undo, the last of gesture 5, and one of two edits to redo; a listener.
struct World : UndoListener {
    World() {
        put(0, 1);
        put(2, 1, 5);
        const std::unique_ptr<UndoGroup> two = std::make_unique<UndoGroup>(*stack, "two");
        put(3, 1);
        put(1, 1);
        two->close();
        stack->undo();
        listenTo(stack.get());
    }
    ~World() override { cells.hook = Cells().hook; }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    int put(std::size_t cell, int value, unsigned gesture = 0) {
        return set(*stack, cells, cell, value, gesture);
    }
    int putGroup(int (UndoGroup::*end)()) {
        group = std::make_unique<UndoGroup>(*stack, "group");
        for (const std::size_t cell : {0, 1})
            if (!stack || !put(cell, 7)) return 0;
        return group ? (*group.*end)() : 0;
    }
    [[nodiscard]] std::string seen() const {
        std::string all;
        for (const int value : cells.values) all += std::to_string(value) + " ";
        if (!stack) return all;
        return all + std::to_string(stack->undoCount()) + "+" + std::to_string(stack->redoCount()) +
               "/" + std::to_string(stack->groupDepth()) + (stack->isClean() ? "" : "*");
    }

    Cells cells;
    std::unique_ptr<UndoStack> stack = std::make_unique<UndoStack>();
    std::unique_ptr<UndoGroup> group;

  private:
    void undoChanged() override { cells.hook("tell"); }
};

using Operation = int (*)(World&);
const std::pair<std::string_view, Operation> kOperations[] = {
    {"perform", [](World& w) { return w.put(0, 7); }},
    {"merge", [](World& w) { return w.put(2, 7, 5); }},
    {"annul", [](World& w) { return w.put(2, 0, 5); }},
    {"undo", [](World& w) { return w.stack->undo(); }},
    {"redo", [](World& w) { return w.stack->redo(); }},
    {"close", [](World& w) { return w.putGroup(&UndoGroup::close); }},
    {"cancel", [](World& w) { return w.putGroup(&UndoGroup::cancel); }},
    {"limit", [](World& w) { return w.stack->setLimits(1, 1000); }},
    {"clear", [](World& w) { return w.stack->clear(); }},
    {"save", [](World& w) { return w.stack->setClean(); }},
    {"end", [](World& w) { return w.stack.reset(), 1; }},
};

TEST(UndoLifetime, OutlastsWhatEditsAndListenersDo) {
    const std::pair<std::string_view, Operation> actions[] = {
        {"delete", [](World& w) { return w.stack.reset(), 0; }},
        {"stop listening", [](World& w) { return w.listenTo(nullptr), 0; }},
        {"perform", [](World& w) { return w.put(4, 9); }},
        {"undo", [](World& w) { return w.stack->undo(); }},
        {"redo", [](World& w) { return w.stack->redo(); }},
        {"open", [](World& w) { return w.stack->openGroup("x"); }},
        {"close", [](World& w) { return w.stack->closeGroup(); }},
        {"cancel", [](World& w) { return w.stack->cancelGroup(); }},
        {"save", [](World& w) { return w.stack->setClean(); }},
        {"clear", [](World& w) { return w.stack->clear(); }},
        {"limit", [](World& w) { return w.stack->setLimits(0, 0); }},
    };
    int called = 0;
    for (const auto& [operation, run] : kOperations)
        for (const std::string_view what : {"apply", "revert", "merge", "size", "tell", "destroy"})
            for (const auto& [action, act] : actions) {
                World world, undisturbed;
                int result = 0;
                bool acts = false;  // what it does destroys edits, too
                world.cells.hook = [&, what = what, act = act](std::string_view now) {
                    if (now != what || !world.stack || std::exchange(acts, true)) return true;
                    ++called;
                    result |= act(world);
                    acts = false;
                    return true;
                };
                const int done = run(world);
                run(undisturbed);
                const bool gone = !world.stack && operation != "end";
                // The stack may be at rest again when it destroys edits.
                if (what == "destroy" && !gone) continue;
                EXPECT_EQ(result, 0) << operation << ": " << what << ": " << action;
                EXPECT_TRUE(gone ? done == 0 : world.seen() == undisturbed.seen())
                    << operation << ": " << what << ": " << action << world.seen();
            }
    EXPECT_GT(called, 300);
}

TEST(UndoLifetime, CancelsAGroupWhoseScopeEndsWhileTheStackIsBusy) {
    for (const char* const what : {"apply", "tell"}) {
        World world;
        const std::string before = world.seen();
        world.group = std::make_unique<UndoGroup>(*world.stack, "gesture");
        world.cells.hook = [&](std::string_view now) {
            if (now == what) world.group.reset();
            return true;
        };
        world.put(0, 7);
        EXPECT_EQ(world.seen(), before) << what;
    }
}

TEST(UndoLifetime, DoesAllOrNothingWhenMemoryRunsOut) {
    for (const auto& [operation, run] : kOperations)
        for (long n = 1, failed = 1; failed; ++n) {
            World world, undisturbed;
            const std::string before = world.seen();
            run(undisturbed);
            int done = 0;
            allowed = n;
            try {
                done = run(world);
            } catch (const std::bad_alloc&) {  // of what the test itself makes
            }
            failed = allowed == 0;
            allowed = 0;
            world.group.reset();
            EXPECT_EQ(world.seen(), done ? undisturbed.seen() : before) << operation << n;
            while (world.stack && world.stack->undo()) {
            }
            EXPECT_EQ(world.stack ? world.stack->undoCount() : 0, 0u) << operation << n;
        }
}

}  // namespace
