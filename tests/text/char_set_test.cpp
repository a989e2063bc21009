#include <gtest/gtest.h>

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
        {"", true, ""},
        {"ba", true, "ba"},
        {"[[09]]", true, "0123456789"},
        {"x[[ac]]ya", true, "xabcya"},
        {"[a", true, "[a"},
        {"[", true, "["},
        {"]]", true, "]]"},
        {"[[[[]]", true, "["},
        {"[[za]]", false, ""},
        {"x[[a", false, "x"},
        {"xy[[az]", false, "xy"},
        {"[[", false, ""},
        {"a[[0", false, "a"},
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
        for (const char character : {'a', '0', 'x', '[', '\377', '\0'}) {
            EXPECT_EQ(set.charIsInSet(character),
                      expected.view().find(character) != std::string_view::npos)
                << c.definition << " " << character;
        }
    }
}

TEST(CharSet, ComparesWholeTexts) {
    struct Case {
        const char* text;
        bool all;
        bool some;
    };
    const Case cases[] = {
        {"", true, false}, {"705", true, true}, {"7.5", false, true}, {"abc", false, false}};
    const TvCharSet digits{CString("[[09]]")};
    for (const Case& c : cases) {
        EXPECT_EQ(digits.allStringCharsAreInSet(c.text), c.all) << c.text;
        EXPECT_EQ(digits.atLeastOneStringCharIsInSet(c.text), c.some) << c.text;
    }
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
    struct Case {
        int code;
        const char* name;
    };
    const Case cases[] = {{0, "{NUL}"},        {7, "{bell (alert)}"}, {13, "{carriage return}"},
                          {14, "{SO}"},        {15, "{ST}"},          {16, "{SLE}"},
                          {17, "{CSL}"},       {26, "{STB}"},         {31, "{US}"},
                          {32, " "},           {127, "\177"},         {254, "\376"},
                          {255, "{ascii 255}"}};
    for (const Case& c : cases)
        EXPECT_EQ(TvCharSet::getVisibleChar(static_cast<char>(c.code)), c.name) << c.code;
}

}  // namespace
