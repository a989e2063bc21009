// Pointer sets beside std::find over a vector, and the manager's look-up beside a binary search.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "toolbox/command_manager.h"
#include "toolbox/sets.h"

namespace {

/// The elements in random order: those of a real set do not lie in memory one after the other.
std::vector<int*> elements(std::size_t count) {
    static std::vector<int> cells(20000);
    std::vector<int*> all;
    for (std::size_t i = 0; i < count; ++i) all.push_back(&cells[i]);
    std::shuffle(all.begin(), all.end(), std::mt19937(1));
    return all;
}

/// What is looked for: every element in random order.
std::vector<int*> wanted(const std::vector<int*>& all) {
    std::vector<int*> order = all;
    std::shuffle(order.begin(), order.end(), std::mt19937(2));
    return order;
}

void findInSet(benchmark::State& state) {
    const auto all = elements(static_cast<std::size_t>(state.range(0)));
    const auto order = wanted(all);
    SetPointer<int> set;
    for (int* item : all) set.addNoCheck(item);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(set.findItem(order[i]));
        if (++i == order.size()) i = 0;
    }
}

void findInVector(benchmark::State& state) {
    const auto all = elements(static_cast<std::size_t>(state.range(0)));
    const auto order = wanted(all);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::find(all.begin(), all.end(), order[i]));
        if (++i == order.size()) i = 0;
    }
}

// Filling an empty one, growth included; the time is for all elements.

void addToSet(benchmark::State& state) {
    const auto all = elements(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        SetPointer<int> set;
        for (int* item : all) set.add(item);
        benchmark::DoNotOptimize(set.nItem());
    }
}

void addToVector(benchmark::State& state) {
    const auto all = elements(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        std::vector<int*> set;
        for (int* item : all)
            if (std::find(set.begin(), set.end(), item) == set.end()) set.push_back(item);
        benchmark::DoNotOptimize(set.data());
    }
}

constexpr int kCommands = 10000;

std::vector<int> lookedUp() {
    std::vector<int> ids(kCommands);
    for (int i = 0; i < kCommands; ++i) ids[static_cast<std::size_t>(i)] = 3 * i;
    std::shuffle(ids.begin(), ids.end(), std::mt19937(3));
    return ids;
}

void commandOfManager(benchmark::State& state) {
    GCOMMBase manager(nullptr, nullptr);
    for (int i = 0; i < kCommands; ++i)
        manager.manage(new Command(3 * i, 0, 0, 1), SetPointer<Tool>(), -1, 1);
    const auto ids = lookedUp();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(&manager[ids[i]]);
        if (++i == ids.size()) i = 0;
    }
}

/// A command as one would write it for this alone, of the same size.
struct PlainCommand {
    void* table;
    int id;
    char rest[sizeof(Command) - sizeof(void*) - sizeof(int)];
};

PlainCommand* searched(const std::vector<std::unique_ptr<PlainCommand>>& commands, int id) {
    std::size_t low = 0;
    std::size_t high = commands.size();
    while (low < high) {
        const std::size_t mid = (low + high) / 2;
        PlainCommand* command = commands[mid].get();
        if (command->id == id) return command;
        if (id < command->id)
            high = mid;
        else
            low = mid + 1;
    }
    return nullptr;
}

void commandByHand(benchmark::State& state) {
    std::vector<std::unique_ptr<PlainCommand>> commands;
    for (int i = 0; i < kCommands; ++i) {
        commands.push_back(std::make_unique<PlainCommand>());
        commands.back()->id = 3 * i;
    }
    const auto ids = lookedUp();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(searched(commands, ids[i]));
        if (++i == ids.size()) i = 0;
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int size : {2, 5, 10, 100, 1000, 10000}) benchmark->Arg(size);
}

BENCHMARK(findInSet)->Apply(sizes);
BENCHMARK(findInVector)->Apply(sizes);
BENCHMARK(addToSet)->Apply(sizes);
BENCHMARK(addToVector)->Apply(sizes);
BENCHMARK(commandOfManager);
BENCHMARK(commandByHand);

}  // namespace
