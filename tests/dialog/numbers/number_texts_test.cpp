// Reading and printing typed numbers without rules: the syntax, the types' ranges, bits that
// survive.
#include <cmath>
#include <limits>
#include <random>

#include "number_kit.h"

namespace {

using namespace toolbox::testing;

TEST(NumberTexts, TakeAPointOrACommaAndAnExponent) {
    const std::pair<const char*, double> cases[] = {
        {"12", 12},      {" 12.5 ", 12.5}, {"12,5", 12.5}, {"+.5", .5},         {"-,5", -.5},
        {"5.", 5},       {"-0", -0.0},     {"1e3", 1000},  {"1,5E-003", .0015}, {"007", 7},
        {"1,250", 1.25}, {"1.250", 1.25},  {"0e999", 0},   {"1e308", 1e308},    {"4e-324", 5e-324}};
    for (const auto& [text, value] : cases) expectTaken(TvDouble(), text, value);
    // Digits that no buffer expects, and zeros that an exponent undoes.
    expectTaken(TvDouble(), std::string(100000, '0') + "1," + std::string(100000, '3'), 4. / 3);
    expectTaken(TvLong(), "2500e-2", 25L);
    expectTaken(TvLong(), "-2147483648", -2147483647L - 1);
    expectTaken(TvULong(), "4294967295", 4294967295UL);
}

TEST(NumberTexts, TellWhatIsWrongAndWhere) {
    const Speaking english(GMSG::English);
    const std::string huge(1000000, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {" ", "A number is needed."},
        {"1e+", "\"1e+\" is not complete: a digit is missing at its end."},
        {" 0x10", "\"0x10\" is not a number: character 3, \"x\", does not belong in it."},
        {"5\240",
         "\"5\240\" is not a number: character 2, \"no-break space\", does not belong in it."},
        {std::string("1\0", 2),
         "\"1?\" is not a number: character 2, \"{NUL}\", does not belong in it."},
        {"%1 %2", "\"%1 %2\" is not a number: character 1, \"%\", does not belong in it."},
        {huge, "\"" + huge.substr(0, 40) +
                   "...\" is not a number: character 1, \"x\", does not belong in it."},
        {"1 250",
         "Digits are written without spaces or separators. Delete character 2 of \"1 250\"."},
        {"1,250,000",
         "Digits are written without spaces or separators. Delete character 6 of \"1,250,000\"."},
        {"-1e309",
         "\"-1e309\" is too small. The smallest number possible is "
         "-1.7976931348623157e+308."},
        {"1e-400", "\"1e-400\" is too close to zero. Write 0 if that is what you mean."},
        {" -12,500e2 ",
         "\"-12,500e2\" can be read as -12.500e2 or as -12500e2. Write the one that you mean."},
    };
    for (const auto& [text, why] : cases) expectRefused(TvDouble(), text, why);
    for (const char* oneReading : {"0,250", ",250", "1250,125", "1,2500", "1,25"})
        EXPECT_TRUE(scanned(TvDouble(), oneReading).taken) << oneReading;
    GMSG::language = GMSG::French;
    expectRefused(
        TvDouble(), "x",
        "\253\240x\240\273 n'est pas un nombre\240: le caract\350re 1, \253\240x\240\273, "
        "n'y a pas sa place.");
}

TEST(NumberTexts, AreNeverClippedToTheirType) {
    const Speaking english(GMSG::English);
    const auto beyond = [](const std::string& text, const char* what, const char* end) {
        return '"' + text + "\" is too " + what + " number possible is " + end + ".";
    };
    const char* const large = "large. The largest";
    const char* const small = "small. The smallest";
    for (const char* text : {"32768", "1e99999999999999999999"})
        expectRefused(TvShort(), text, beyond(text, large, "32767"));
    expectRefused(TvShort(), "-32769", beyond("-32769", small, "-32768"));
    expectRefused(TvUShort(), "-1", beyond("-1", small, "0"));
    const char* const most = sizeof(long) == 4 ? "4294967295" : "18446744073709551615";
    expectRefused(TvULong(), "99999999999999999999", beyond("99999999999999999999", large, most));
    expectRefused(TvFloat(), "1e39", beyond("1e39", large, "3.4028235e+038"));
    expectRefused(TvFloat(), "1e-46",
                  "\"1e-46\" is too close to zero. Write 0 if that is what you mean.");
    for (const char* fraction : {"2,0", "2.", "25e-1"})
        expectRefused(TvLong(), fraction,
                      "A whole number is needed; \"" + std::string(fraction) + "\" is not one.");
    expectRefused(
        TvLong(), "1,250",
        "Digits are written without spaces or separators. Delete character 2 of \"1,250\".");
}

TEST(NumberTexts, AreAsShortAsTheNumberNeeds) {
    const std::pair<double, const char*> cases[] = {
        {-0.0, "-0"},
        {0.1 + 0.2, "0.30000000000000004"},
        {1e15, "1000000000000000"},
        {1e16, "1e+016"},
        {1.5e-5, "0.000015"},
        {1.5e-6, "1.5e-006"},
        {5e-324, "5e-324"},
        {-HUGE_VAL, "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(TvDouble().print(value), text);
    EXPECT_EQ(TvFloat().print(16777216), "16777216");
}

/// Every exponent and many mantissas.
template <class Bits, class Real>
void expectRoundTrips(int count) {
    std::mt19937_64 random(13);
    const TvNumber<Real> number;
    int lost = 0;
    for (int i = 0; i < count; ++i) {
        const auto value = std::bit_cast<Real>(static_cast<Bits>(random()));
        if (!std::isfinite(value)) continue;
        Real back = 0;
        if (!number.scan(number.print(value), back, nullptr) ||
            std::bit_cast<Bits>(back) != std::bit_cast<Bits>(value))
            ++lost;
    }
    EXPECT_EQ(lost, 0);
}

TEST(NumberTexts, KeepEveryBitOfAMillionNumbers) {
    // Products of few digits that are rounded twice where they are computed in 80 bits.
    expectTaken(TvDouble(), "3661647477559228e8", 0x1.362752b030215p+78);
    expectTaken(TvDouble(), "-3.275079401519067e37", -0x1.8a392d0376b73p+124);
    expectRoundTrips<std::uint64_t, double>(1000000);
    expectRoundTrips<std::uint32_t, float>(100000);
}

TEST(NumberTexts, AreKnownWhileTheyAreTyped) {
    for (const char* text : {"", "-", "1,", "-.", "1e-", "1,250", "12 ", "1e999"})
        EXPECT_TRUE(TvDouble().couldBecome(text)) << text;
    for (const char* text : {"1x", "--", "1,2,", "1 2", "- ", "e", "1e5.", "=", "\240"})
        EXPECT_FALSE(TvDouble().couldBecome(text)) << text;
    EXPECT_FALSE(TvLong().couldBecome("1,"));
    EXPECT_TRUE(TvUShort().couldBecome(" -")) << "the range does not count";
    TvDouble formula;
    formula.allowFormula(true);
    EXPECT_TRUE(formula.couldBecome(" =(1+"));
    EXPECT_FALSE(formula.couldBecome("=1\n"));
}

}  // namespace
