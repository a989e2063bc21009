// Numbers in their fields look as the rules say, step by step with the C library.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "literal.h"

namespace {

TEST(Formats, PrintAsTheRulesSayStepByStep) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> exponent(-20, 20);
    for (int i = 0; i < 200000; ++i) {
        const int width = static_cast<int>(random() % 30);
        const Justification justify = random() % 2 ? Left : Right;
        const int number = static_cast<int>(static_cast<std::uint32_t>(random()) >> random() % 32);
        NumberFormat numbers;
        numbers.setFormat(width, justify);
        ASSERT_EQ(numbers.getString(-number), literal::number(-number, width, justify)) << number;
        ASSERT_EQ(numbers.getString(number), literal::number(number, width, justify)) << number;

        const double any = std::bit_cast<double>(random());
        const double sized = std::pow(10.0, exponent(random)) * (random() % 2 ? 1 : -1);
        const double tie = static_cast<double>(random() % 1000000000) / 256.0;
        const double value = i % 3 == 0 && std::isfinite(any) ? any : i % 3 == 1 ? sized : tie;
        // The logarithm may round up to a digit more.
        if (std::fabs(value) > 1 && std::fmod(std::log10(std::fabs(value)), 1) == 0) continue;
        RealFormat reals;
        if (!reals.setFormat(width, static_cast<int>(random() % 20), justify)) continue;
        ASSERT_EQ(reals.getString(value),
                  literal::real(value, width, reals.getPrecision(), justify))
            << value << " in " << width;
    }
}

}  // namespace
