// What fields let their user type and paste, and how what is pasted is cut or refused.
#include "dialog/controls/edit_rule.h"

#include <gtest/gtest.h>

#include "support/text_fakes.h"
#include "toolbox/numbers.h"
#include "toolbox/text.h"

namespace {

using toolbox::controls::EditRule;
using toolbox::controls::Insertion;

constexpr const char* kRefused = "<refused>";
constexpr std::size_t kRoom = 20;

template <class Number>
EditRule ruleOf(Number number) {
    Number plain = number;
    plain.allowFormula(false);
    toolbox::controls::Allows inFormula;
    if (number.allowsFormula()) inFormula = [=](char c) { return number.allows(c); };
    return EditRule::ofNumber([=](char c) { return plain.allows(c); }, inFormula);
}

std::string pasted(const EditRule& rule, std::string_view text,
                   const Insertion& where = {"", kRoom}, std::string_view units = {}) {
    return rule.pasted(text, where, units).value_or(kRefused);
}

TEST(EditRule, LetsTypeTheCharactersOfItsNumber) {
    TvDouble formula;
    formula.allowFormula(true);
    const struct {
        EditRule rule;
        const char* before;
        const char* taken;
        const char* refused;
    } cases[] = {{ruleOf(TvDouble()), "", "09-+.,eE ", "x=\xA0'/*:"},
                 {ruleOf(TvLong()), "", "09-+", "x="},
                 {ruleOf(formula), "", "1=.", "*(x"},
                 {ruleOf(formula), "1", "1", "=*(x"},
                 {ruleOf(formula), "=3", "*(/s", "\xA7"}};
    for (const auto& c : cases) {
        for (const char* at = c.taken; *at; ++at)
            EXPECT_TRUE(c.rule.mayType(c.before, *at)) << c.before << *at;
        for (const char* at = c.refused; *at; ++at)
            EXPECT_FALSE(c.rule.mayType(c.before, *at)) << c.before << *at;
    }
}

TEST(EditRule, TakesAPastedNumberWholeOrNotAtAll) {
    TvDouble formula;
    formula.allowFormula(true);
    const EditRule number = ruleOf(TvDouble());
    const struct {
        const char* text;
        const char* units;
        const char* wanted;
    } cases[] = {{"12.5", "", "12.5"},       {" 12,5\r\n", "", "12,5"},
                 {"12.5 mm", "mm", "12.5"},  {"mm", "mm", kRefused},
                 {"12abc", "", kRefused},     // 12 would be another number
                 {"1\240234", "", kRefused},  // and so would 1234
                 {"12\r\n13", "", kRefused}, {"123456789012345678901", "", kRefused}};
    for (const auto& c : cases)
        EXPECT_EQ(pasted(number, c.text, {"", kRoom}, c.units), c.wanted) << c.text;
    EXPECT_EQ(pasted(ruleOf(formula), "=3*(1+\xA7)"), kRefused);
    EXPECT_EQ(pasted(ruleOf(formula), "*2", {"=3", kRoom}), "*2");
    EXPECT_EQ(pasted(ruleOf(formula), "*2", {"3", kRoom}), kRefused);
}

TEST(EditRule, LeavesOutWhatATextsRuleForbids) {
    toolbox::testing::FakedTexts texts;
    texts.strings.put(7, "TVSTRING||||| [[az]][[AZ]]\351||");
    const EditRule letters = EditRule::ofText(TvString(7));
    const EditRule any;
    EXPECT_EQ(pasted(letters, "Beam 12-\351t\350"), "Beam \351t");
    EXPECT_EQ(pasted(any, "a,\1b\x7F\r\ntwo"), "a,b");
    EXPECT_EQ(pasted(any, std::string(1'000'000, 'x')).size(), kRoom);
    EXPECT_EQ(pasted(any, "one\r\n\ttwo", {"", kRoom, true}), "one\r\n\ttwo");
    EXPECT_EQ(pasted(any, "one\r\ntwo", {"", 4, true}), "one") << "no half of a line end";
    for (int c = 1; c < 256; ++c)  // any byte
        EXPECT_EQ(any.mayType("", static_cast<char>(c)), c >= ' ' && c != 0x7F) << c;
}

}  // namespace
