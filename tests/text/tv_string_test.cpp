// Sets of characters, and texts validated by the rules of their resource.
#include <gtest/gtest.h>

#include <memory>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

TEST(CharSet, ReadsIntervalsAndCharacters) {
    const struct {
        const char* definition;
        bool valid;
        std::string characters;
    } cases[] = {{"x[[ac]]ya", true, "xabcya"},
                 {"[a", true, "[a"},
                 {"[[[[]]", true, "["},
                 {"xy[[za]]", false, "xy"},
                 {"x[[a", false, "x"},
                 {"[[ac}]x", false, ""},
                 {"[[\200\202]]", true, "\200\201\202"},
                 // The ends are compared as signed bytes: from -1 up to 1, but not from 'a' to -32.
                 {"[[\377\001]]", true, std::string("\377\0\001", 3)},
                 {"[[a\340]]", false, ""}};
    for (const auto& c : cases) {
        const TvCharSet set{CString(c.definition)};
        EXPECT_EQ(set.isValid(), c.valid) << c.definition;
        EXPECT_EQ(set.getDetailedCharsSet(), c.characters) << c.definition;
        for (const char some : {'a', '[', '\377', '\0'})
            EXPECT_EQ(set.charIsInSet(some), c.characters.find(some) != std::string::npos);
    }
    const struct {
        const char* text;
        bool all, one;
    } texts[] = {{"", true, false}, {"705", true, true}, {"7.5", false, true}, {"x", false, false}};
    const TvCharSet digits{CString("[[09]]")};
    for (const auto& c : texts) {
        EXPECT_EQ(digits.allStringCharsAreInSet(c.text), c.all) << c.text;
        EXPECT_EQ(digits.atLeastOneStringCharIsInSet(c.text), c.one) << c.text;
    }
}

TEST(CharSet, IsRenderedForTheUser) {
    FakedTexts texts;
    texts.strings.put(1095, "et");
    texts.strings.put(1096, "ou");
    texts.strings.put(1097, "jusqu'\340");
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"a", "'a'"},
        {"ab", "'a' ou 'b'"},
        {"[[az]]", "'a' jusqu'\340 'z'"},
        {"[[aa]]\t[[09]]", "'a', '{horizontal tab}' ou '0' jusqu'\340 '9'"},
        {"ab[[za]]c", "'a' ou 'b'"},
        {"a,", "'a', ' ou'"}};
    for (const auto& [definition, words] : cases)
        EXPECT_EQ(TvCharSet(CString(definition)).getFriendlyCharsSet(true), words);
    EXPECT_EQ(TvCharSet(CString("ab")).getFriendlyCharsSet(false), "'a' et 'b'");
    const std::pair<int, const char*> unseen[] = {
        {0, "{NUL}"},  {7, "{bell (alert)}"}, {14, "{SO}"}, {15, "{ST}"},  {16, "{SLE}"},
        {17, "{CSL}"}, {26, "{STB}"},         {31, "{US}"}, {127, "\177"}, {255, "{ascii 255}"}};
    for (const auto& [code, name] : unseen)
        EXPECT_EQ(TvCharSet::getVisibleChar(static_cast<char>(code)), name) << code;
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
        {"TVSTRING|Not %1||||||CON", "con", 0, "", "con"},
        {"TVSTRING|%2 and %1|9|1||a||bb", "bb", 4 + 8 + 16 + 64, "1 and 9", ""},
        {"TVSTRING||2", "a", 4, "Invalid.", "a"},
        // A set is what precedes its malformed interval.
        {"TVSTRING|Only %1||||ab[[z", "abz", 16, "Only 'a' and 'b'", "ab"},
        // No rules without a usable resource.
        {"TVSTRINGS|m|3", "a", 0, "", "a"},
        {"", "a", 0, "", "a"},
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
    TvString assigned(0u);
    assigned = text;
    RWCString message;
    const RWCString candidate("ab");
    EXPECT_FALSE(assigned.isValid(&message, &candidate, nullptr));
    EXPECT_EQ(message, "Too short: 3");
    RWCollectableString collectable("unchanged");
    EXPECT_TRUE(text.isValid(&collectable, static_cast<RWCollectableString*>(nullptr), nullptr));
    EXPECT_EQ(collectable, "unchanged");
}

TEST_F(TvStringTest, ParsesEveryFieldOfItsResource) {
    RWCString message("?"), defaultValue, valid, invalid("?");
    int shortest = 0, longest = 0;
    CArray<RWCString> forbidden;
    const auto parse = [&](const std::string& rules) {
        texts.strings.put(kRule, rules);
        forbidden.Add("before");
        return TvStringParseResStr(kRule, &message, &defaultValue, &shortest, &longest, &valid,
                                   &invalid, &forbidden);
    };
    EXPECT_EQ(parse("TVSTRING||2|many|none|ab||x||y|"), 2 + 4 + 16 + 64);
    EXPECT_EQ(message, "Invalid.");
    EXPECT_EQ(shortest, 2);
    EXPECT_EQ(longest, -1);
    EXPECT_EQ(defaultValue, "none");
    EXPECT_EQ(valid, "ab");
    EXPECT_TRUE(invalid.empty());
    ASSERT_EQ(forbidden.GetSize(), 2);
    EXPECT_EQ(forbidden[1], "y");
    EXPECT_EQ(parse("no rules"), 0);
    EXPECT_EQ(shortest, 2);
    EXPECT_EQ(forbidden.GetSize(), 0) << "of a text that exists";
    EXPECT_EQ(parse("TVSTRING|"), 0);
    EXPECT_EQ(shortest, -1);

    // Longer than any fixed buffer.
    texts.strings.put(kRule, "TVSTRING|" + std::string(5000, 'm') + "||||||last");
    EXPECT_EQ(TvStringParseResStr(kRule, &message, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  static_cast<CArray<RWCString>*>(nullptr)),
              1 + 64);
    EXPECT_EQ(message.length(), 5000u);
}

template <class T>
void expectScans(const char* text, bool expected, T value) {
    T out = 77;
    EXPECT_EQ(TvScanfSingle(text, &out), expected) << text;
    EXPECT_EQ(out, expected ? value : T{77}) << text;
}

TEST(ScanSingle, ReadsOneNumberAndNothingElse) {
    expectScans<int>("  -12 ", true, -12);
    expectScans<int>("+5", true, 5);
    for (const char* bad : {"", " ", "+", "+-5", "12abc", "1 2", "1.5", "0x10", "2147483648"})
        expectScans<int>(bad, false, 0);
    expectScans<unsigned char>("255", true, 255);
    expectScans<unsigned char>("256", false, 0);
    expectScans<short>("-32769", false, 0);
    expectScans<unsigned int>("-1", false, 0);
    expectScans<unsigned long>("4294967295", true, 4294967295UL);
    expectScans<double>(" 1.5e3", true, 1500);
    expectScans<float>("0.1", true, 0.1f);
    expectScans<double>("1,5", true, 1.5);
    expectScans<unsigned long>("5e2", true, 500);
    for (const char* bad : {"1,5,", "inf", "nan", "1e999", "1e-999", "e5", "1.5."})
        expectScans<double>(bad, false, 0);
}

}  // namespace
