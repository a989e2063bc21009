#include <gtest/gtest.h>

#include <memory>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

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
    /// The message about the rules that its own text breaks.
    static CString messageOf(const TvString& text) {
        CString message;
        EXPECT_FALSE(text.isValid(&message, static_cast<CString*>(nullptr), nullptr));
        return message;
    }
    FakedTexts texts;
};

TEST_F(TvStringTest, ReportsTheRulesThatAreBroken) {
    struct Case {
        const char* rule;
        const char* value;
        int broken;
        const char* message;
    };
    const Case cases[] = {
        {"TVSTRING|Too short: %1|3", "ab", 4, "Too short: 3"},
        {"TVSTRING|%1 to %2 characters|1|3", "abcd", 8, "1 to 3 characters"},
        {"TVSTRING|Only %1||||[[09]]x", "1y", 16, "Only '0' to '9' and 'x'"},
        {"TVSTRING|Not %1|||||\\/", "a/b", 32, "Not '\\' and '/'"},
        // Each of the two sets is checked only while the other is empty.
        {"TVSTRING|m||||[[09]]|5", "5a", 0, ""},
        {"TVSTRING|Not %1 nor %2||||||CON||NUL", "NUL", 64, "Not CON nor NUL"},
        {"TVSTRING|Not %1||||||CON", "con", 0, ""},
        {"TVSTRING|%2 and %1|9|1||a||bb", "bb", 4 + 8 + 16 + 64, "1 and 9"},
        {"TVSTRING||2", "a", 4, "Invalid."},
        {"TVSTRING", "anything", 0, ""},
        // A set is what precedes its malformed interval.
        {"TVSTRING|Only %1||||ab[[z", "abz", 16, "Only 'a' and 'b'"},
    };
    for (const Case& c : cases) {
        const TvString text = with(c.rule, c.value);
        CString message;
        char broken = 127;
        EXPECT_EQ(text.isValid(&message, static_cast<CString*>(nullptr), &broken), c.broken == 0)
            << c.rule;
        EXPECT_EQ(broken, c.broken) << c.rule;
        EXPECT_EQ(message, c.message) << c.rule;
    }
}

TEST_F(TvStringTest, ChecksTextsOfEveryStringType) {
    const TvString text = with("TVSTRING|Too short: %1|3", "long enough");
    RWCString message;
    const RWCString candidate("ab");
    EXPECT_FALSE(text.isValid(&message, &candidate, nullptr));
    EXPECT_EQ(message, "Too short: 3");
    RWCollectableString collectable("unchanged");
    EXPECT_TRUE(text.isValid(&collectable, static_cast<RWCollectableString*>(nullptr), nullptr));
    EXPECT_EQ(collectable, "unchanged");
}

TEST_F(TvStringTest, FallsBackToNoRulesWithoutAUsableResource) {
    texts.strings.put(kRule, "TVSTRINGS|m|3");
    for (const unsigned int id : {0u, kRule, 999u}) {
        TvString text(id);
        EXPECT_EQ(text.rules(), 0) << id;
        EXPECT_TRUE(text.isValid(static_cast<CString*>(nullptr), nullptr, nullptr)) << id;
    }
    TvString text = with("TVSTRING|%1|3|||||CON", "ab");
    texts.strings.put(kRule, "nothing");
    EXPECT_FALSE(text.setToResStr(kRule));
    EXPECT_EQ(messageOf(text), "3") << "the rules stay";
}

TEST_F(TvStringTest, CopiesOutliveTheirOriginal) {
    auto original = std::make_unique<TvString>(with("TVSTRING|%1 %2 %3|3||||a|CON", "a"));
    const TvString copy = *original;
    TvString assigned(0u);
    assigned = *original;
    original.reset();
    EXPECT_EQ(messageOf(copy), "3 'a' CON");
    EXPECT_EQ(messageOf(assigned), "3 'a' CON");
}

TEST_F(TvStringTest, RemovesWhatItsSetsForbid) {
    const char* cases[][3] = {{"TVSTRING|||||[[09]]", "a1b22c", "122"},
                              {"TVSTRING||||||/\\", "/a//b\\", "ab"},
                              {"TVSTRING|||||[[09]]|5", "5a15", "1"},
                              {"TVSTRING|||||[[90]]", "12", ""}};
    for (const auto& [rule, value, kept] : cases) {
        TvString text = with(rule, value);
        text.removeInvalidChars();
        EXPECT_EQ(text.value(), kept) << rule;
    }
}

TEST_F(TvStringTest, ParsesEveryFieldOfItsResource) {
    texts.strings.put(kRule, "TVSTRING||2|many|none|ab||x||y|");
    RWCString message("?"), defaultValue, valid, invalid("?");
    int shortest = 0, longest = 0;
    CArray<RWCString> forbidden;
    EXPECT_EQ(TvStringParseResStr(kRule, &message, &defaultValue, &shortest, &longest, &valid,
                                  &invalid, &forbidden),
              2 + 4 + 16 + 64);
    EXPECT_EQ(message, "Invalid.");
    EXPECT_EQ(shortest, 2);
    EXPECT_EQ(longest, -1);
    EXPECT_EQ(defaultValue, "none");
    EXPECT_EQ(valid, "ab");
    EXPECT_TRUE(invalid.empty());
    ASSERT_EQ(forbidden.GetSize(), 2);
    EXPECT_EQ(forbidden[1], "y");

    // Longer than any fixed buffer.
    texts.strings.put(kRule, "TVSTRING|" + std::string(5000, 'm') + "||||||last");
    EXPECT_EQ(TvStringParseResStr(kRule, &message, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  static_cast<CArray<RWCString>*>(nullptr)),
              1 + 64);
    EXPECT_EQ(message.length(), 5000u);
}

TEST_F(TvStringTest, GivesTheDefaultsWhenNoFieldIsSupplied) {
    CString message("?");
    int shortest = 0;
    CArray<CString> forbidden;
    const auto parse = [&](const char* rules) {
        texts.strings.put(kRule, rules);
        forbidden.Add("kept");
        return TvStringParseResStr(kRule, &message, nullptr, &shortest, nullptr, nullptr, nullptr,
                                   &forbidden);
    };
    EXPECT_EQ(parse("no rules"), 0);
    EXPECT_EQ(shortest, 0);
    EXPECT_EQ(forbidden.GetSize(), 0) << "of a text that exists";
    EXPECT_EQ(parse("TVSTRING|"), 0);
    EXPECT_EQ(shortest, -1);
    EXPECT_EQ(message, "Invalid.");
    EXPECT_EQ(forbidden.GetSize(), 0);
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
    for (const char* bad : {"", " ", "+", "-", "+-5", "12abc", "1 2", "1.5", "0x10", "2147483648"})
        expectScans<int>(bad, false, 0);
    expectScans<unsigned char>("255", true, 255);
    expectScans<unsigned char>("256", false, 0);
    expectScans<short>("-32769", false, 0);
    expectScans<unsigned int>("-1", false, 0);
    expectScans<long>("2147483647", true, 2147483647L);
    expectScans<unsigned long>("4294967295", true, 4294967295UL);
    expectScans<double>(" 1.5e3", true, 1500);
    expectScans<double>(".5", true, 0.5);
    expectScans<float>("0.1", true, 0.1f);
    for (const char* bad : {"1,5", "inf", "nan", "1e999", "e5", "1.5."})
        expectScans<double>(bad, false, 0);
}

}  // namespace
