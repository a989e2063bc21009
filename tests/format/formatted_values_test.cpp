#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "toolbox/formats.h"

namespace {

RealFormatedValue realValue(int precision, double value) {
    RealFormatedValue result;
    EXPECT_EQ(result.setFormat(1000, precision, Right), 1);
    result = value;
    return result;
}

TEST(FormatedValues, PrintByTheirFormat) {
    NumberFormatedValue number;
    EXPECT_EQ(number.getStringValue().str(), "");
    number.setFormat(6, Left);
    number = -42;
    RealFormatedValue real;
    real.setFormat(8, 2, Right);
    real = 3.14159;
    StringFormatedValue string;
    string.setFormat(5, Right);
    string = "ab";
    NoFormatedValue none;
    FormatedValue* const values[] = {&number, &real, &string, &none};
    const char* const texts[] = {"-42   ", "    3.14", "   ab", ""};
    const char* const classes[] = {"NumberFormatedValue", "RealFormatedValue",
                                   "StringFormatedValue", "NoFormatType"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(values[i]->getStringValue().str(), texts[i]);
        EXPECT_STREQ(values[i]->getClassName(), classes[i]);
        EXPECT_EQ(values[i]->isA(*values[i]), i < 3);
    }
}

TEST(FormatedValues, CopyFormatAndValue) {
    RealFormatedValue real;
    real.setFormat(8, 2, Left);
    real = 2.5;
    RealFormatedValue assigned;
    assigned = real;
    EXPECT_EQ(RealFormatedValue(assigned).getStringValue().str(), "2.50    ");
    NumberFormatedValue number;
    number = 7;
    number = static_cast<const NumberFormat&>(NumberFormat());
    EXPECT_EQ(number.getValue(), 7);
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
        {15, 1.0, 1.0, 1},     {400, 1.0, 1.0, 0},
        {-400, 1e300, 0.0, 1}, {INT_MIN, 5.0, 1.0, 1},
        {2, inf, inf, 0},      {2, std::nan(""), std::nan(""), 0},
        {22, 0.0, 1e-22, 0},   {22, 0.0, std::nextafter(1e-22, 0.0), 1},
    };
    for (const auto& c : cases) {
        const RealFormatedValue a = realValue(c.precision, c.a), b = realValue(c.precision, c.b);
        EXPECT_EQ(a == b, c.equal) << c.precision << ' ' << c.a << ' ' << c.b;
        EXPECT_EQ(a != b, !c.equal);
    }
    EXPECT_TRUE(realValue(1, 3.0) != realValue(2, 3.0));
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
    EXPECT_FALSE(NoFormatedValue() != NoFormatedValue());
}

}  // namespace
