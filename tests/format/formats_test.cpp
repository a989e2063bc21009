#include "toolbox/formats.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <utility>

namespace {

template <class Format, class... Fields>
Format made(Fields... fields) {
    Format format;
    format.setFormat(fields...);
    return format;
}
constexpr auto numberFormat = made<NumberFormat, int, Justification>;
constexpr auto realFormat = made<RealFormat, int, int, Justification>;
constexpr auto stringFormat = made<StringFormat, int, Justification>;

TEST(Formats, SaveAndRestore) {
    RealFormat real = realFormat(20, 1, Right);
    NumberFormat number = numberFormat(99, Right);
    StringFormat string = stringFormat(99, Right);
    const struct {
        FormatType& format;
        const char* text;
        int result;
        const char* saved;
    } cases[] = {
        {number, " \t  \n 12-Rest", 1, "  12-R"},
        {number, "-123-L", 1, "-123-L"},
        {string, "-1234-L", 0, "  99-R"},
        // Every part that the setters accept is applied.
        {real, "  12-R", 0, "  20-   1-R"},
        {real, "   1-   4-L", 0, "  20-   4-L"},
        {real, "  10-   2-X", 0, "  10-   2-L"},
        {real, "  12--12-L", 1, "  12- -12-L"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.format.restoreStringFormat(c.text), c.result) << c.text;
        EXPECT_EQ(c.format.saveStringFormat(), c.saved) << c.text;
    }
    EXPECT_EQ(numberFormat(INT_MIN, Right).saveStringFormat(), "-2147483648-R");
}

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::string number(int width, Justification justify, int value) {
    return numberFormat(width, justify).getString(value).str();
}

std::string real(int width, int precision, double value, Justification justify = Right) {
    RealFormat format;
    EXPECT_EQ(format.setFormat(width, precision, justify), 1);
    return format.getString(value).str();
}

std::string string(int width, Justification justify, const char* text) {
    return stringFormat(width, justify).getString(text).str();
}

// Most numbers are held to the rules done step by step; these go to all systems.
TEST(Formats, PrintInTheirField) {
    const std::pair<std::string, const char*> cases[] = {
        {number(5, Right, 123456), "1e+00"},
        {number(11, Right, INT_MIN), "-2147483648"},
        {number(10, Right, INT_MIN), "-2.147e+00"},
        {number(-5, Right, 42), ""},
        {number(INT_MIN, Left, INT_MIN), ""},
        {real(6, 3, 123456.0), "1e+005"},
        {real(4, 2, 0.0), " 0.0"},
        {real(24, 2, 1e23), " 99999999999999991611392"},
        {real(10, 6, 999.9999999999999), "1000.00000"},
        {real(6, 2, -kInf), "  -inf"},
        {real(2, 0, kNan), "na"},
        {string(4, Right, "abcdef"), "abcd"},
        {string(4, Left, "ab"), "ab  "},
        {string(-4, Left, "ab"), ""},
        {string(3, Left, "\351t\351s"), "\351t\351"}};
    for (const auto& [printed, text] : cases) EXPECT_EQ(printed, text);
}

TEST(Formats, PadUpToABound) {
    constexpr std::size_t kBound = 1 << 24;
    for (const int width : {1000000000, INT_MAX}) {
        EXPECT_EQ(number(width, Right, -42), std::string(kBound - 3, ' ') + "-42");
        EXPECT_EQ(real(width, 2, 0.5), std::string(kBound - 4, ' ') + "0.50");
        EXPECT_EQ(real(width, width - 2, 1e300).size(), kBound);
        EXPECT_EQ(string(width, Left, "ab"), "ab" + std::string(kBound - 2, ' '));
        const std::string longer(kBound + 5, 'x');
        EXPECT_EQ(string(width, Left, longer.c_str()), longer);
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
}

TEST(Formats, TellWhetherAValueFits) {
    for (const double value : {0.0, -0.04, 0.95, 9.96, -9.96, 99.5, 123.0, -123.456, 1e9, 1e300})
        for (int width = 2; width < 16; ++width)
            for (int precision = 0; precision < width - 1; ++precision) {
                RealFormat real = realFormat(width, precision, Left);
                std::string full(400, ' ');
                full.resize(static_cast<std::size_t>(
                    std::snprintf(full.data(), full.size(), "%.*f", precision, value)));
                const std::string printed = real.getString(value).str();
                EXPECT_EQ(real.fits(value), printed.substr(0, printed.find(' ')) == full)
                    << printed << " for " << full;
            }
    EXPECT_EQ(realFormat(3, 0, Right).fits(-INFINITY), 0);
    EXPECT_EQ(numberFormat(4, Right).fits(-1234), 0);
    EXPECT_EQ(stringFormat(3, Left).fits("abc"), 1);
}

TEST(Formats, PrintTheSameUnderEveryLocale) {
    for (const char* locale : {"fr_FR.UTF-8", "de_DE.UTF-8", "French_France.1252", "C"}) {
        if (!std::setlocale(LC_ALL, locale)) continue;
        EXPECT_EQ(real(8, 2, 1234.5), " 1234.50") << locale;
    }
}

TEST(RealFormatedValue, EqualsWithinAUnitOfItsLastDecimal) {
    RealFormatedValue a, b;
    for (const auto& [precision, x, y, equal] : {std::tuple{0, 3.05, 3.0, 1},
                                                 {0, 3.1, 3.0, 0},
                                                 {1, 3.05, 3.0, 1},
                                                 {1, 3.15, 3.0, 0},
                                                 {-2, 199.0, 100.0, 1},
                                                 {-2, 200.0, 100.0, 0},
                                                 {2, kInf, kInf, 0},
                                                 {INT_MIN, 5.0, 1.0, 1},
                                                 {22, 0.0, 1e-22, 0},
                                                 {22, 0.0, std::nextafter(1e-22, 0.0), 1}}) {
        for (RealFormatedValue* value : {&a, &b})
            EXPECT_EQ(value->setFormat(1000, precision, Right), 1);
        a = x;
        b = y;
        EXPECT_EQ(a == b, equal) << precision << ' ' << x << ' ' << y;
        EXPECT_EQ(a != b, !equal);
    }
    EXPECT_TRUE(a == b);
    b.setPrecision(21);
    EXPECT_TRUE(a != b);
}

}  // namespace
