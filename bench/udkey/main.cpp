// Speed of the key registry and of token expansion. Expanded texts are compared with the literal
// algorithm's before anything is timed.
#include <benchmark/benchmark.h>

#include "bench_manager.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    checkExpansion();
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove(benchProfile());
}
