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
        {5, Left, -1234, "-1234"},
        {5, Right, 0, "    0"},
        {5, Right, 123456, "1e+00"},
        {9, Left, -123456789, "-1.23e+00"},
        {11, Right, INT_MIN, "-2147483648"},
        {10, Right, INT_MIN, "-2.147e+00"},
        {0, Right, 42, ""},
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
        {8, 2, 0.0, "    0.00"},
        {8, 4, 12345.678, "12345.68"},
        {6, 3, 123456.0, "1e+005"},
        {9, 3, 1234567890.0, "1.235e+00"},
        {5, 0, 9999.5, "10000"},
        {4, 2, 0.0, " 0.0"},
        {2, 0, 1e300, "1e"},
        {24, 2, 1e23, " 99999999999999991611392"},
        {10, 6, 999.9999999999999, "1000.00000"},
        {6, 2, kInf, "   inf"},
        {6, 2, -kInf, "  -inf"},
        {2, 0, kNan, "na"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(real(c.width, c.precision, c.value), c.text) << c.width << ' ' << c.value;
    EXPECT_EQ(real(12, 2, 1e15, Left), "1.00e+015   ");
}

TEST(RealFormat, PrintsWithAPrecisionThatNoLongerFitsItsWidth) {
    RealFormat format;
    format.setFormat(2000000000, 1999999998, Right);
    format.setWidth(8);
    EXPECT_EQ(format.getString(3.14159).str(), "3.141590");
    EXPECT_EQ(format.getString(1e9).str(), "1.00e+00");
    format.setPrecision(INT_MIN);
    EXPECT_EQ(format.getString(3.14159).str(), "       3");
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
    format.setWidth(100000);
    format.setPrecision(4000);
    format.setWidth(310);
    EXPECT_EQ(format.getString(-DBL_MAX).length(), 310u);
    EXPECT_EQ(real(3000, 2500, 1e300).length(), 3000u);
}

TEST(RealFormat, IsPrintedThroughAnOverridingClass) {
    class Percent : public RealFormat {
      public:
        using RealFormat::operator=;
        RWCString getString(double value) override { return RealFormat::getString(100 * value); }
    } percent;
    percent.setFormat(6, 1, Right);
    RealFormat& format = percent;
    EXPECT_EQ(format.getString(0.125).str(), "  12.5");
}

TEST(StringFormat, PadsOrCutsAtTheEnd) {
    const struct {
        int width;
        Justification justify;
        const char* text;
        const char* printed;
    } cases[] = {
        {4, Left, "abcdef", "abcd"},
        {4, Right, "abcdef", "abcd"},
        {4, Left, "ab", "ab  "},
        {4, Right, "ab", "  ab"},
        {4, Right, "abcd", "abcd"},
        {0, Left, "ab", ""},
        {3, Right, "", "   "},
        {-4, Left, "ab", ""},
        {3, Left, "\351t\351s", "\351t\351"},
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
