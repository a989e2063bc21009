// Dispatch to clients beside a loop over a vector of them.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "by_hand.h"
#include "toolbox/dispatch.h"

namespace {

/// Counts messages, as cheap a handler as there is.
struct Counter : DispatchClient {
    using DispatchClient::DispatchClient;
    LRESULT handleMessage(TarvMess& message) override {
        seen += message.message;
        return 0;
    }
    std::uint64_t seen = 0;
};

struct Clients {
    explicit Clients(benchmark::State& state) {
        for (int i = 0; i < state.range(0); ++i) {
            owned.push_back(std::make_unique<Counter>(&server));
            plain.push_back(owned.back().get());
        }
    }
    DispatchServer server;
    std::vector<std::unique_ptr<Counter>> owned;
    std::vector<DispatchClient*> plain;
};

void dispatchByServer(benchmark::State& state) {
    Clients clients(state);
    TarvMess message(nullptr, WM_MOUSEMOVE, 0, 0, 0);
    for (auto _ : state) benchmark::DoNotOptimize(clients.server.dispatch(message, 0));
}

void dispatchByHand(benchmark::State& state) {
    Clients clients(state);
    TarvMess message(nullptr, WM_MOUSEMOVE, 0, 0, 0);
    for (auto _ : state) benchmark::DoNotOptimize(deliver(clients.plain, message));
}

void dispatchByHandWithoutCopy(benchmark::State& state) {
    Clients clients(state);
    TarvMess message(nullptr, WM_MOUSEMOVE, 0, 0, 0);
    for (auto _ : state) benchmark::DoNotOptimize(deliverWithoutCopy(clients.plain, message));
}

BENCHMARK(dispatchByServer)->Arg(3)->Arg(100);
BENCHMARK(dispatchByHand)->Arg(3)->Arg(100);
BENCHMARK(dispatchByHandWithoutCopy)->Arg(3)->Arg(100);

}  // namespace
