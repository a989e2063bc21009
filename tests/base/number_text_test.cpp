#include "base/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace toolbox::base {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

template <class Printer, class... Arguments>
std::string print(Printer printer, Arguments... arguments) {
    std::string text(kNumberTextMax, '\0');
    text.resize(static_cast<std::size_t>(printer(text.data(), arguments...) - text.data()));
    return text;
}

// What formats, templates and messages do not ask for; their tests print on all systems.
TEST(NumberPrinters, StayWithinTheirDigits) {
    const std::pair<std::string, const char*> cases[] = {
        {print(printFixed, 0.3, -4), "0"},
        {print(printFixed, 0.125, 2), "0.12"},
        {print(printGeneral, 1e10, 3, true), "1.00e+010"},
        {print(printGcvt, 99999999.5, 8), "1.e+008"},
        {print(printGcvt, 0.25, 3), "0.25"},
        {print(printGcvt, 0.025, 3), "2.5e-002"},
        {print(printGcvt, 7.0, 0), "7."}};
    for (const auto& [printed, text] : cases) EXPECT_EQ(printed, text);
    EXPECT_EQ(print(printFixed, -DBL_MAX, kMaxPrecision + 9).size(), 311u + kMaxPrecision);
}

#if defined(__GLIBC__)

std::string reference(char conversion, double value, int precision) {
    if (std::isnan(value)) return "nan";
    char text[kNumberTextMax + 1];
    if (conversion == 'f') std::snprintf(text, sizeof text, "%.*f", precision, value);
    if (conversion == 'e') std::snprintf(text, sizeof text, "%.*e", precision, value);
    if (conversion == 'g') std::snprintf(text, sizeof text, "%.*g", precision, value);
    std::string result = text;
    const auto mark = result.find('e');
    if (mark != std::string::npos && result.size() - mark == 4) result.insert(mark + 2, 1, '0');
    return result;
}

/// Values of every kind that takes its own way through the printers: any bit pattern, magnitudes as
/// in tables, short decimals and their neighbours, ties, powers of ten and of two.
std::vector<double> trickyValues(std::size_t random) {
    std::vector<double> values = {0.0, -0.0, DBL_MAX, DBL_MIN, 5e-324, kInf, -kInf, kNan};
    for (int e = -320; e <= 308; ++e) {
        const double ten = std::strtod(("1e" + std::to_string(e)).c_str(), nullptr);
        for (const double v : {ten, 5 * ten, 9.5 * ten, 0.99999999999 * ten})
            for (const double n : {v, std::nextafter(v, 0.0), std::nextafter(v, kInf)})
                values.push_back(n);
    }
    for (int e = -1074; e <= 1023; ++e) values.push_back(std::ldexp(1.0, e));
    std::mt19937_64 bits(20010430);
    std::uniform_real_distribution<double> exponents(-12, 20);
    for (std::size_t i = 0; i < random; ++i) {
        values.push_back(std::bit_cast<double>(bits()));
        values.push_back(std::pow(10.0, exponents(bits)) * (i % 2 ? 1 : -1));
        values.push_back(static_cast<double>(bits() % 1000000000) / 1000.0);
        values.push_back((static_cast<double>(bits() % 10000000) + 0.5) / 1024.0);
    }
    return values;
}

TEST(PrintersAgainstTheCLibrary, AgreeOnTrickyValues) {
    int place = 0;
    for (const double value : trickyValues(20000)) {
        const int precision = ++place % 23;
        const std::pair<char, std::string> printed[] = {
            {'f', print(printFixed, value, precision)},
            {'e', print(printExponent, value, precision)},
            {'g', print(printGeneral, value, precision, false)}};
        for (const auto& [conversion, text] : printed)
            ASSERT_EQ(text, reference(conversion, value, precision))
                << conversion << precision << ' ' << std::hexfloat << value;
    }
}

#endif

}  // namespace
}  // namespace toolbox::base
