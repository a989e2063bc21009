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

TEST(NumberPrinters, RoundTheExactValueTiesToEvenAndWriteThreeExponentDigits) {
    // Natively the C library is asked about values of every kind (below); these go to all systems.
    const std::pair<std::string, const char*> cases[] = {
        {print(printFixed, 0.125, 2), "0.12"},
        {print(printFixed, -kInf, 2), "-inf"},
        {print(printFixed, 0.3, -4), "0"},
        {print(printExponent, 9.995, 2), "9.99e+000"},
        {print(printExponent, 5e-324, 2), "4.94e-324"},
        {print(printGeneral, 999999.5, 6, false), "1e+006"},
        {print(printGeneral, 100.0, 0, false), "1e+002"},
        {print(printGeneral, 1.5, 6, true), "1.50000"},
        {print(printGeneral, 1e10, 3, true), "1.00e+010"},
        // Gcvt keeps the point and drops the zeros.
        {print(printGcvt, 0.0, 7), "0."},
        {print(printGcvt, 100000.0, 8), "100000."},
        {print(printGcvt, 1e10, 8), "1.e+010"},
        {print(printGcvt, 0.05, 8), "5.e-002"},
        {print(printGcvt, 99999999.5, 8), "1.e+008"},
        {print(printGcvt, 0.0999999999, 3), "0.1"},
        {print(printGcvt, 3.14159, 3), "3.14"},
        {print(printGcvt, 7.0, 0), "7."},
        {print(printGcvt, kNan, 8), "nan"}};
    for (const auto& [printed, text] : cases) EXPECT_EQ(printed, text);
    EXPECT_EQ(print(printFixed, -DBL_MAX, kMaxPrecision + 9).size(), 311u + kMaxPrecision);
}

TEST(DecimalDigits, HaveNoLeadingZeros) {
    const struct {
        double value;
        int decimals;
        const char* text;
        int point;
    } cases[] = {
        {12.5, 2, "1250", 2}, {0.05, 3, "50", -1},   {0.996, 2, "100", 1},
        {0.004, 2, "", -2},   {-0.0001, 4, "1", -3}, {0.4, 0, "", 0},
    };
    for (const auto& c : cases) {
        DecimalDigits digits;
        decimalDigits(c.value, c.decimals, digits);
        EXPECT_EQ(std::string(digits.text, static_cast<std::size_t>(digits.count)), c.text)
            << c.value;
        EXPECT_EQ(digits.point, c.point) << c.value;
        EXPECT_EQ(digits.negative, std::signbit(c.value)) << c.value;
    }
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
