#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <string>

#include "support/text_fakes.h"
#include "toolbox/formats.h"

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

TEST(Formats, AcceptSettingsAsTheirKindDoes) {
    RealFormat real;
    EXPECT_EQ(real.setWidth(1), 0);
    EXPECT_EQ(real.getWidth(), 0);
    EXPECT_EQ(real.setWidth(6), 1);
    EXPECT_EQ(real.setPrecision(5), 0);
    EXPECT_EQ(real.setPrecision(4), 1);
    EXPECT_EQ(real.setFormat(1, 0, Left), 0);
    EXPECT_EQ(real.setFormat(10, 9, Left), 0);
    EXPECT_EQ(real, realFormat(10, 4, Right));  // stopped at the precision
    NumberFormat number;
    EXPECT_EQ(number.setWidth(-3), 1);
    EXPECT_EQ(number.setPrecision(7), 1);
    EXPECT_EQ(number.getPrecision(), 0);
    EXPECT_EQ(StringFormat().setPrecision(0), 0);
    NoFormatType none;
    EXPECT_EQ(none.setWidth(9), 1);
    EXPECT_EQ(none.setJustify(Right), 1);
    EXPECT_EQ(none.setPrecision(3), 1);
    EXPECT_EQ(none.setFormat(real), 1);
    EXPECT_EQ(none.getWidth(), 0);
}

TEST(Formats, AreTakenOverFromTheirOwnKindOnly) {
    NumberFormat number = numberFormat(7, Left);
    RealFormat real = realFormat(9, 3, Left);
    StringFormat string = stringFormat(5, Right);
    const NoFormatType none;
    const std::array<FormatType*, 3> all = {&number, &real, &string};
    for (FormatType* to : all) {
        const std::string before = to->saveStringFormat().str();
        for (const FormatType* from : all) EXPECT_EQ(to->setFormat(*from), to == from);
        EXPECT_EQ(to->setFormat(none), 0);
        EXPECT_EQ(to->saveStringFormat().str(), before);
        EXPECT_EQ(to->isA(*to), 1);
        EXPECT_EQ(to->isString() + to->isReal() + to->isNumber(), 1);
        EXPECT_EQ(none.isA(*to), 0);
    }
    const FormatType& asReal = real;
    EXPECT_EQ(NumberFormat(asReal), NumberFormat());
    EXPECT_EQ(RealFormat(asReal), real);
    number = asReal;
    EXPECT_EQ(number, numberFormat(7, Left));
}

TEST(RealFormat, IsCopiedThroughItsChecks) {
    RealFormat narrowed = realFormat(12, 8, Left);
    narrowed.setWidth(5);
    const RealFormat copy(narrowed);
    EXPECT_EQ(copy, realFormat(5, 0, Left));
    RealFormat target = realFormat(9, 2, Right);
    EXPECT_EQ(target.setFormat(static_cast<const FormatType&>(narrowed)), 0);
    EXPECT_EQ(target, realFormat(5, 2, Right));
    target = static_cast<const FormatType&>(narrowed);
    EXPECT_EQ(target, realFormat(5, 2, Left));
}

TEST(Formats, CompareByKindAndFields) {
    const NumberFormat number = numberFormat(5, Right);
    const StringFormat string = stringFormat(5, Right);
    const RealFormat real = realFormat(5, 0, Right);
    const NoFormatType none;
    NumberFormatedValue value;
    value.setFormat(5, Right);
    const FormatType& base = number;
    EXPECT_TRUE(base == number && number == base && base == value && value == number);
    EXPECT_TRUE(number != string && string != real && base != string && real != base);
    EXPECT_TRUE(number != numberFormat(6, Right) && number != numberFormat(5, Left));
    EXPECT_TRUE(real != realFormat(5, 1, Right));
    EXPECT_TRUE(none == base && none == none);
    EXPECT_TRUE(base != none);
}

