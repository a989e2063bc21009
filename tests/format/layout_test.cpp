// What integers, reals and strings look like in a field.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <limits>
#include <string>

#include "toolbox/formats.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::string number(int width, Justification justify, int value) {
    NumberFormat format;
    format.setFormat(width, justify);
    return format.getString(value).str();
}

std::string real(int width, int precision, double value, Justification justify = Right) {
    RealFormat format;
    EXPECT_EQ(format.setFormat(width, precision, justify), 1);
    return format.getString(value).str();
}

TEST(NumberFormat, PrintsInItsField) {
    const struct {
        int width;
        Justification justify;
        int value;
        const char* text;
    } cases[] = {
        {5, static_cast<Justification>(7), 42, "   42"},
        {5, Right, 123456, "1e+00"},
        {11, Right, INT_MIN, "-2147483648"},
        {10, Right, INT_MIN, "-2.147e+00"},
        {-5, Right, 42, ""},
        {INT_MIN, Left, INT_MIN, ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(number(c.width, c.justify, c.value), c.text) << c.width << ' ' << c.value;
}

TEST(RealFormat, PrintsInItsField) {
    const struct {
        int width, precision;
        double value;
        const char* text;
    } cases[] = {
        {8, 4, 12345.678, "12345.68"},
        {6, 3, 123456.0, "1e+005"},
        {4, 2, 0.0, " 0.0"},
        {24, 2, 1e23, " 99999999999999991611392"},
        {10, 6, 999.9999999999999, "1000.00000"},
        {6, 2, -kInf, "  -inf"},
        {2, 0, kNan, "na"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(real(c.width, c.precision, c.value), c.text) << c.width << ' ' << c.value;
}

TEST(Formats, PadUpToABound) {
    constexpr std::size_t kBound = 1 << 24;
    for (const int width : {1000000000, INT_MAX}) {
        EXPECT_EQ(number(width, Right, -42), std::string(kBound - 3, ' ') + "-42");
        EXPECT_EQ(real(width, 2, 0.5), std::string(kBound - 4, ' ') + "0.50");
        EXPECT_EQ(real(width, width - 2, 1e300).size(), kBound);
        StringFormat format;
        format.setFormat(width, Left);
        EXPECT_EQ(format.getString("ab").str(), "ab" + std::string(kBound - 2, ' '));
        const RWCString longer(std::string(kBound + 5, 'x'));
        EXPECT_EQ(format.getString(longer), longer);
    }
}

TEST(RealFormat, PrintsZerosWhereADoubleHasNoMoreDigits) {
    const std::string fixed = real(5000, 4000, 0.5, Left);
    EXPECT_EQ(fixed, "0.5" + std::string(3999, '0') + std::string(998, ' '));
    RealFormat format;
    format.setFormat(5000, 4000, Right);
    format.setWidth(310);
    EXPECT_EQ(format.getString(-DBL_MAX).length(), 310u);
    format.setWidth(8);  // which the precision does not fit
    EXPECT_EQ(format.getString(3.14159).str(), "3.141590");
    EXPECT_EQ(format.getString(1e9).str(), "1.00e+00");
    format.setPrecision(INT_MIN);
    EXPECT_EQ(format.getString(3.14159).str(), "       3");
    EXPECT_EQ(real(3000, 2500, 1e300).length(), 3000u);
}

TEST(StringFormat, PadsOrCutsAtTheEnd) {
    const struct {
        int width;
        Justification justify;
        const char* text;
        const char* printed;
    } cases[] = {
        {4, Right, "abcdef", "abcd"}, {4, Left, "ab", "ab  "}, {4, Right, "ab", "  ab"},
        {4, Right, "abcd", "abcd"},   {-4, Left, "ab", ""},    {3, Left, "\351t\351s", "\351t\351"},
    };
    for (const auto& c : cases) {
        StringFormat format;
        format.setFormat(c.width, c.justify);
        EXPECT_EQ(format.getString(c.text).str(), c.printed) << c.width << ' ' << c.text;
    }
}

TEST(Formats, PrintTheSameUnderEveryLocale) {
    for (const char* locale : {"fr_FR.UTF-8", "de_DE.UTF-8", "French_France.1252", "C"}) {
        if (!std::setlocale(LC_ALL, locale)) continue;
        EXPECT_EQ(real(8, 2, 1234.5), " 1234.50") << locale;
    }
}

}  // namespace
