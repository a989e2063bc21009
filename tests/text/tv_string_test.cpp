// Sets of characters, and texts validated by the rules of their resource.
#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

TEST(CharSet, ReadsIntervalsAndCharacters) {
    const std::tuple<const char*, bool, std::string> cases[] = {
        {"x[[ac]]ya", true, "xabcya"},
        {"[a", true, "[a"},
        {"xy[[za]]", false, "xy"},
        {"[[ac}]x", false, ""},
        {"[[\200\202]]", true, "\200\201\202"},
        // The ends are compared as signed bytes: from -1 up to 1, but not from 'a' to -32.
        {"[[\377\001]]", true, std::string("\377\0\001", 3)},
        {"[[a\340]]", false, ""}};
    for (const auto& [definition, isValid, characters] : cases) {
        const TvCharSet set{CString(definition)};
        EXPECT_EQ(set.isValid(), isValid) << definition;
        EXPECT_EQ(set.getDetailedCharsSet(), characters) << definition;
        for (const char some : {'a', '[', '\377', '\0'})
            EXPECT_EQ(set.charIsInSet(some), characters.find(some) != std::string::npos);
    }
}

constexpr unsigned int kRule = 40;

struct TvStringTest : ::testing::Test {
    TvStringTest() {
        texts.strings.put(1094, "Invalid.");
        texts.strings.put(1095, "and");
        texts.strings.put(1097, "to");
    }
    TvString with(const char* rule, const char* value = "") {
        texts.strings.put(kRule, rule);
        TvString text(kRule);
        text = value;
        return text;
    }
    FakedTexts texts;
};

TEST_F(TvStringTest, ReportsTheRulesThatAreBroken) {
    const struct {
        const char* rule;
        const char* value;
        int broken;
        const char* message;
        const char* kept;  ///< without what the sets forbid
    } cases[] = {
        {"TVSTRING|Too short: %1|3", "ab", 4, "Too short: 3", "ab"},
        {"TVSTRING|%1 to %2 characters|1|3", "abcd", 8, "1 to 3 characters", "abcd"},
        {"TVSTRING|Only %1||||[[09]]x", "1yx2", 16, "Only '0' to '9' and 'x'", "1x2"},
        {"TVSTRING|Not %1|||||\\/", "/a//b\\", 32, "Not '\\' and '/'", "ab"},
        // Each of the two sets is checked only while the other is empty; both remove.
        {"TVSTRING|m||||[[09]]|5", "5a1", 0, "", "1"},
        {"TVSTRING|Not %1 nor %2||||||CON||NUL", "NUL", 64, "Not CON nor NUL", "NUL"},
        {"TVSTRING|%2 and %1|9|1||a||bb", "bb", 4 + 8 + 16 + 64, "1 and 9", ""},
        // No rules without a usable resource.
        {"TVSTRINGS|m|3", "a", 0, "", "a"},
    };
    for (const auto& c : cases) {
        // A copy outlives its original.
        TvString text = *std::make_unique<TvString>(with(c.rule, c.value));
        CString message;
        char broken = 127;
        EXPECT_EQ(text.isValid(&message, static_cast<CString*>(nullptr), &broken), c.broken == 0)
            << c.rule;
        EXPECT_EQ(broken, c.broken) << c.rule;
        EXPECT_EQ(message, c.message) << c.rule;
        text.removeInvalidChars();
        EXPECT_EQ(text.value(), c.kept) << c.rule;
    }
    TvString text = with("TVSTRING|Too short: %1|3", "long enough");
    texts.strings.put(kRule, "nothing");
    EXPECT_FALSE(text.setToResStr(kRule)) << "the rules stay";
    RWCString message;
    const RWCString candidate("ab");
    EXPECT_FALSE(text.isValid(&message, &candidate, nullptr));
    EXPECT_EQ(message, "Too short: 3");
}

/// 77 stands for a text that is refused.
template <class T>
void expectScans(const char* text, T value) {
    T out = 77;
    EXPECT_EQ(TvScanfSingle(text, &out), value != 77) << text;
    EXPECT_EQ(out, value) << text;
}

TEST(ScanSingle, ReadsOneNumberAndNothingElse) {
    expectScans<int>("  -12 ", -12);
    expectScans<int>("+5", 5);
    for (const char* bad : {"", " ", "+", "+-5", "12abc", "1 2", "1.5", "0x10", "2147483648"})
        expectScans<int>(bad, 77);
    expectScans<unsigned char>("256", 77);
    expectScans<unsigned int>("-1", 77);
    expectScans<unsigned long>("4294967295", 4294967295UL);
    expectScans<double>("1,5", 1.5);
    expectScans<unsigned long>("5e2", 500);
    for (const char* bad : {"1,5,", "inf", "nan", "1e999", "1e-999", "e5", "1.5."})
        expectScans<double>(bad, 77);
}

}  // namespace
