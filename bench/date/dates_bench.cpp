#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "literal.h"

namespace {

using namespace std::chrono;

constexpr int kFirst = 1721426;
constexpr int kDays = 3652059;  // years 1 to 9999
const sys_days kFirstDay{year{1} / 1 / 1};

std::vector<int> dayNumbers(bool shuffled) {
    std::vector<int> numbers(kDays);
    for (int i = 0; i < kDays; ++i) numbers[static_cast<std::size_t>(i)] = kFirst + i;
    if (shuffled) std::shuffle(numbers.begin(), numbers.end(), std::mt19937(6));
    return numbers;
}

sys_days asSysDays(int number) {
    return kFirstDay + days{number - kFirst};
}

// Each loop takes one value from memory and keeps one result, as a loop over a file's dates would.

void datesOurs(benchmark::State& state) {
    const auto numbers = dayNumbers(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) {
        TarvDate date(numbers[i]);
        benchmark::DoNotOptimize(date);
        if (++i == numbers.size()) i = 0;
    }
}

void datesChrono(benchmark::State& state) {
    const auto numbers = dayNumbers(state.range(0));
    std::vector<sys_days> points;
    for (const int number : numbers) points.push_back(asSysDays(number));
    std::size_t i = 0;
    for (auto _ : state) {
        year_month_day date(points[i]);
        benchmark::DoNotOptimize(date);
        if (++i == points.size()) i = 0;
    }
}

void datesLiteral(benchmark::State& state) {
    const auto numbers = dayNumbers(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) {
        auto date = literal::dateOf(numbers[i]);
        benchmark::DoNotOptimize(date);
        if (++i == numbers.size()) i = 0;
    }
}

void dayNumbersOurs(benchmark::State& state) {
    std::vector<TarvDate> dates;
    for (const int number : dayNumbers(state.range(0))) dates.emplace_back(number);
    std::size_t i = 0;
    for (auto _ : state) {
        long number = dates[i];
        benchmark::DoNotOptimize(number);
        if (++i == dates.size()) i = 0;
    }
}

void dayNumbersChrono(benchmark::State& state) {
    std::vector<year_month_day> dates;
    for (const int number : dayNumbers(state.range(0))) dates.emplace_back(asSysDays(number));
    std::size_t i = 0;
    for (auto _ : state) {
        sys_days point(dates[i]);
        benchmark::DoNotOptimize(point);
        if (++i == dates.size()) i = 0;
    }
}

void dayNumbersLiteral(benchmark::State& state) {
    std::vector<literal::Date> dates;
    for (const int number : dayNumbers(state.range(0))) dates.push_back(literal::dateOf(number));
    std::size_t i = 0;
    for (auto _ : state) {
        long number = literal::dayNumber(dates[i]);
        benchmark::DoNotOptimize(number);
        if (++i == dates.size()) i = 0;
    }
}

// The argument is 1 for days in random order.
BENCHMARK(datesOurs)->Arg(0)->Arg(1);
BENCHMARK(datesChrono)->Arg(0)->Arg(1);
BENCHMARK(datesLiteral)->Arg(0)->Arg(1);
BENCHMARK(dayNumbersOurs)->Arg(0)->Arg(1);
BENCHMARK(dayNumbersChrono)->Arg(0)->Arg(1);
BENCHMARK(dayNumbersLiteral)->Arg(0)->Arg(1);

void require(bool equal, long number) {
    if (equal) return;
    std::fprintf(stderr, "day %ld converts to another date than by the plain way\n", number);
    std::exit(1);
}

void checkAgainstLiteral(long number) {
    const TarvDate date(number);
    const literal::Date expected = literal::dateOf(number);
    require(date.getYear() == expected.year && date.getMonth() == expected.month &&
                date.getDay() == expected.day,
            number);
    if (date.isValid())
        require(date == TarvDate(number) && date.operator long() == number &&
                    literal::dayNumber(expected) == number,
                number);
}

}  // namespace

void checkDates() {
    for (int number = kFirst; number < kFirst + kDays; ++number) {
        checkAgainstLiteral(number);
        const year_month_day expected(asSysDays(number));
        const TarvDate date(number);
        require(date.getYear() == static_cast<int>(expected.year()) &&
                    date.getMonth() == static_cast<int>(unsigned{expected.month()}) &&
                    date.getDay() == static_cast<int>(unsigned{expected.day()}),
                number);
    }
    for (long number = kFirst - kDays; number < kFirst; ++number) checkAgainstLiteral(number);
    std::mt19937 random(7);
    constexpr long kRandom = 5000000;
    for (long i = 0; i < kRandom; ++i) checkAgainstLiteral(static_cast<std::int32_t>(random()));
    std::printf(
        "dates: every day of the years 1 to 9999, as many before and %ld random ones convert "
        "as by the plain way, the former as std::chrono's\n",
        kRandom);
}
