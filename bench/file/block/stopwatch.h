// Times several ways to do one thing side by side.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// One way: what is timed, and what is done before each time without being timed.
struct Way {
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = [] {};
};

struct Result {
    std::string name;
    double nanoseconds;  ///< median of the rounds
};

/// Runs each way once per round, in turn, so that what disturbs one disturbs the others too.
std::vector<Result> compare(const std::vector<Way>& ways, int rounds);

/// A table line per way: time for each of `count` things, ratio to the first way.
void print(const std::string& title, const std::vector<Result>& results, double count);

}  // namespace bench
