#include <benchmark/benchmark.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "literal.h"

namespace {

struct RealCase {
    double value;
    RealFormat format;
};
struct NumberCase {
    int value;
    NumberFormat format;
};

RealFormat realFormat(int width, int precision, Justification justify) {
    RealFormat format;
    format.setWidth(width);
    format.setPrecision(precision);
    format.setJustify(justify);
    return format;
}

NumberFormat numberFormat(int width, Justification justify) {
    NumberFormat format;
    format.setFormat(width, justify);
    return format;
}

constexpr std::size_t kCases = 4096;  // enough that no branch predictor learns them

/// The column of a table: lengths, areas, forces.
std::vector<RealCase> tableReals() {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-3, 6);
    std::vector<RealCase> cases;
    for (std::size_t i = 0; i < kCases; ++i)
        cases.push_back(
            {std::pow(10.0, exponent(random)) * (random() % 4 ? 1 : -1), realFormat(12, 3, Right)});
    return cases;
}

/// Any width and precision, magnitudes that often need an exponent.
std::vector<RealCase> mixedReals() {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-10, 15);
    std::vector<RealCase> cases;
    for (std::size_t i = 0; i < kCases; ++i) {
        const int width = 6 + static_cast<int>(random() % 10);
        cases.push_back(
            {std::pow(10.0, exponent(random)) * (random() % 4 ? 1 : -1),
             realFormat(width, static_cast<int>(random() % 6), random() % 4 ? Right : Left)});
    }
    return cases;
}

/// Numbers that fit their column.
std::vector<NumberCase> tableNumbers() {
    std::mt19937_64 random(3);
    std::vector<NumberCase> cases;
    for (std::size_t i = 0; i < kCases; ++i)
        cases.push_back({static_cast<int>(random()) >> (random() % 32), numberFormat(12, Right)});
    return cases;
}

/// Every other one needs an exponent.
std::vector<NumberCase> mixedNumbers() {
    std::mt19937_64 random(4);
    std::vector<NumberCase> cases;
    for (std::size_t i = 0; i < kCases; ++i)
        cases.push_back(
            {static_cast<int>(random()) >> (random() % 32),
             numberFormat(4 + static_cast<int>(random() % 6), random() % 4 ? Right : Left)});
    return cases;
}

template <class Cases>
void timeOurs(benchmark::State& state, Cases cases) {
    std::size_t i = 0;
    for (auto _ : state) {
        auto& c = cases[i++ % kCases];
        benchmark::DoNotOptimize(c.format.getString(c.value));
    }
}

RWCString literally(const RealCase& c) {
    return literal::real(c.value, c.format.getWidth(), c.format.getPrecision(),
                         c.format.getJustify());
}
RWCString literally(const NumberCase& c) {
    return literal::number(c.value, c.format.getWidth(), c.format.getJustify());
}

template <class Cases>
void timeLiteral(benchmark::State& state, const Cases& cases) {
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(literally(cases[i++ % kCases]));
}

BENCHMARK_CAPTURE(timeOurs, RealTable, tableReals());
BENCHMARK_CAPTURE(timeLiteral, RealTable, tableReals());
BENCHMARK_CAPTURE(timeOurs, RealMixed, mixedReals());
BENCHMARK_CAPTURE(timeLiteral, RealMixed, mixedReals());
BENCHMARK_CAPTURE(timeOurs, NumberTable, tableNumbers());
BENCHMARK_CAPTURE(timeLiteral, NumberTable, tableNumbers());
BENCHMARK_CAPTURE(timeOurs, NumberMixed, mixedNumbers());
BENCHMARK_CAPTURE(timeLiteral, NumberMixed, mixedNumbers());

[[noreturn]] void differ(double value, const FormatType& format, const RWCString& ours,
                         const RWCString& theirs) {
    std::fprintf(stderr, "%.17g in %d.%d %s: \"%s\" instead of \"%s\"\n", value, format.getWidth(),
                 format.getPrecision(), format.getJustify() ? "right" : "left", ours.c_str(),
                 theirs.c_str());
    std::exit(1);
}

