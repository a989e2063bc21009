// Drawings of 100,000 primitives: written as SVG and PDF, recorded, played. The plain calls that a
// recording is held to are those of a canvas that does nothing but look at each point.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "toolbox/canvas.h"

namespace {

constexpr int kPrimitives = 100'000;

/// A device that costs next to nothing.
class Device : public TvCanvas {
  public:
    Device() : TvCanvas(600, 800) {}
    double sum = 0;

  protected:
    void onPath(const TvPath& path, const TvPen*, const TvBrush*) override {
        for (const TvPoint& point : path.points()) sum += point.x + point.y;
    }
    void onText(TvPoint at, const TvText&, const TvFont&, const TvTextPlace&) override {
        sum += at.x + at.y;
    }
    void onClip(const TvPath&) override {}
    void onUnclip() override {}
};

TvPoint pointOf(int i) {
    return {i % 601 + 0.123 * (i % 8), i % 809 + 0.377 * (i % 5)};
}

void drawLines(TvCanvas& canvas) {
    for (int i = 0; i < kPrimitives; ++i) canvas.line(pointOf(i), pointOf(7 * i));
}

/// What drawings have: mostly lines, some shapes, a text for every ten, now and then another style.
void drawMixed(TvCanvas& canvas) {
    for (int i = 0; i < kPrimitives; ++i) {
        const TvPoint p = pointOf(i);
        if (i % 50 == 0) canvas.setPen({TvColor{static_cast<unsigned char>(i), 0, 0}, 0.7});
        if (i % 10 == 0)
            canvas.text(p, "12.5 kN/m");
        else if (i % 10 == 1)
            canvas.rectangle({p.x, p.y, p.x + 10, p.y + 5});
        else if (i % 10 == 2)
            canvas.polygon({p, {p.x + 3, p.y}, {p.x, p.y + 4}});
        else
            canvas.line(p, pointOf(7 * i));
    }
}

using Draw = void (*)(TvCanvas&);

void primitives(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * kPrimitives);
}

void onDevice(benchmark::State& state, Draw draw) {
    Device device;
    for (auto _ : state) draw(device);
    benchmark::DoNotOptimize(device.sum);
    primitives(state);
}

void recorded(benchmark::State& state, Draw draw) {
    for (auto _ : state) {
        TvRecording recording(600, 800);
        draw(recording);
        benchmark::DoNotOptimize(recording.size());
    }
    primitives(state);
}

void played(benchmark::State& state, Draw draw) {
    TvRecording recording(600, 800);
    draw(recording);
    Device device;
    for (auto _ : state) recording.play(device);
    benchmark::DoNotOptimize(device.sum);
    primitives(state);
}

void loaded(benchmark::State& state, Draw draw) {
    TvRecording recording(600, 800);
    draw(recording);
    VarRecord record;
    recording.store(record);
    for (auto _ : state) {
        record.begin();
        if (!recording.load(record, nullptr)) state.SkipWithError("refused");
    }
    primitives(state);
}

void asSvg(benchmark::State& state, Draw draw) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        TvSvg svg(600, 800);
        draw(svg);
        bytes = svg.bytes().size();
    }
    primitives(state);
    state.counters["bytes"] = static_cast<double>(bytes);
}

void asPdf(benchmark::State& state, Draw draw) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        TvPdf pdf;
        draw(pdf.addPage(600, 800));
        bytes = pdf.bytes().size();
    }
    primitives(state);
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK_CAPTURE(onDevice, lines, drawLines)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(onDevice, mixed, drawMixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recorded, lines, drawLines)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recorded, mixed, drawMixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(played, lines, drawLines)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(played, mixed, drawMixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loaded, mixed, drawMixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(asSvg, lines, drawLines)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(asSvg, mixed, drawMixed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(asPdf, lines, drawLines)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(asPdf, mixed, drawMixed)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
