// Texts of fields without windows: dates, formatted values, what can be stored.
#include "dialog/exchange/field_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

#include "support/speaking.h"

namespace {

using namespace toolbox::dialog;

using toolbox::testing::Speaking;

std::optional<TarvDate> dateIn(std::string_view text, bool mayBeEmpty = false) {
    TarvDate date(1999, 9, 9);
    CString why;
    const bool taken = scanDate(text, mayBeEmpty, date, &why);
    EXPECT_EQ(taken, why.IsEmpty()) << text;
    if (!taken) {
        EXPECT_EQ(date, TarvDate(1999, 9, 9)) << text;
    }
    return taken ? std::optional(date) : std::nullopt;
}

TEST(FieldDates, HaveTheLanguagesOrderOfDayAndMonth) {
    struct Case {
        const char *text, *french, *english;  // read as; null: refused
    };
    const Case cases[] = {{"01/08/2026", "2026-08-01", "2026-01-08"},
                          {"1-8-2026", "2026-08-01", "2026-01-08"},
                          {" 1 . 8 . 2026 ", "2026-08-01", "2026-01-08"},
                          {"2026-08-01", "2026-08-01", "2026-08-01"},
                          {"31/12/2026", "2026-12-31", nullptr},
                          {"12/31/2026", nullptr, "2026-12-31"},
                          {"29/2/2024", "2024-02-29", nullptr},
                          {"29/2/2023", nullptr, nullptr},
                          {"1/1/0001", "0001-01-01", "0001-01-01"},
                          {"1/8/26", nullptr, nullptr},  // which century?
                          {"1//2026", nullptr, nullptr},
                          {"1/-8/2026", nullptr, nullptr},
                          {"99999999999/1/1", nullptr, nullptr},
                          {"5874899-1-1", nullptr, nullptr},  // no day number
                          {"a/8/2026", nullptr, nullptr},
                          {"01/08/2026x", nullptr, nullptr},
                          {"", nullptr, nullptr}};
    for (const Case& c : cases) {
        for (const auto language : {GMSG::French, GMSG::English}) {
            const Speaking speaking(language);
            const char* const expected = language == GMSG::French ? c.french : c.english;
            const std::optional<TarvDate> read = dateIn(c.text);
            EXPECT_EQ(read ? sortedDateText(*read).str() : "", expected ? expected : "")
                << c.text << (language == GMSG::French ? " French" : " English");
        }
    }
    EXPECT_EQ(dateIn("  ", true), TarvDate(0, 0, 0));
}

TEST(FieldDates, ReadBackWhatIsShown) {
    for (const auto language : {GMSG::French, GMSG::English}) {
        const Speaking speaking(language);
        for (long day = 1721426; day < 2500000; day += 373)
            EXPECT_EQ(dateIn(dateText(TarvDate(day)).view()), TarvDate(day)) << day;
    }
    EXPECT_EQ(dateText(TarvDate(2026, 2, 30)), "");
}

TEST(FieldTexts, AreStoredWholeOrRefused) {
    CString why;
    EXPECT_TRUE(canStore("abc", 3, false, &why));
    EXPECT_FALSE(canStore("abcd", 3, false, &why));
    EXPECT_FALSE(why.IsEmpty());
    EXPECT_TRUE(canStore("\200\237 \377\240" + std::string(1 << 20, 'x'), 0, false, &why));
    for (char code = 0; code < 32; ++code) {
        const std::string text = {'a', code};
        const bool isLine = code == '\t' || code == '\r' || code == '\n';
        EXPECT_FALSE(canStore(text, 0, false, &why)) << +code;
        EXPECT_EQ(canStore(text, 0, true, &why), isLine) << +code;
    }
}

RealFormatedValue real(double value, int width, int decimals) {
    RealFormatedValue formatted;
    formatted.setFormat(width, decimals, Right);
    formatted = value;
    return formatted;
}

TEST(FieldValues, AreShownByTheirFormatOrWhole) {
    RealFormatedValue third = real(1. / 3, 10, 2);
    EXPECT_EQ(valueText(third, "kN"), "0.33 kN");
    RealFormatedValue wide = real(123456789.125, 6, 2);  // its column would cut the exponent
    EXPECT_EQ(valueText(wide, ""), "123456789.125");
    StringFormatedValue text;
    text.setFormat(5, Right);
    text = RWCString("longer than that");
    EXPECT_EQ(valueText(text, "mm"), "longer than that");
    EXPECT_EQ(valueLimit(text), 16);
}

TEST(FieldValues, TakeNumbersOfTheirKindOnlyAndGiveTheirBitsBack) {
    constexpr double kTiny = std::numeric_limits<double>::denorm_min();
    RealFormatedValue value = real(kTiny, 10, 2);
    const KeptValue kept(value);
    CString why;
    EXPECT_TRUE(scanValue("2.5 kN", "kN", value, &why));
    for (const char* wrong : {"2.5 mm", ""}) EXPECT_FALSE(scanValue(wrong, "kN", value, &why));
    EXPECT_FALSE(why.IsEmpty());
    EXPECT_EQ(value.getValue(), 2.5);
    kept.restore(value);
    EXPECT_EQ(value.getValue(), kTiny);

    NumberFormatedValue integer;
    EXPECT_TRUE(scanValue("2147483647", "", integer, &why));
    for (const char* wrong : {"2147483648", "1.5"})
        EXPECT_FALSE(scanValue(wrong, "", integer, &why));
    EXPECT_EQ(integer.getValue(), std::numeric_limits<int>::max());

    StringFormatedValue text;
    text.setFormat(5, Left);
    EXPECT_TRUE(scanValue("12345", "", text, &why));
    EXPECT_FALSE(scanValue("123456", "", text, &why));
    EXPECT_EQ(text.getValue(), "12345");
}

}  // namespace
