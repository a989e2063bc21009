// Reading and printing a double as a field of a dialog does, beside what the standard library needs
// for the conversion alone. Both must agree on every number before anything is timed.
#include <benchmark/benchmark.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "toolbox/numbers.h"

namespace {

enum Kind { entered, any };

struct Sample {
    double value;
    CString text;
};

/// Numbers as people enter them, with few digits, or of any bits.
const std::vector<Sample>& samples(std::int64_t kind) {
    static const auto made = [] {
        std::vector<std::vector<Sample>> all(2);
        std::mt19937_64 random(7);
        const TvDouble number;
        while (all[any].size() < 4096) {
            const auto value = std::bit_cast<double>(random());
            if (std::isfinite(value)) all[any].push_back({value, number.print(value)});
            const double few = static_cast<double>(random() % 1000000) / 1000;
            if (all[entered].size() < 4096) all[entered].push_back({few, number.print(few)});
        }
        return all;
    }();
    return made[static_cast<std::size_t>(kind)];
}

double byLibrary(const CString& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.length(), value);
    return value;
}

void scanOurs(benchmark::State& state) {
    const TvDouble number;
    std::size_t i = 0;
    for (auto _ : state) {
        double value = 0;
        number.scan(samples(state.range(0))[i++ % 4096].text, value, nullptr);
        benchmark::DoNotOptimize(value);
    }
}

void scanFromChars(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
        double value = byLibrary(samples(state.range(0))[i++ % 4096].text);
        benchmark::DoNotOptimize(value);
    }
}

void printOurs(benchmark::State& state) {
    const TvDouble number;
    std::size_t i = 0;
    for (auto _ : state) {
        CString text = number.print(samples(state.range(0))[i++ % 4096].value);
        benchmark::DoNotOptimize(text);
    }
}

void printToChars(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
        char text[40];
        const char* const end =
            std::to_chars(text, text + sizeof text, samples(state.range(0))[i++ % 4096].value).ptr;
        CString kept(text, static_cast<std::size_t>(end - text));
        benchmark::DoNotOptimize(kept);
    }
}

void stepOurs(benchmark::State& state) {
    const TvDouble number;
    double value = 0;
    for (auto _ : state) benchmark::DoNotOptimize(value = number.step(value, 1, 0.1));
}

BENCHMARK(scanOurs)->Arg(entered)->Arg(any);
BENCHMARK(scanFromChars)->Arg(entered)->Arg(any);
BENCHMARK(printOurs)->Arg(entered)->Arg(any);
BENCHMARK(printToChars)->Arg(entered)->Arg(any);
BENCHMARK(stepOurs);

void checkAgreement() {
    for (const std::int64_t kind : {entered, any})
        for (const Sample& sample : samples(kind)) {
            double value = 0;
            if (TvDouble().scan(sample.text, value, nullptr) && value == sample.value &&
                byLibrary(sample.text) == sample.value)
                continue;
            std::fprintf(stderr, "%s does not read back\n", sample.text.c_str());
            std::exit(1);
        }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    checkAgreement();
    benchmark::RunSpecifiedBenchmarks();
}
