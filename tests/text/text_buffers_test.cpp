#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

TEST(GetStringRing, HoldsSixteenResults) {
    FakedTexts texts;
    for (unsigned int id = 1; id <= 17; ++id) texts.strings.put(id, std::to_string(id * 100));
    const char* first = GetString(nullptr, 1);
    const char* second = GetString(nullptr, 2);
    for (unsigned int id = 3; id <= 16; ++id) GetString(nullptr, id);
    EXPECT_STREQ(first, "100");
    EXPECT_EQ(GetString(nullptr, 17), first);
    EXPECT_STREQ(first, "1700");
    EXPECT_STREQ(second, "200");
}

TEST(GetStringRing, CutsLongTextsAndTellsOfMissingOnes) {
    FakedTexts texts;
    texts.strings.put(1, std::string(1000, 'x'));
    EXPECT_EQ(std::strlen(GetString(nullptr, 1)), 254u);
    EXPECT_TRUE(texts.prompt.boxes.empty());

    EXPECT_STREQ(GetString(nullptr, 4000000000u), "4000000000");
    ASSERT_EQ(texts.prompt.boxes.size(), 1u);
    EXPECT_EQ(texts.prompt.boxes[0].caption, "Fatal error");
    EXPECT_EQ(texts.prompt.boxes[0].text, "String resource not found\n\nResource ID = 4000000000");
    EXPECT_EQ(texts.prompt.boxes[0].flags, 0x2010u);
}

TEST(Lead, MovesOnlyWhatItLooksAt) {
    const struct {
        const char* text;
        int n;
        const char* expected;
        int result;
    } cases[] = {{"  ab", 4, "ab", 2},    {"ab  ", 4, "ab  ", 4}, {"    ", 4, "    ", 0},
                 {"  ", 5, "", 0},        {"  ab", 2, "  ab", 0}, {"  abcdef", 4, "abcbcdef", 8},
                 {" ab", 99, "ab", 2},    {"", 0, "", 0},         {" ab", -1, " ab", 0},
                 {"\t ab", 4, "\t ab", 4}};
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(Lead(text.data(), c.n), c.result) << c.text;
        EXPECT_STREQ(text.c_str(), c.expected) << c.text;
    }
    EXPECT_EQ(Lead(nullptr, 3), 0);
}

TEST(Trail, CutsButNeverEmpties) {
    const struct {
        const char* text;
        int n;
        const char* expected;
    } cases[] = {{"a   ", 4, "a"},  {" ", 1, " "},     {"   ", 3, "   "},  {"ab \r\n", 5, "ab"},
                 {" a ", 3, " a"},  {"abcd", 2, "ab"}, {"ab  ", 99, "ab"}, {"ab  ", -1, "ab  "},
                 {"ab  ", 3, "ab"}, {"", 5, ""},       {"a", 1, "a"},      {"ab\t", 3, "ab\t"}};
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(Trail(text.data(), c.n), static_cast<int>(std::strlen(c.expected))) << c.text;
        EXPECT_STREQ(text.c_str(), c.expected) << c.text;
    }
    EXPECT_EQ(Trail(nullptr, 3), 0);
}

TEST(FormatMessage, FillsPlaceholdersInTheirOrder) {
    const int n = 42;
    const CString name("girder");
    const CString nested("<%3>");
    CArray<TvOutVal, TvOutVal&> args;
    args.Add(TvOutVal(n, "%04d"));
    args.Add(TvOutVal(nested, ""));
    args.Add(TvOutVal(name, ""));
    const std::pair<const char*, const char*> cases[] = {
        {"%2 %1", "<girder> 0042"},                // %2's text is there before %3 is looked for
        {"%1 %1", "0042 %1"},       {"%2", "%2"},  // there is no %1
        {"%10", "00420"},           {"%1 %2 %3 %4 %5", "0042 <girder> %3 %4 %5"},
    };
    for (const auto& [templ, expected] : cases) {
        CString result = templ;
        TvFormatMessage(result, result, args);
        EXPECT_EQ(result, expected) << templ;
    }
}

}  // namespace
