#include <gtest/gtest.h>

#include <utility>

#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::FakedTexts;

TEST(CharSet, ReadsIntervalsAndCharacters) {
    struct Case {
        const char* definition;
        bool valid;
        const char* characters;
    };
    const Case cases[] = {
        {"x[[ac]]ya", true, "xabcya"},
        {"[a", true, "[a"},
        {"[[[[]]", true, "["},
        {"xy[[za]]", false, "xy"},
        {"x[[a", false, "x"},
        {"[[", false, ""},
        {"[[ac}]x", false, ""},
        {"[[\200\202]]", true, "\200\201\202"},
        // The ends are compared as signed bytes: from -1 up to 1, but not from 'a' to -32.
        {"[[\377\001]]", true, nullptr},
        {"[[a\340]]", false, ""},
    };
    for (const Case& c : cases) {
        const TvCharSet set{CString(c.definition)};
        EXPECT_EQ(set.isValid(), c.valid) << c.definition;
        const CString expected =
            c.characters ? CString(c.characters) : CString(std::string("\377\0\001", 3));
        EXPECT_EQ(set.getDetailedCharsSet(), expected) << c.definition;
        for (const char some : {'a', 'x', '[', '\377', '\0'})
            EXPECT_EQ(set.charIsInSet(some), expected.view().find(some) != std::string_view::npos);
    }
    const TvCharSet digits{CString("[[09]]")};
    for (const char* all : {"", "705"}) EXPECT_TRUE(digits.allStringCharsAreInSet(all));
    for (const char* notAll : {"7.5", "x"}) EXPECT_FALSE(digits.allStringCharsAreInSet(notAll));
    for (const char* one : {"705", "7.5"}) EXPECT_TRUE(digits.atLeastOneStringCharIsInSet(one));
    for (const char* none : {"", "x"}) EXPECT_FALSE(digits.atLeastOneStringCharIsInSet(none));
}

TEST(CharSet, IsRenderedForTheUser) {
    FakedTexts texts;
    texts.strings.put(1095, "et");
    texts.strings.put(1096, "ou");
    texts.strings.put(1097, "jusqu'\340");
    struct Case {
        const char* definition;
        bool alternative;
        const char* words;
    };
    const Case cases[] = {
        {"", false, ""},
        {"a", false, "'a'"},
        {"ab", false, "'a' et 'b'"},
        {"abc", true, "'a', 'b' ou 'c'"},
        {"[[az]]", false, "'a' jusqu'\340 'z'"},
        {"[[aa]]\t[[09]]", true, "'a', '{horizontal tab}' ou '0' jusqu'\340 '9'"},
        {"ab[[za]]c", false, "'a' et 'b'"},
        {"a,", false, "'a', ' et'"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TvCharSet(CString(c.definition)).getFriendlyCharsSet(c.alternative), c.words)
            << c.definition;
}

TEST(CharSet, NamesWhatCannotBeSeen) {
    const std::pair<int, const char*> cases[] = {
        {0, "{NUL}"},  {7, "{bell (alert)}"}, {14, "{SO}"}, {15, "{ST}"},  {16, "{SLE}"},
        {17, "{CSL}"}, {26, "{STB}"},         {31, "{US}"}, {127, "\177"}, {255, "{ascii 255}"}};
    for (const auto& [code, name] : cases)
        EXPECT_EQ(TvCharSet::getVisibleChar(static_cast<char>(code)), name) << code;
}

}  // namespace
