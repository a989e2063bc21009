// Texts of resources, blanks at either end, and messages filled with values.
#include <gtest/gtest.h>

#include <type_traits>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

TEST(GetStringRing, HoldsSixteenResultsAndTellsOfMissingTexts) {
    FakedTexts texts;
    for (unsigned int id = 1; id <= 17; ++id)
        texts.strings.put(id, std::to_string(id) + std::string(1000, 'x'));
    const char* first = GetString(nullptr, 1);
    const char* second = GetString(nullptr, 2);
    for (unsigned int id = 3; id <= 16; ++id) GetString(nullptr, id);
    EXPECT_EQ(first, "1" + std::string(253, 'x'));
    EXPECT_EQ(GetString(nullptr, 17), first);
    EXPECT_EQ(first, "17" + std::string(252, 'x'));
    EXPECT_EQ(second[0], '2');
    EXPECT_TRUE(texts.prompt.boxes.empty());

    EXPECT_STREQ(GetString(nullptr, 4000000000u), "4000000000");
    ASSERT_EQ(texts.prompt.boxes.size(), 1u);
    EXPECT_EQ(texts.prompt.boxes[0].text, "String resource not found\n\nResource ID = 4000000000");
}

TEST(Lead, MovesAndTrailCutsOnlyWhatTheyLookAt) {
    const struct {
        int (*change)(char*, int);
        const char* text;
        int n;
        const char* expected;
        int result;
    } cases[] = {{Lead, "  ab", 4, "ab", 2},     {Lead, "    ", 4, "    ", 0},
                 {Lead, "  ", 5, "", 0},         {Lead, "  abcdef", 4, "abcbcdef", 8},
                 {Lead, " ab", 99, "ab", 2},     {Lead, "\t ab", 4, "\t ab", 4},
                 {Trail, "a   ", 4, "a", 1},     {Trail, "   ", 3, "   ", 3},
                 {Trail, "ab \r\n", 5, "ab", 2}, {Trail, "abcd", 2, "ab", 2},
                 {Trail, "ab  ", 99, "ab", 2},   {Trail, "", 5, "", 0}};
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(c.change(text.data(), c.n), c.result) << c.text;
        EXPECT_STREQ(text.c_str(), c.expected) << c.text;
        EXPECT_EQ(c.change(nullptr, 3), 0);
    }
}

// What would dangle, or be read as another type, does not compile.
static_assert(!std::is_constructible_v<TvOutVal, int, const char*>);
static_assert(!std::is_constructible_v<TvOutVal, char&, const char*>);
static_assert(!std::is_constructible_v<TvOutVal, CString, const char*>);

TEST(FormatMessage, FillsPlaceholdersInTheirOrderWithTheValuesOfThatMoment) {
    int n = 42;
    const CString texts[] = {"<%3>", "girder"};
    CArray<TvOutVal, TvOutVal&> args;
    args.Add(TvOutVal(n, "%04d"));
    for (const CString& text : texts) args.Add(TvOutVal(text, ""));
    n = 7;
    const std::pair<const char*, const char*> cases[] = {
        {"%2 %1", "<girder> 0007"},                // %2's text is there before %3 is looked for
        {"%1 %1", "0007 %1"},       {"%2", "%2"},  // there is no %1
        {"%10", "00070"},           {"%1 %2 %3 %4 %5", "0007 <girder> %3 %4 %5"},
    };
    for (const auto& [templ, expected] : cases) {
        CString result = templ;
        TvFormatMessage(result, result, args);
        EXPECT_EQ(result, expected) << templ;
    }
}

}  // namespace