struct RealChecker {
    long compared = 0;
    long logarithmRoundsUp = 0;

    void check(double value, RealFormat& format) {
        // The logarithm of a value just below a power of ten may round up to that power's; the
        // library counts the digits that there are.
        if (literal::digits(value) >
            std::snprintf(nullptr, 0, "%.0f", std::trunc(std::fabs(value)))) {
            ++logarithmRoundsUp;
            return;
        }
        ++compared;
        const RWCString ours = format.getString(value);
        const RWCString theirs = literally(RealCase{value, format});
        if (ours != theirs) differ(value, format, ours, theirs);
    }
};

std::vector<double> edgeReals() {
    std::vector<double> values = {0.0, -0.0, DBL_MAX, -DBL_MAX, DBL_MIN, 5e-324};
    for (int e = -30; e <= 30; ++e) {
        const double ten = std::strtod(("1e" + std::to_string(e)).c_str(), nullptr);
        for (const double v : {ten, 9.5 * ten, 9.995 * ten, 2.5 * ten, 4.5 * ten}) {
            double near = v;
            for (int i = 0; i < 4; ++i) near = std::nextafter(near, 0.0);
            for (int i = 0; i < 9; ++i) {
                values.push_back(near);
                values.push_back(-near);
                near = std::nextafter(near, HUGE_VAL);
            }
        }
    }
    for (int i = 0; i < 4000; ++i) values.push_back((i + 0.5) / 8);
    return values;
}

}  // namespace

void checkFormats() {
    RealChecker reals;
    for (const double value : edgeReals()) {
        for (int width = 2; width <= 32; ++width) {
            for (int precision = 0; precision < width - 1; precision += 1 + precision / 3) {
                RealFormat format = realFormat(width, precision, width % 2 ? Left : Right);
                reals.check(value, format);
            }
        }
    }
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> exponent(-20, 20);
    for (int i = 0; i < 3000000; ++i) {
        const double any = std::bit_cast<double>(random());
        const double sized = std::pow(10.0, exponent(random)) * (random() % 2 ? 1 : -1);
        const double tie = static_cast<double>(random() % 1000000000) / 256.0;
        const double value = i % 3 == 0 && std::isfinite(any) ? any : i % 3 == 1 ? sized : tie;
        const int width = 2 + static_cast<int>(random() % 28);
        RealFormat format =
            realFormat(width, static_cast<int>(random() % 20), random() % 2 ? Right : Left);
        reals.check(value, format);
    }

    long numbers = 0;
    const auto checkNumber = [&](int value, int width, Justification justify) {
        const NumberFormat format = numberFormat(width, justify);
        const RWCString ours = format.getString(value);
        const RWCString theirs = literal::number(value, width, justify);
        if (ours != theirs) differ(value, format, ours, theirs);
        ++numbers;
    };
    for (int width = 0; width <= 16; ++width) {
        for (std::int64_t ten = 1; ten <= INT_MAX; ten *= 10)
            for (std::int64_t near = 9 * ten / 2 - 2; near <= 10 * ten && near <= INT_MAX;
                 near += near < 9 * ten / 2 + 2 ? 1 : std::max<std::int64_t>(ten / 50, 1))
                for (const std::int64_t sign : {-1, 1})
                    checkNumber(static_cast<int>(sign * near), width, width % 3 ? Right : Left);
        for (const int value : {INT_MIN, INT_MIN + 1, INT_MAX, 0}) checkNumber(value, width, Right);
    }
    for (int i = 0; i < 2000000; ++i)
        checkNumber(static_cast<int>(random()) >> (random() % 32), static_cast<int>(random() % 14),
                    random() % 2 ? Right : Left);

    std::printf(
        "formats: %ld reals and %ld integers print as the plain way prints them\n"
        "         (%ld reals left out: their logarithm rounds up to a whole number)\n",
        reals.compared, numbers, reals.logarithmRoundsUp);
}
