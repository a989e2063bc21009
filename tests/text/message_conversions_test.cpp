#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>
#include <utility>

#include "toolbox/messages.h"

namespace {

TEST(MessageConversions, PrintRealsWithTheirDecimals) {
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {{0.25, 2, ".25"},
                 {0.05, 3, ".050"},
                 {12.6, 0, "13"},
                 {-0.5, 1, "-.5"},
                 {99999.0, 2, "99999.00"},
                 {0.001, 2, ".00"},
                 {0.3, 0, ""},
                 {-0.3, 0, "-"},
                 {5, -3, "5"},
                 {100000.0, 2, "100000."},
                 {99999.5, 2, "99999.5"},
                 {0.000001, 2, "1.e-006"},
                 {123456.0, -100, "1.e+005"},
                 {-inf, 2, "-inf"},
                 {std::nan(""), 2, "nan"}};
    for (const auto& c : cases) {
        char text[64];
        EXPECT_EQ(GMSG::ftoa(c.value, c.decimals, text, 0), text);
        EXPECT_STREQ(text, c.text) << c.value << " with " << c.decimals;
    }
    char text[64];
    EXPECT_STREQ(GMSG::ftoa(0.0, 3, text, 1), "");
    EXPECT_STREQ(GMSG::ftoa(-0.0, 3, text, 1), "");
}

TEST(MessageConversions, StayWithinTheRoomAskedFor) {
    const double values[] = {-99999.0 + 1.0 / 3, -1.0 / 3, -1e5 - 1.0 / 3,
                             -1.0 / 3e300,       -0.00001, -1.5e308};
    for (const double value : values) {
        for (const int decimals : {0, 1, 5, 300, 1100}) {
            std::string text(static_cast<std::size_t>(decimals) + 17, 'G');
            GMSG::ftoa(value, decimals, text.data(), 0);
            EXPECT_EQ(text.back(), 'G') << value << " with " << decimals;
            EXPECT_LT(std::strlen(text.c_str()), text.size() - 1);
        }
    }
    std::string text(1117, 'G');
    GMSG::ftoa(1.0 / 3, INT_MAX, text.data(), 0);
    EXPECT_EQ(text.back(), 'G');
}

TEST(MessageConversions, PrintIntegersAndBooleans) {
    char text[22];
    EXPECT_STREQ(GMSG::ntoa(0, text, 0), "0");
    EXPECT_STREQ(GMSG::ntoa(0, text, 1), "");
    EXPECT_EQ(GMSG::ntoa(LONG_MIN, text, 1), std::to_string(LONG_MIN));
    for (const auto& [print, yes, no] : {std::tuple{&GMSG::btoa, "O", "N"},
                                         {&GMSG::b2OnOff, "ON", "OFF"},
                                         {&GMSG::b2ECHC, "EC", "HC"}}) {
        EXPECT_STREQ(print(2, text, 0), yes);
        EXPECT_STREQ(print(0, text, 0), no);
        EXPECT_STREQ(print(2, text, 1), "");
    }
}

TEST(MessageConversions, StripBlanksAtBothEnds) {
    for (const auto& [given, stripped] :
         {std::pair{"  a b ", "a b"}, {"ab", "ab"}, {"   ", ""}, {"", ""}, {"\ta ", "\ta"}}) {
        std::string text = given;
        EXPECT_STREQ(GMSG::strip(text.data()), stripped);
    }
    EXPECT_EQ(GMSG::strip(nullptr), nullptr);
}

}  // namespace
