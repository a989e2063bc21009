// Speed of the dates. Results are compared with the plain way's before anything is
// timed.
#include <benchmark/benchmark.h>

#include "literal.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    checkDates();
    benchmark::RunSpecifiedBenchmarks();
}
