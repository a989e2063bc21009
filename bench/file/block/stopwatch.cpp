#include "stopwatch.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace bench {
namespace {

/// Time that this process had the processor, in it and in the system: what else the machine does
/// does not count, and nothing here waits for a disk.
double processorTime() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

}  // namespace

std::vector<Result> compare(const std::vector<Way>& ways, int rounds) {
    std::vector<std::vector<double>> times(ways.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < ways.size(); ++i) {
            ways[i].prepare();
            const double start = processorTime();
            ways[i].run();
            times[i].push_back(processorTime() - start);
        }
    }
    std::vector<Result> results;
    for (std::size_t i = 0; i < ways.size(); ++i) {
        auto& list = times[i];
        std::nth_element(list.begin(), list.begin() + rounds / 2, list.end());
        results.push_back({ways[i].name, list[static_cast<std::size_t>(rounds / 2)]});
    }
    return results;
}

void print(const std::string& title, const std::vector<Result>& results, double count) {
    std::printf("%-34s", title.c_str());
    for (const Result& result : results)
        std::printf(" | %s %9.1f ns %6.2fx", result.name.c_str(), result.nanoseconds / count,
                    result.nanoseconds / results.front().nanoseconds);
    std::printf("\n");
    std::fflush(stdout);
}

}  // namespace bench
