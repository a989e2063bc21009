#include "base/template_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <random>
#include <tuple>
#include <utility>

namespace toolbox::base {
namespace {

template <class... Args>
std::string printed(const char* format, Args... args) {
    char out[2048];
    const std::size_t kept = printTemplate(out, sizeof out, format, args...);
    return {out, kept};
}

TEST(TemplateText, PrintsEachConversion) {
    EXPECT_EQ(
        printed("%hhd|%hu|%ld|%lld|%I64d|%zu", 300, 65537u, -1L, LLONG_MIN, 5LL, std::size_t{9}),
        "44|1|-1|-9223372036854775808|5|9");
    EXPECT_EQ(printed("%-5s|%c|%3c|%%", "ab", 'x', 'y'), "ab   |x|  y|%");
    EXPECT_EQ(printed("%e|%.2E|%#.0e", 12345.678, 1e100, 2.0), "1.234568e+004|1.00E+100|2.e+000");
    EXPECT_EQ(printed("%g|%lg|%G|%#g|%#.3g", 0.5, 1e10, 1e-10, 0.5, 100.0),
              "0.5|1e+010|1E-010|0.500000|100.");
    EXPECT_EQ(printed("%*d|%-*d|%.*f|%*d", 4, 7, 4, 7, 1, 0.25, -3, 1), "   7|7   |0.2|1  ");
    EXPECT_EQ(printed("%05f|%-6g|%F", INFINITY, -INFINITY, std::nan("")), "  inf|-inf  |NAN");
    EXPECT_EQ(printed("%s", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(printed("%.1200e", 1.0), "1." + std::string(1200, '0') + "e+000");
}

TEST(TemplateText, KeepsArgumentsInStepPastWhatItDoesNotPrint) {
    int untouched = 1;
    EXPECT_EQ(printed("a%nb%d", &untouched, 5), "ab5");
    EXPECT_EQ(untouched, 1);
    EXPECT_EQ(printed("%-08.3y %d", 5), "%-08.3y 5");
}

TEST(TemplateText, NeverLeavesItsBuffer) {
    const std::pair<const char*, const char*> cases[] = {{"%2000000000d", "       "},
                                                         {"%-99999999999999999999d|", "1      "},
                                                         {"%.2000000000d", "0000000"}};
    for (const auto& [format, kept] : cases) {
        char guarded[] = "........G";
        EXPECT_EQ(printTemplate(guarded, 8, format, 1), 7u);
        EXPECT_STREQ(guarded, kept) << format;
        EXPECT_EQ(guarded[8], 'G') << format;
    }
    char out[8];
    EXPECT_EQ(printTemplate(out, sizeof out, "%2147483647.2147483647s", ""), 7u);
    EXPECT_EQ(printTemplate(out, sizeof out, "%*.*d|", INT_MIN, INT_MIN, 5), 7u);
    EXPECT_STREQ(out, "5      ");
    EXPECT_EQ(printTemplate(nullptr, 0, "%d", 5), 0u);
}

TEST(TemplateText, ValuesNeedNotSuitTheirTemplate) {
    const char unterminated[] = {'a', 'b', 'c'};
    const TemplateValue values[] = {static_cast<const char*>(unterminated), 7LL, 0.5};
    const TemplateValue widths[] = {99999999999LL, 3.0, "word"};
    const TemplateValue singles[] = {42LL, -1LL, 1e300, 0.25, "xy"};
    const std::tuple<const char*, std::span<const TemplateValue>, const char*> cases[] = {
        {"%.3s %d %g|", values, "abc 7 0.5|"},
        {"%d %s %s|%s%d", values, "0 7 0.5|"},
        {"%-*.*s|", widths, "wor"},
        {"%d|", {singles + 2, 1}, "9223372036854775807|"},
        {"%s|", {singles + 3, 1}, "0.25|"},
        {"%g|", {singles + 4, 1}, "0|"}};
    char out[64];
    for (const auto& [format, given, expected] : cases) {
        printTemplateValues(out, sizeof out, format, given);
        EXPECT_TRUE(std::string_view(out).starts_with(expected)) << format << ": " << out;
    }
    // One value prints up to the next conversion.
    for (const auto& [format, text] : {std::pair{"<%05d>%d", "<00042>"}, {"%*.*d", "42"}}) {
        const std::size_t kept = printTemplateValue(out, sizeof out, format, singles[0]);
        EXPECT_EQ(std::string_view(out, kept), text) << format;
    }
}

#if !defined(_WIN32)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
template <class T>
void expectAsTheRuntime(const std::string& format, T value) {
    char expected[512];
    std::snprintf(expected, sizeof expected, format.c_str(), value);
    char out[512];
    printTemplate(out, sizeof out, format.c_str(), value);
    ASSERT_STREQ(out, expected) << format;
}
#pragma GCC diagnostic pop

TEST(TemplateText, AgreesWithTheRuntimeWhereTheTwoMeanTheSame) {
    std::mt19937_64 random(20);
    const auto pick = [&](std::string_view from) {
        return from[static_cast<std::size_t>(random() % from.size())];
    };
    for (int i = 0; i < 50000; ++i) {
        std::string format = "%";
        for (std::uint64_t flags = random() % 4; flags > 0; --flags) format += pick("-+ #0");
        if (random() % 2) format += std::to_string(random() % 30);
        if (random() % 2) format += "." + std::to_string(random() % 25);
        const auto bits = static_cast<long long>(random() >> (random() % 64));
        // Exponents of three digits, which the two write alike, and fixed notation.
        const double real = std::ldexp(static_cast<double>(bits | 1), -30);
        expectAsTheRuntime(format + pick("dioxXu"), static_cast<int>(bits));
        expectAsTheRuntime(format + "ll" + pick("dioxXu"), bits);
        expectAsTheRuntime(format + "s", "some text");
        expectAsTheRuntime(format + pick("fF"), real);
        expectAsTheRuntime(format + pick("eEgG"), real * 1e150);
    }
}
#endif

}  // namespace
}  // namespace toolbox::base
