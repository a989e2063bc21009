// What the dialogs accept: the rules of their fields, on every system.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "format/format_entry.h"
#include "text/message_ranges.h"

namespace {

using namespace toolbox::format;

RealFormat real(int width, int decimals) {
    RealFormat format;
    format.setFormat(width, decimals, Right);
    return format;
}

NumberFormat integer(int width) {
    NumberFormat format;
    format.setFormat(width, Right);
    return format;
}

TEST(FormatEntry, SetsWhatWasEntered) {
    RealFormat format = real(8, 2);
    EXPECT_FALSE(enterFormat({"Length", " 4", "2 ", Left}, format));
    EXPECT_EQ(format.saveStringFormat(), "   4-   2-L");
    EXPECT_FALSE(enterFormat({"", "9999", "9997", Right}, format));
    EXPECT_EQ(format.saveStringFormat(), "9999-9997-R");
    NumberFormat number = integer(5);
    EXPECT_FALSE(enterFormat({"", "1", "no matter", Left}, number));
    EXPECT_EQ(number.saveStringFormat(), "   1-L");
}

TEST(FormatEntry, NamesTheFirstFieldThatIsRefusedAndItsLimits) {
    struct Case {
        FormatEntry entry;
        EntryFault fault;
    };
    constexpr EntryFault kWidth{EntryField::width, 2, 9999};
    const Case cases[] = {
        {{"", "", "0"}, kWidth},
        {{"", "1", "0"}, kWidth},
        {{"", "10000", "0"}, kWidth},
        {{"", "-8", "0"}, kWidth},
        {{"", "8 mm", "-1"}, kWidth},
        {{"", "8", "7"}, {EntryField::decimals, 0, 6}},
        {{"", "2", "1"}, {EntryField::decimals, 0, 0}},
        {{"", "8", "-1"}, {EntryField::decimals, 0, 6}},
        {{"a|b", "0", "-1"}, {EntryField::description, 0, 0}},
    };
    for (const Case& c : cases) {
        RealFormat format = real(12, 3);
        const auto fault = enterFormat(c.entry, format);
        ASSERT_TRUE(fault) << c.entry.width << ", " << c.entry.decimals;
        EXPECT_EQ(fault->field, c.fault.field) << c.entry.width << ", " << c.entry.decimals;
        EXPECT_EQ(fault->minimum, c.fault.minimum) << c.entry.width;
        EXPECT_EQ(fault->maximum, c.fault.maximum) << c.entry.width;
        EXPECT_EQ(format.saveStringFormat(), "  12-   3-R");
    }
    NumberFormat number = integer(5);
    const auto fault = enterFormat({"", "0", ""}, number);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->minimum, 1);
}

TEST(FormatEntry, PreviewsASampleBetweenTheEdgesOfItsColumn) {
    RealFormat reals = real(10, 2);
    EXPECT_EQ(previewOf(reals, "text"), "|   1234.57|");
    NumberFormat number = integer(8);
    EXPECT_EQ(previewOf(number, "text"), "|   -1234|");
    StringFormat words;
    words.setFormat(6, Left);
    EXPECT_EQ(previewOf(words, "abcd"), "|abcd  |");
}

TEST(LeadingNumber, StaysWithinItsType) {
    using toolbox::text::leadingNumber;
    EXPECT_EQ(leadingNumber<int>("-12 mm"), -12);
    EXPECT_EQ(leadingNumber<int>("2147483648"), INT_MAX);
    EXPECT_EQ(leadingNumber<int>("-99999999999999999999"), INT_MIN);
    EXPECT_EQ(leadingNumber<long>("99999999999999999999"), LONG_MAX);
    EXPECT_EQ(leadingNumber<double>("-1e999"), -std::numeric_limits<double>::infinity());
}

}  // namespace
