// Edits and listeners that end the stack and use it again while it calls them, and memory that runs
// out at any moment. The sanitizers see what these tests cannot.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "cells.h"

namespace {

long allowed = -1;  // allocations until one fails; below 0: none does

void* allocate(std::size_t size) {
    if (allowed == 0) throw std::bad_alloc();
    if (allowed > 0) --allowed;
    if (void* const block = std::malloc(size ? size : 1)) return block;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

/// A stack with two steps to undo, the last of gesture 5, and one of two edits to redo; a listener.
struct World : UndoListener {
    World() {
        set(*stack, cells, 0, 1);
        set(*stack, cells, 2, 1, 5);
        stack->openGroup("two");
        set(*stack, cells, 3, 1);
        set(*stack, cells, 1, 1);
        stack->closeGroup();
        stack->undo();
        listenTo(stack.get());
        cells.steps = 0;
    }
    ~World() override { cells.hook = Cells().hook; }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    int put(std::size_t cell, int value, unsigned gesture = 0) {
        return set(*stack, cells, cell, value, gesture);
    }
    /// What can be seen of it.
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

/// Two edits in a group.
int group(World& w, int (UndoGroup::*end)()) {
    w.group = std::make_unique<UndoGroup>(*w.stack, "group");
    for (const std::size_t cell : {0, 1})
        if (!w.stack || !w.put(cell, 7)) return 0;
    return w.group ? (*w.group.*end)() : 0;
}

using Operation = int (*)(World&);
const std::pair<const char*, Operation> kOperations[] = {
    {"perform", [](World& w) { return w.put(0, 7); }},
    {"merge", [](World& w) { return w.put(2, 7, 5); }},
    {"annul", [](World& w) { return w.put(2, 0, 5); }},
    {"undo", [](World& w) { return w.stack->undo(); }},
    {"redo", [](World& w) { return w.stack->redo(); }},
    {"close", [](World& w) { return group(w, &UndoGroup::close); }},
    {"cancel", [](World& w) { return group(w, &UndoGroup::cancel); }},
    {"limit", [](World& w) { return w.stack->setLimits(1, 1000); }},
    {"clear", [](World& w) { return w.stack->clear(); }},
    {"save", [](World& w) { return w.stack->setClean(); }},
    {"end", [](World& w) { return w.stack.reset(), 1; }},
};

TEST(UndoLifetime, OutlastsWhatEditsAndListenersDo) {
    constexpr int kGone = -1;
    const std::pair<const char*, Operation> actions[] = {
        {"deletes the stack", [](World& w) { return w.stack.reset(), kGone; }},
        {"stops listening", [](World& w) { return w.listenTo(nullptr), 0; }},
        {"performs", [](World& w) { return w.put(4, 9); }},
        {"undoes", [](World& w) { return w.stack->undo(); }},
        {"redoes", [](World& w) { return w.stack->redo(); }},
        {"opens", [](World& w) { return w.stack->openGroup("x"); }},
        {"closes", [](World& w) { return w.stack->closeGroup(); }},
        {"saves", [](World& w) { return w.stack->setClean(); }},
        {"clears", [](World& w) { return w.stack->clear(); }},
        {"limits", [](World& w) { return w.stack->setLimits(0, 0); }},
    };
    int called = 0;
    for (const auto& [operation, run] : kOperations)
        for (const char* const what : {"apply", "revert", "merge", "size", "tell"})
            for (const auto& [action, act] : actions)
                for (int nth = 1; nth <= 2; ++nth) {
                    SCOPED_TRACE(std::string(operation) + ": " + what + " " + action);
                    World world, undisturbed;
                    run(undisturbed);
                    int left = nth, result = 0;
                    world.cells.hook = [&, act = act](std::string_view now) {
                        if (now != what || --left != 0 || !world.stack) return true;
                        ++called;
                        result = act(world);
                        return true;
                    };
                    const int done = run(world);
                    if (result != kGone) {
                        EXPECT_EQ(result, 0) << "refused";
                        EXPECT_EQ(world.seen(), undisturbed.seen());
                    } else if (std::string_view(operation) != "end") {
                        EXPECT_EQ(done, 0);
                    }
                }
    EXPECT_GT(called, 300);
}

TEST(UndoLifetime, LetsDestructorsOfEditsDeleteTheStack) {
    for (const auto& [operation, run] : kOperations) {
        SCOPED_TRACE(operation);
        World world;
        world.cells.hook = [&](std::string_view what) {
            if (what == "destroy") world.stack.reset();
            return true;
        };
        run(world);
        world.cells.hook = Cells().hook;
    }
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
    for (const auto& [operation, run] : kOperations) {
        bool failed = true;
        for (long n = 0; failed && n < 100; ++n) {
            SCOPED_TRACE(std::string(operation) + ", allocation " + std::to_string(n));
            World world, undisturbed;
            const std::string before = world.seen();
            run(undisturbed);
            allowed = n;
            int done = 0;
            try {
                done = run(world);
                failed = allowed == 0;
                allowed = -1;
            } catch (const std::bad_alloc&) {  // of what the test itself makes
                allowed = -1;
            }
            world.group.reset();
            EXPECT_EQ(world.seen(), done ? undisturbed.seen() : before);
            while (world.stack && world.stack->undo()) {
            }
            EXPECT_EQ(world.stack ? world.stack->undoCount() : 0, 0u);
        }
        EXPECT_FALSE(failed);
    }
}

}  // namespace