TEST(Formats, SaveAndRestore) {
    RealFormat real = realFormat(20, 1, Right);
    NumberFormat number = numberFormat(99, Right);
    StringFormat string = stringFormat(99, Right);
    NoFormatType none;
    const struct {
        FormatType& format;
        const char* text;
        int result;
        const char* saved;
    } cases[] = {
        {number, " \t  \n 12-Rest", 1, "  12-R"},
        {number, "-123-L", 1, "-123-L"},
        {number, "  12-X", 0, "  12-L"},
        {string, "-1234-L", 0, "  99-R"},
        {string, "  12-", 0, "  99-R"},
        {string, "+-1-L", 0, "  99-R"},
        // Every part that the setters accept is applied.
        {real, "  12-R", 0, "  20-   1-R"},
        {real, "   1-   4-L", 0, "  20-   4-L"},
        {real, "  10-   2-X", 0, "  10-   2-L"},
        {real, "   6-   5-R", 0, "   6-   2-R"},
        {real, "  12--12-L", 1, "  12- -12-L"},
        {none, "  12-R", 0, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.format.restoreStringFormat(c.text), c.result) << c.text;
        EXPECT_EQ(c.format.saveStringFormat(), c.saved) << c.text;
    }
    EXPECT_EQ(numberFormat(INT_MIN, Right).saveStringFormat(), "-2147483648-R");
}

TEST(Formats, AreNamedByTheApplicationsTexts) {
    toolbox::testing::FakedTexts texts;
    for (unsigned int id : {1200u, 1201u, 1202u})
        texts.strings.put(id, std::to_string(id) + std::string(200, '.'));
    const std::string rest(94, '.');
    EXPECT_EQ(NumberFormat().getTypeName(nullptr).str(), "1200" + rest);
    EXPECT_EQ(RealFormat().getTypeName(nullptr).str(), "1201" + rest);
    EXPECT_EQ(StringFormatedValue().getTypeName(nullptr).str(), "1202" + rest);
    EXPECT_TRUE(NoFormatType().getTypeName(nullptr).empty());
}

TEST(FormatedValues, PrintByTheirFormatAndCopyIt) {
    NumberFormatedValue number;
    EXPECT_EQ(number.getStringValue().str(), "");
    number.setFormat(6, Left);
    number = -42;
    RealFormatedValue real;
    real.setFormat(8, 2, Right);
    real = 3.14159;
    RealFormatedValue assigned;
    assigned = real;
    RealFormatedValue copy(assigned);
    StringFormatedValue string;
    string.setFormat(5, Right);
    string = "ab";
    NoFormatedValue none;
    const std::pair<FormatedValue*, const char*> values[] = {
        {&number, "-42   "}, {&copy, "    3.14"}, {&string, "   ab"}, {&none, ""}};
    for (const auto& [value, text] : values) EXPECT_EQ(value->getStringValue().str(), text);
    EXPECT_EQ(number.isA(number), 1);
    EXPECT_EQ(none.isA(none), 0);
    number = static_cast<const NumberFormat&>(NumberFormat());
    EXPECT_EQ(number.getValue(), -42);
}

TEST(RealFormatedValue, EqualsWithinAUnitOfItsLastDecimal) {
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        int precision;
        double a, b;
        int equal;
    } cases[] = {
        {2, 1.004, 1.0, 1},    {2, 1.02, 1.0, 0},
        {0, 3.05, 3.0, 1},     {0, 3.1, 3.0, 0},
        {1, 3.05, 3.0, 1},     {1, 3.15, 3.0, 0},
        {-2, 199.0, 100.0, 1}, {-2, 200.0, 100.0, 0},
        {-400, 1e300, 0.0, 1}, {INT_MIN, 5.0, 1.0, 1},
        {2, inf, inf, 0},      {400, 1.0, 1.0, 0},
        {22, 0.0, 1e-22, 0},   {22, 0.0, std::nextafter(1e-22, 0.0), 1},
    };
    RealFormatedValue a, b;
    for (const auto& c : cases) {
        for (RealFormatedValue* value : {&a, &b})
            EXPECT_EQ(value->setFormat(1000, c.precision, Right), 1);
        a = c.a;
        b = c.b;
        EXPECT_EQ(a == b, c.equal) << c.precision << ' ' << c.a << ' ' << c.b;
        EXPECT_EQ(a != b, !c.equal);
    }
    EXPECT_TRUE(a == b);
    b.setPrecision(21);
    EXPECT_TRUE(a != b);
}

TEST(FormatedValues, CompareAsTheirKindDoes) {
    NumberFormatedValue one, two;
    one = 1;
    two = 2;
    EXPECT_TRUE(one != two);
    two = 1;
    EXPECT_TRUE(one == two);
    two.setJustify(Left);
    EXPECT_TRUE(one != two);
    StringFormatedValue abc, xyz;
    abc = "abc";
    xyz = "xyz";
    EXPECT_TRUE(abc == xyz);
    xyz.setWidth(3);
    EXPECT_TRUE(abc != xyz);
    EXPECT_TRUE(NoFormatedValue() == NoFormatedValue());
}

}  // namespace
