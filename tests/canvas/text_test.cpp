#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "toolbox/canvas_text.h"

void PrintTo(const TvTextRun& run, std::ostream* out) {
    *out << '{' << run.bytes << (run.symbol ? " symbol " : " text ") << run.level << '}';
}

void PrintTo(const TvTextFault& fault, std::ostream* out) {
    *out << fault.place << ':' << std::hex << static_cast<unsigned long>(fault.code);
}

namespace {

using Runs = std::vector<TvTextRun>;
using Faults = std::vector<TvTextFault>;

TEST(Text, TakesWhatWindows1252LacksFromSymbol) {
    struct Case {
        const char* utf8;
        Runs runs;
        const char* back;  ///< null: as it was
    };
    const Case cases[] = {
        {"12 \xE2\x82\xAC", {{"12 \x80"}}, nullptr},
        {"\xC2\xB5m", {{"\xB5m"}}, nullptr},
        {"\xCE\xBC", {{"m", true}}, nullptr},
        {"\xCF\x83\xE2\x89\xA4"
         "5",
         {{"s\xA3", true}, {"5"}},
         nullptr},
        {"\xE2\x88\x92"
         "5",
         {{"-", true}, {"5"}},
         nullptr},
        {"10\xE2\x81\xB6", {{"10"}, {"6", false, 1}}, "106"},
        {"m\xE2\x81\xBB\xC2\xB9\xC2\xB2",
         {{"m"}, {"-", true, 1}, {"12", false, 1}},
         "m\xE2\x88\x92"
         "12"},
        {"x\xE2\x82\x82", {{"x"}, {"2", false, -1}}, "x2"},
        {"cm\xC2\xB2", {{"cm\xB2"}}, nullptr},
        {"5\xE2\x80\xAF%", {{"5\xA0%"}}, "5\xC2\xA0%"},
        {"a\r\nb\nc", {{"a\nb\nc"}}, "a\nb\nc"},
        {"co\xC2\xADop", {{"co-op"}}, "co-op"},
    };
    for (const Case& c : cases) {
        const TvText text = TvText::fromUtf8(c.utf8);
        EXPECT_EQ(text.runs(), c.runs) << c.utf8;
        EXPECT_EQ(text.faults(), Faults()) << c.utf8;
        EXPECT_EQ(text.utf8(), c.back ? c.back : c.utf8);
    }
}

TEST(Text, NotesEachCharacterThatNoFontHas) {
    const TvText text = TvText("a\x81\t").addUtf8("?\xE4\xB8\xAD\xCE\xB1\xFF");
    EXPECT_EQ(text.windows1252(),
              "a????"
              "??");
    EXPECT_EQ(text.faults(),
              (Faults{{1, 0x81}, {2, '\t'}, {4, 0x4E2D}, {6, TvTextFault::kNotUtf8}}));
    // They keep their places when the text becomes a part of another.
    EXPECT_EQ(TvText("xy").superscript(text).faults().front(), (TvTextFault{3, 0x81}));
    TvText doubled = text;
    EXPECT_EQ(doubled.add(doubled).faults().back(), (TvTextFault{13, TvTextFault::kNotUtf8}));
}

// From the published metrics.
TEST(Text, IsMeasuredByThePublishedWidths) {
    struct Case {
        TvFont font;
        TvText text;
        int thousandths;
    };
    const TvFont helvetica{TvFont::Helvetica, 1000};
    const TvFont times{TvFont::Times, 1000};
    const Case cases[] = {
        {helvetica, "Hello", 722 + 556 + 222 + 222 + 556},
        {{TvFont::Helvetica, 1000, true}, "Hello", 722 + 556 + 278 + 278 + 611},
        {{TvFont::Helvetica, 1000, true, true}, "W", 944},
        {helvetica, "\x80\x85\xE9\xFF", 556 + 1000 + 556 + 500},
        {times, "Wi\x97", 944 + 278 + 1000},
        {{TvFont::Times, 1000, true}, "Wi%", 1000 + 278 + 1000},
        {{TvFont::Times, 1000, false, true}, "Wi%", 833 + 278 + 833},
        {{TvFont::Times, 1000, true, true}, "Wi%", 889 + 278 + 833},
        {{TvFont::Courier, 1000, true}, "Wi\xFC.", 2400},
        {{TvFont::Courier, 1000}, TvText::fromUtf8("\xCE\xB1\xE2\x88\x91"), 631 + 713},
        {helvetica, TvText("0").superscript("00"), 556 + 667},
        {helvetica, "i\nWW\n", 944 * 2},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(c.font.measure(c.text).width, c.thousandths, 0.5) << c.text.utf8();
    EXPECT_EQ(helvetica.measure("a\n\nb").lines, 3);
    EXPECT_DOUBLE_EQ(helvetica.measure("a\n\nb").height, 3600);
    EXPECT_EQ(helvetica.measure("").lines, 1);
}

TEST(Text, BreaksAtBlanksAndNeverInAWord) {
    const TvFont font{TvFont::Courier, 10};  // 6 points for each character
    struct Case {
        TvText text;
        double width;
        const char* broken;
    };
    const Case cases[] = {
        {"one two three", 42, "one two\nthree"},
        {"one two three", 41.9, "one\ntwo\nthree"},
        {"one two three", 78, "one two three"},
        {"1234567 8 9", 24, "1234567\n8 9"},
        {"-12 kN", 1, "-12\nkN"},
        {"5\xA0kN load", 30, "5\xA0kN\nload"},
        {"ab cd\nef gh", 30, "ab cd\nef gh"},
        {"one two", -1, "one\ntwo"},
        {"", 10, ""},
    };
    for (const Case& c : cases) EXPECT_EQ(c.text.wrapped(font, c.width).windows1252(), c.broken);
    // What was measured fits, whatever its runs.
    const TvText text = TvText("Load of ").subscript("q and ").add("7.3 kN per metre");
    for (const double size : {7.3, 9.1, 11.7}) {
        const TvFont odd{TvFont::Times, size};
        EXPECT_EQ(text.wrapped(odd, odd.measure(text).width), text);
    }
}

TEST(Text, StandsAtItsPoint) {
    const TvFont font{TvFont::Courier, 10};
    const TvText lines("abcd\nab");
    struct Case {
        TvTextPlace place;
        TvPoint first;
        TvPoint second;
    };
    const Case cases[] = {
        {{}, {100, 100}, {100, 112}},
        {{TvAlign::left, TvLevel::top}, {100, 109.5}, {100, 121.5}},
        {{TvAlign::center, TvLevel::middle}, {88, 97.5}, {94, 109.5}},
        {{TvAlign::right, TvLevel::bottom}, {76, 85.5}, {88, 97.5}},
        {{TvAlign::right, TvLevel::baseline, std::numbers::pi / 2}, {100, 76}, {88, 88}},
    };
    for (const Case& c : cases) {
        const auto runs = tvPlaceText({100, 100}, lines, font, c.place);
        ASSERT_EQ(runs.size(), 2U);
        EXPECT_NEAR(std::hypot(runs[0].at.x - c.first.x, runs[0].at.y - c.first.y), 0, 1e-9);
        EXPECT_NEAR(std::hypot(runs[1].at.x - c.second.x, runs[1].at.y - c.second.y), 0, 1e-9);
    }
    const auto runs = tvPlaceText({}, TvText("a").superscript("2").add("b"), font, {});
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_DOUBLE_EQ(runs[1].at.x, 6);
    EXPECT_DOUBLE_EQ(runs[1].at.y, -3.5);
    EXPECT_DOUBLE_EQ(runs[1].size, 6);
    EXPECT_DOUBLE_EQ(runs[2].at.x, 9.6);
    EXPECT_DOUBLE_EQ(runs[2].at.y, 0);
}

TEST(Text, IsRebuiltFromWhatItIsMadeOfAndNothingElse) {
    const TvText text = TvText("a\x81").subscript("b").addUtf8("\xCE\xB1");
    TvText again;
    EXPECT_TRUE(again.assign(text.runs(), text.faults()));
    EXPECT_EQ(again, text);
    const std::pair<Runs, Faults> bad[] = {
        {{{""}}, {}},                    // an empty run
        {{{"a"}, {"b"}}, {}},            // two that are one
        {{{"a", false, 2}}, {}},         // no level
        {{{"\x81"}}, {}},                // no character
        {{{"\xAD"}}, {}},                // would have become a hyphen
        {{{"\x7F", true}}, {}},          // none in Symbol
        {{{"a"}}, {{0, 0x4E2D}}},        // no place of a fault
        {{{"?"}}, {{1, 0x4E2D}}},        // behind the end
        {{{"?", true}}, {{0, 0x4E2D}}},  // in the wrong font
        {{{"??"}}, {{1, 5}, {0, 5}}},    // out of order
        {{{"?"}}, {{0, 5}, {0, 5}}},     // twice
    };
    for (const auto& [runs, faults] : bad) {
        EXPECT_FALSE(again.assign(runs, faults)) << ::testing::PrintToString(runs);
        EXPECT_TRUE(again.runs().empty());
    }
}

}  // namespace
