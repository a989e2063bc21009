// The rules of typed numbers: reading them from resources, judging by them, saying so.
#include <climits>
#include <cmath>
#include <limits>
#include <tuple>

#include "number_kit.h"
#include "support/text_fakes.h"
#include "toolbox/diagnostics.h"

namespace {

using namespace toolbox::testing;

constexpr unsigned int kRule = 40;

std::vector<std::string> traces;

class NumberRules : public ::testing::Test {
  protected:
    NumberRules() {
        traces.clear();
        toolbox::setTraceSink([](unsigned long, const char* text) { traces.emplace_back(text); });
        CTvTrace::SetCurrentTraceCategoryEnabled(4);
        for (const auto& [id, text] :
             {std::pair{1309u, "at least %1"}, std::pair{1310u, "at most %1"},
              std::pair{1311u, "between %1 and %2"}, std::pair{1312u, "not %1"}})
            texts_.strings.put(id, text);
    }
    ~NumberRules() override {
        CTvTrace::SetCurrentTraceCategoryEnabled(0);
        toolbox::setTraceSink(nullptr);
    }

    template <class Number = TvDouble>
    Number with(const std::string& rule) {
        texts_.strings.put(kRule, rule);
        return Number(kRule);
    }

    FakedTexts texts_;
};

TEST_F(NumberRules, JudgeAndSayWhatIsAllowed) {
    const struct {
        const char* rule;
        double value;
        int broken;
        const char* message;
    } cases[] = {
        {"TVDOUBLE||1|10", 1, 0, ""},
        {"TVDOUBLE||1|10", 0.5, 4, "between 1 mm and 10 mm"},
        {"TVDOUBLE||1|10||8,2,R", 11, 8, "between 1.00 mm and 10.00 mm"},
        {"TVDOUBLE||1", -1, 4, "at least 1 mm"},
        {"TVDOUBLE||1|10", std::numeric_limits<double>::quiet_NaN(), 12, "between 1 mm and 10 mm"},
        // The format does not show this limit as it is.
        {"TVDOUBLE||0.125|10||6,1,L", 0, 4, "between 0.125 mm and 10.0 mm"},
        {"TVDOUBLE|%2, %1 (%3, %4)%5||9|||0|7|8|0", 0, 64, "7 mm, 9 mm (8 mm, 0 mm)%5"},
        {"TVDOUBLE|m|2|||||1", 1, 68, "m"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rule);
        TvDouble number = with(c.rule);
        number.setUnits("mm");
        number = c.value;
        CString message;
        char broken = 127;
        EXPECT_EQ(number.isValid(&message, nullptr, &broken), c.broken == 0);
        EXPECT_EQ(broken, c.broken);
        EXPECT_EQ(message, c.message);
        if (!std::isfinite(c.value)) continue;
        double value = 5;
        CString why;
        EXPECT_EQ(number.scan(TvDouble().print(c.value), value, &why), c.broken == 0);
        EXPECT_EQ(why, c.message);
        EXPECT_EQ(value, c.broken ? 5 : c.value);
    }
}

TEST_F(NumberRules, ComeFromTheTextOfTheirType) {
    auto number = with<TvShort>("TVSHORT|m|-5|5|3|6,0,L||0||1");
    EXPECT_EQ(number.rules(), 4 + 8 + 64 + 128);
    EXPECT_EQ(number.defaultValue(), 3);
    EXPECT_EQ(number.value(), 0) << "the default is not applied";
    EXPECT_EQ(number.forbiddenValues(), (std::vector<short>{0, 1}));
    EXPECT_EQ(number.print(-5), "-5    ");
    EXPECT_EQ(number = 4, 4);
    EXPECT_TRUE(traces.empty());

    // Refused as a whole: nothing changes.
    texts_.strings.put(kRule, "TVUSHORT||1");
    EXPECT_FALSE(number.setToResStr(kRule));
    EXPECT_FALSE(number.setToResStr(kRule + 1));
    EXPECT_EQ(traces.size(), 2u);
    EXPECT_EQ(number.rules(), 4 + 8 + 64 + 128);

    number.setToDefaults();
    EXPECT_EQ(number.rules(), 0);
    EXPECT_EQ(number.minimum(), SHRT_MIN);
    EXPECT_EQ(number.value(), 4);
}

TEST_F(NumberRules, LeaveOutWhatCannotBeReadAndTellTheTrace) {
    const struct {
        const char* rule;
        int rules;
        const char* trace;
    } cases[] = {{"TVSHORT||x|9", 8, "number rule 40: minimum \"x\""},
                 {"TVSHORT||5|1||||7", 64, "number rule 40: minimum above the maximum \"1\""},
                 {"TVSHORT||1|||0,0,R", 4, "number rule 40: format \"0,0,R\""},
                 {"TVSHORT||1|||10,2,R,", 4, "number rule 40: format \"10,2,R,\""},
                 {"TVSHORT|||||||1|x||", 64, "number rule 40: forbidden value \"x\""},
                 {"tvshort||1", 0, "number rule 40: no text with the tag \"TVSHORT\""}};
    for (const auto& c : cases) {
        traces.clear();
        EXPECT_EQ(with<TvShort>(c.rule).rules(), c.rules) << c.rule;
        EXPECT_EQ(traces, std::vector<std::string>{c.trace});
    }
    // One rule means the same in every language.
    EXPECT_EQ(with("TVDOUBLE||1,250|9,5").rules(), 8);
}

TEST_F(NumberRules, ShowNumbersInTheirFormat) {
    const std::tuple<const char*, double, const char*> cases[] = {
        {"10,2,L", -3, "-3.00     "},
        {"10", 0.125, "     0.125"},
        {"8,2", 0.125, "    0.12"},
        // Wider than the format: the shorter of both, and never cut.
        {"8,2", 12345678.125, "12345678.12"},
        {"8,2", 1e300, "  1e+300"}};
    for (const auto& [format, value, text] : cases)
        EXPECT_EQ(with("TVDOUBLE||||| " + std::string(format)).print(value), text);
    TvDouble number;
    EXPECT_TRUE(number.setFormat(80, 79, Left));
    EXPECT_FALSE(number.setFormat(81, 2) || number.setFormat(4, 4) || number.setLimits(2, 1));
    EXPECT_EQ(number.rules(), TvDouble::HasFormat);
}

}  // namespace
