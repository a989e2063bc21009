// Steps of typed numbers, and formulas entered as numbers.
#include <cfloat>
#include <climits>
#include <cmath>

#include "number_kit.h"

namespace {

using namespace toolbox::testing;

TEST(NumberSteps, AreDecimal) {
    double up = 0;
    float single = 0;
    for (int i = 0; i < 7; ++i) up = TvDouble().step(up, 1, 0.1);
    for (int i = 0; i < 7; ++i) single = TvFloat().step(single, 1, 0.1);
    EXPECT_EQ(bitsOf(up), bitsOf(0.7));
    EXPECT_EQ(single, 0.7F);
    for (int i = 0; i < 7; ++i) up = TvDouble().step(up, -1, 0.1);
    EXPECT_EQ(bitsOf(up), bitsOf(0.0));

    const struct {
        double value;
        int steps;
        double size, result;
    } cases[] = {{1.1, 1, 0.1, 1.2},
                 {0.3, -3, 0.1, 0},
                 {-0.05, 1, 0.1, 0.05},
                 {1e300, 1, 0.1, 1e300},
                 {1e22, 1, 1e6, 1.0000000000000001e22},
                 {5e-324, 1, 5e-324, 1e-323},
                 {DBL_MAX, 1, DBL_MAX, DBL_MAX},
                 {-DBL_MAX, INT_MAX, -DBL_MAX, -DBL_MAX},
                 {2, 3, -0.5, 0.5}};
    for (const auto& c : cases)
        EXPECT_EQ(bitsOf(TvDouble().step(c.value, c.steps, c.size)), bitsOf(c.result)) << c.value;
    EXPECT_EQ(TvDouble().step(3, 1, HUGE_VAL), 3);
}

TEST(NumberSteps, StayInTheTypeAndTheLimits) {
    EXPECT_EQ(TvShort().step(32760, 1, 10), SHRT_MAX);
    EXPECT_EQ(TvUShort().step(5, -1, 10), 0);
    EXPECT_EQ(TvLong().step(LONG_MIN + 1, -1, 0.5), LONG_MIN) << "rounded away from zero";
    EXPECT_EQ(TvULong().step(ULONG_MAX - 5, 5, 1), ULONG_MAX);

    TvDouble number;
    number.setLimits(0.25, 1);
    EXPECT_EQ(number.step(0.95, 1, 0.1), 1);
    EXPECT_EQ(number.step(0.3, -5, 0.1), 0.25);
}

TEST(NumberFormulas, GiveTheDecimalsThatAPersonExpects) {
    TvDouble number;
    EXPECT_FALSE(scanned(number, "=3*1.35").taken) << "off at first";
    number.allowFormula(true);
    for (const auto& [text, value] :
         {std::pair{"=3*1.35", 4.05}, std::pair{" = 3 * 1,35 ", 4.05}, std::pair{"=0.1+0.2", 0.3},
          std::pair{"=1/3", 0.333333333333333}, std::pair{"=1,250*2", 2.5},
          std::pair{"=0*-1", 0.0}}) {
        expectTaken(number, text, value);
        EXPECT_FALSE(std::signbit(scanned(number, text).value)) << text;
    }
    TvLong whole;
    whole.allowFormula(true);
    expectTaken(whole, "=0.1*30", 3L);
    expectTaken(whole, "=2147483648/-1", -2147483647L - 1);
}

TEST(NumberFormulas, SayWhereTheyAreWrong) {
    const Speaking english(GMSG::English);
    TvDouble number;
    number.allowFormula(true);
    number.setLimits(0, 1000);
    for (const auto& [text, why] :
         {std::pair<std::string, const char*>{"=", "Formula, character 2: The formula is empty."},
          {" =(3", "Formula, character 3: This parenthesis is not closed."},
          {std::string("=3\0", 3),
           "Formula, character 3: This character has no place in a formula."},
          {"=1+B7*2", "Formula, character 4: No cell can be named here."},
          {"=1e308*10", "The formula has no result: a division by zero, or too large a number."},
          {"=2*1,250", "\"1,250\" can be read as 1.250 or as 1250. Write the one that you mean."},
          {"=900+101", "The value must be between 0 and 1000."}})
        expectRefused(number, text, why);
    TvShort whole;
    whole.allowFormula(true);
    expectRefused(whole, "=7/2", "A whole number is needed; \"=7/2\" is not one.");
    expectRefused(whole, "=200*200",
                  "\"=200*200\" is too large. The largest number possible is 32767.");
}

}  // namespace
