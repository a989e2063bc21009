// Labels of a large drawing: 1,000 tags on a page of 2384 by 3370 points (A0) among 10,000 segments,
// each tag on the middle of one of them, so that almost all have to move.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "toolbox/canvas.h"
#include "toolbox/tag_layout.h"
#include "toolbox/tags.h"

namespace {

constexpr double kWidth = 2384;
constexpr double kHeight = 3370;
constexpr int kTags = 1'000;
constexpr int kSegments = 10'000;

/// Segments of paths that wander over the page, and tags that speak of every tenth one.
struct Drawing {
    std::vector<TvSegment> segments;
    TvTagSet tags;

    explicit Drawing(bool onePoint = false) {
        std::minstd_rand random;
        const auto upTo = [&random](double most) {
            return static_cast<double>(random()) / std::minstd_rand::max() * most;
        };
        TvPoint at{};
        double angle = 0;
        for (int i = 0; i < kSegments; ++i) {
            if (i % 100 == 0) at = {upTo(kWidth), upTo(kHeight)};
            angle += upTo(1.6) - 0.8;
            const TvPoint to{at.x + 30 * std::cos(angle), at.y + 30 * std::sin(angle)};
            segments.push_back({at, to});
            if (i % (kSegments / kTags) == 0) add(at, to, onePoint);
            at = to;
        }
    }
    void add(TvPoint from, TvPoint to, bool onePoint) {
        TvTag tag;
        tag.text = "12.5 kN/m";
        tag.font.size = 8;
        tag.align = TvAlign::center;
        tag.level = TvLevel::middle;
        tag.anchor = {(from.x + to.x) / 2, (from.y + to.y) / 2};
        if (onePoint) tag.anchor = {kWidth / 2, kHeight / 2};
        tags.add(tag);
    }
    [[nodiscard]] TvTagLayout layout() const { return {tags, TransMatrix2D(), nullptr}; }
    [[nodiscard]] TvTagSurroundings around() const { return {{0, 0, kWidth, kHeight}, {}, segments}; }
};

void place(benchmark::State& state, bool onePoint) {
    const Drawing drawing(onePoint);
    const TvTagLayout layout = drawing.layout();
    TvTagPlacement placement;
    for (auto _ : state) placement = layout.placeFree(drawing.around());
    state.counters["moved"] =
        static_cast<double>(placement.moves.size() - placement.unplaced.size());
    state.counters["unplaced"] = static_cast<double>(placement.unplaced.size());
}

void layOut(benchmark::State& state) {
    const Drawing drawing;
    for (auto _ : state) benchmark::DoNotOptimize(drawing.layout().tags().size());
}

void findByPoint(benchmark::State& state) {
    const Drawing drawing;
    const TvTagLayout layout = drawing.layout();
    double x = 0;
    for (auto _ : state) {
        x = x < kWidth ? x + 1 : 0;
        benchmark::DoNotOptimize(layout.find({x, 1000}, 3));
    }
}

void draw(benchmark::State& state) {
    const Drawing drawing;
    const TvTagLayout layout = drawing.layout();
    for (auto _ : state) {
        TvRecording recording(kWidth, kHeight);
        benchmark::DoNotOptimize(layout.draw(recording));
    }
}

BENCHMARK_CAPTURE(place, spread, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(place, onePoint, true)->Unit(benchmark::kMillisecond);
BENCHMARK(layOut)->Unit(benchmark::kMillisecond);
BENCHMARK(findByPoint)->Unit(benchmark::kMicrosecond);
BENCHMARK(draw)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
