// What the dialogs accept: the rules of their fields, on every system.
#include <gtest/gtest.h>

#include "format/format_entry.h"

namespace {

using namespace toolbox::format;

template <class Format, class... Fields>
Format made(Fields... fields) {
    Format format;
    format.setFormat(fields...);
    return format;
}

/// Edits a format in place.
template <class Format>
auto entered(const FormatEntry& entry, Format& format) {
    return enterFormat(entry, Format(format), format);
}

TEST(FormatEntry, NamesTheFirstFieldThatIsRefusedAndItsLimits) {
    const struct {
        FormatEntry entry;
        EntryField field;
        int minimum, maximum;
    } cases[] = {{{"", "1", "0"}, EntryField::width, 2, 80},
                 {{"", "81", "0"}, EntryField::width, 2, 80},
                 {{"", "8", "7"}, EntryField::decimals, 0, 6},
                 {{"a|b", "0", "-1"}, EntryField::description, 0, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.entry.width + ", " + c.entry.decimals);
        auto format = made<RealFormat>(12, 3, Right);
        const auto fault = entered(c.entry, format);
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->field, c.field);
        EXPECT_EQ(fault->minimum, c.minimum);
        EXPECT_EQ(fault->maximum, c.maximum);
        EXPECT_EQ(format.saveStringFormat(), "  12-   3-R");
    }
}

TEST(FormatEntry, SetsWhatWasEnteredAndKeepsWhatWasBeyondTheLimitsUntilItIsTouched) {
    auto format = made<RealFormat>(8, 2, Right);
    EXPECT_FALSE(entered({"Length", " 4", "2 ", Left}, format));
    EXPECT_EQ(format.saveStringFormat(), "   4-   2-L");
    auto wide = made<RealFormat>(300, 200, Right);
    EXPECT_FALSE(entered({"", "300", "200", Left}, wide));
    EXPECT_EQ(wide.saveStringFormat(), " 300- 200-L");
    EXPECT_FALSE(entered({"", "300", "298", Left}, wide));
    EXPECT_EQ(entered({"", "299", "200", Left}, wide)->field, EntryField::width);
    EXPECT_EQ(entered({"", "80", "298", Left}, wide)->field, EntryField::decimals);
    NumberFormat none;
    EXPECT_FALSE(entered({"", "0", "", Left}, none));
}

TEST(FormatEntry, PreviewsASampleBetweenTheEdgesOfItsColumn) {
    auto real = made<RealFormat>(10, 2, Right);
    auto words = made<StringFormat>(6, Left);
    EXPECT_EQ(previewOf(real, "text"), "|   1234.57|");
    EXPECT_EQ(previewOf(words, "abcd"), "|abcd  |");
    EXPECT_TRUE(previewFits(words, "abcdef"));
    EXPECT_FALSE(previewFits(words, "abcdefg"));
}

}  // namespace
