// The life of many keys: each benchmark counts keys per second.
#include <benchmark/benchmark.h>

#include "bench_manager.h"

namespace {

UINT keysOf(const benchmark::State& state) {
    return static_cast<UINT>(state.range(0));
}

void countKeys(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void declareKeys(benchmark::State& state) {
    BenchManager manager(benchProfile());
    for (auto _ : state) manager.declare(keysOf(state));
    countKeys(state);
}
BENCHMARK(declareKeys)->RangeMultiplier(10)->Range(100, 10000);

void restoreKeys(benchmark::State& state) {
    BenchManager manager(benchProfile());
    manager.declare(keysOf(state));
    if (!manager.saveAllKeys()) state.SkipWithError("not saved");
    for (auto _ : state) {
        state.PauseTiming();
        manager.declare(keysOf(state));
        state.ResumeTiming();
        if (manager.initUDApp() != keysOf(state)) state.SkipWithError("not restored");
    }
    countKeys(state);
}
BENCHMARK(restoreKeys)->RangeMultiplier(10)->Range(100, 10000);

void saveAllKeys(benchmark::State& state) {
    BenchManager manager(benchProfile());
    manager.declare(keysOf(state));
    manager.initUDApp();
    int turn = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const RWCString description = "Turn " + std::to_string(++turn);
        for (UINT id = 0; id < keysOf(state); ++id) manager.setKeyDesc(id, description);
        state.ResumeTiming();
        if (!manager.saveAllKeys()) state.SkipWithError("not saved");
    }
    countKeys(state);
}
BENCHMARK(saveAllKeys)->RangeMultiplier(10)->Range(100, 10000);

/// One key of many: the file is rewritten for it.
void saveOneKey(benchmark::State& state) {
    BenchManager manager(benchProfile());
    manager.declare(keysOf(state));
    manager.initUDApp();
    manager.saveAllKeys();
    int turn = 0;
    for (auto _ : state) {
        manager.setKeyDesc(7, "Turn " + std::to_string(++turn));
        if (!manager.saveKey(7)) state.SkipWithError("not saved");
    }
}
BENCHMARK(saveOneKey)->RangeMultiplier(10)->Range(100, 10000);

/// All keys expanded from groups of 100 in one group.
void expandGroups(benchmark::State& state) {
    BenchManager manager(benchProfile());
    manager.declare(keysOf(state));
    manager.initUDApp();
    constexpr UINT kTop = 1000000;
    for (UINT id = 0; id < keysOf(state); ++id) {
        const UINT group = kTop + 1 + id / 100;
        manager.addIdToGroup(id, group);
        if (id % 100 == 0) manager.addIdToGroup(group, kTop);
    }
    for (auto _ : state) benchmark::DoNotOptimize(manager.getChildList(kTop, 0));
    countKeys(state);
}
BENCHMARK(expandGroups)->RangeMultiplier(10)->Range(100, 10000);

}  // namespace
