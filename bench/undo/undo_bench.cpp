// An undo step of a moved load over the size of the document, beside a stack that keeps copies of
// the document; and a gesture, whose moves are merged.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "toolbox/undo.h"

namespace {

struct Load {
    double position = 0, force = 0;
    int beam = 0;
};
using Loads = std::vector<Load>;

class MoveLoad : public Edit {
  public:
    MoveLoad(Loads& loads, std::size_t load, double to) : loads_(loads), load_(load), other_(to) {}

    Outcome apply() override {
        std::swap(loads_[load_].position, other_);
        return Done;
    }
    int revert() override { return apply(); }
    CString text() const override { return "Move load"; }
    std::size_t size() const override { return sizeof *this; }
    Merging merge(Edit& later) override {
        auto* const other = dynamic_cast<MoveLoad*>(&later);
        return other && other->load_ == load_ ? Merged : Apart;
    }

  private:
    Loads& loads_;
    std::size_t load_;
    double other_;  // where the load is not
};

/// What keeps whole documents: done, undone and done again it copies three of them.
class Copies {
  public:
    explicit Copies(Loads& loads) : loads_(loads) {}
    void perform(std::size_t load, double to) {
        kept_ = loads_;
        loads_[load].position = to;
    }
    void exchange() {
        Loads former = loads_;
        loads_ = kept_;
        kept_ = former;
    }

  private:
    Loads& loads_;
    Loads kept_;
};

constexpr std::size_t kStride = 7919;  // loads far from each other, as a user picks them

/// Moved, undone, done again: the times are for all three.
void moveLoad(benchmark::State& state) {
    Loads loads(static_cast<std::size_t>(state.range(0)));
    UndoStack stack;
    stack.setLimits(1000, UndoStack::kNoLimit);
    std::size_t load = 0;
    for (auto _ : state) {
        load = (load + kStride) % loads.size();
        stack.perform(std::make_unique<MoveLoad>(loads, load, static_cast<double>(load) + 1));
        if (!stack.undo() || !stack.redo()) state.SkipWithError("not undone");
    }
    state.SetComplexityN(state.range(0));
}

void moveLoadWithCopies(benchmark::State& state) {
    Loads loads(static_cast<std::size_t>(state.range(0)));
    Copies copies(loads);
    std::size_t load = 0;
    for (auto _ : state) {
        load = (load + kStride) % loads.size();
        copies.perform(load, static_cast<double>(load) + 1);
        copies.exchange();
        copies.exchange();
        benchmark::DoNotOptimize(loads.data());
    }
    state.SetComplexityN(state.range(0));
}

/// One move of the mouse, merged with those before it, with so many steps behind.
void moveInAGesture(benchmark::State& state) {
    Loads loads(1000);
    UndoStack stack;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        stack.perform(std::make_unique<MoveLoad>(loads, 0, static_cast<double>(i) + 1));
    const unsigned gesture = stack.newGesture();
    double to = 0;
    for (auto _ : state) {
        to += 1;
        stack.perform(std::make_unique<MoveLoad>(loads, 1, to), gesture);
    }
    if (stack.undoCount() != static_cast<std::size_t>(state.range(0)) + 1)
        state.SkipWithError("not merged");
}

BENCHMARK(moveLoad)->RangeMultiplier(10)->Range(1000, 1'000'000)->Complexity();
BENCHMARK(moveLoadWithCopies)->RangeMultiplier(10)->Range(1000, 100'000)->Complexity();
BENCHMARK(moveInAGesture)->Arg(0)->Arg(100'000);

}  // namespace
