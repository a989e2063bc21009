// Texts of fields without windows: dates, formatted values, what can be stored.
#include "dialog/exchange/field_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

#include "toolbox/messages.h"

namespace {

using namespace toolbox::dialog;

struct Speaking {
    explicit Speaking(GMSG::Language language) { GMSG::language = language; }
    ~Speaking() { GMSG::language = GMSG::French; }
};

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
                          {"1 8 2026", "2026-08-01", "2026-01-08"},
                          {"2026-08-01", "2026-08-01", "2026-08-01"},
                          {"2026 8 1", "2026-08-01", "2026-08-01"},
                          {"31/12/2026", "2026-12-31", nullptr},
                          {"12/31/2026", nullptr, "2026-12-31"},
                          {"29/2/2024", "2024-02-29", nullptr},
                          {"29/2/2023", nullptr, nullptr},
                          {"2/29/2023", nullptr, nullptr},
                          {"1/1/0001", "0001-01-01", "0001-01-01"},
                          {"1/1/0000", nullptr, nullptr},
                          {"1/8/26", nullptr, nullptr},  // which century?
                          {"1/8", nullptr, nullptr},
                          {"1/8/2026/", nullptr, nullptr},
                          {"1//2026", nullptr, nullptr},
                          {"/8/2026", nullptr, nullptr},
                          {"1/-8/2026", nullptr, nullptr},
                          {"-1/8/2026", nullptr, nullptr},
                          {"001/8/2026", "2026-08-01", "2026-01-08"},
                          {"99999999999/1/1", nullptr, nullptr},
                          {"5874899-1-1", nullptr, nullptr},  // no day number
                          {"a/8/2026", nullptr, nullptr},
                          {"1er/8/2026", nullptr, nullptr},
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
        EXPECT_EQ(dateIn(dateText(TarvDate(12345, 6, 7)).view()), TarvDate(12345, 6, 7));
        EXPECT_EQ(dateText(TarvDate(2026, 2, 30)), "");
    }
}

TEST(FieldTexts, AreStoredWholeOrRefused) {
    const auto stores = [](std::string_view text, int limit, bool severalLines) {
        CString why;
        const bool can = canStore(text, limit, severalLines, &why);
        EXPECT_EQ(can, why.IsEmpty());
        return can;
    };
    EXPECT_TRUE(stores("abc", 3, false));
    EXPECT_FALSE(stores("abcd", 3, false));
    EXPECT_TRUE(stores(std::string(1 << 20, 'x'), 0, false));
    EXPECT_TRUE(stores("\200\237 \377\240", 0, false));
    for (int code = 0; code < 32; ++code) {
        const std::string text = {'a', static_cast<char>(code)};
        const bool isLine = code == '\t' || code == '\r' || code == '\n';
        EXPECT_FALSE(stores(text, 0, false)) << code;
        EXPECT_EQ(stores(text, 0, true), isLine) << code;
    }
    EXPECT_FALSE(stores("\177", 0, true));
}

TEST(FieldTexts, LoseTheirUnits) {
    EXPECT_EQ(withoutUnits(" 12 mm ", "mm"), "12");
    EXPECT_EQ(withoutUnits("12mm", "mm"), "12");
    EXPECT_EQ(withoutUnits("12 m", "mm"), "12 m");
    EXPECT_EQ(withoutUnits("mm", "mm"), "");
    EXPECT_EQ(withoutUnits(" 12 ", ""), " 12 ");
}

RealFormatedValue real(double value, int width, int decimals) {
    RealFormatedValue formatted;
    formatted.setFormat(width, decimals, Right);
    formatted = value;
    return formatted;
}

TEST(FieldValues, AreShownByTheirFormatOrWhole) {
    RealFormatedValue third = real(1. / 3, 10, 2);
    EXPECT_EQ(valueText(third, ""), "0.33");
    EXPECT_EQ(valueText(third, "kN"), "0.33 kN");
    RealFormatedValue wide = real(123456789.125, 6, 2);  // its column would cut the exponent
    EXPECT_EQ(valueText(wide, ""), "123456789.125");
    RealFormatedValue unset;
    unset = 0.1;
    EXPECT_EQ(valueText(unset, ""), "0.1");
    NumberFormatedValue integer;
    integer.setFormat(4, Left);
    integer = -123456;
    EXPECT_EQ(valueText(integer, "mm"), "-123456 mm");
    StringFormatedValue text;
    text.setFormat(5, Right);
    text = RWCString("longer than that");
    EXPECT_EQ(valueText(text, "mm"), "longer than that");
    EXPECT_EQ(valueLimit(text), 16);
    NoFormatedValue none;
    EXPECT_EQ(valueText(none, "mm"), "");
}

TEST(FieldValues, TakeNumbersOfTheirKindOnly) {
    RealFormatedValue value = real(1, 10, 2);
    CString why;
    EXPECT_TRUE(scanValue("2.5 kN", "kN", value, &why));
    EXPECT_EQ(value.getValue(), 2.5);
    EXPECT_FALSE(scanValue("2.5 mm", "kN", value, &why));
    EXPECT_FALSE(why.IsEmpty());
    EXPECT_FALSE(scanValue("", "kN", value, &why));
    EXPECT_EQ(value.getValue(), 2.5);

    NumberFormatedValue integer;
    EXPECT_TRUE(scanValue("2147483647", "", integer, &why));
    EXPECT_FALSE(scanValue("2147483648", "", integer, &why));
    EXPECT_FALSE(scanValue("1.5", "", integer, &why));
    EXPECT_EQ(integer.getValue(), std::numeric_limits<int>::max());

    StringFormatedValue text;
    text.setFormat(5, Left);
    EXPECT_TRUE(scanValue("12345", "", text, &why));
    EXPECT_FALSE(scanValue("123456", "", text, &why));
    EXPECT_EQ(text.getValue(), "12345");
}

TEST(FieldValues, AreGivenBackWithTheirBits) {
    RealFormatedValue value = real(std::numeric_limits<double>::denorm_min(), 10, 2);
    const KeptValue kept(value);
    value = 7.0;
    kept.restore(value);
    EXPECT_EQ(value.getValue(), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(value.getPrecision(), 2);
}

}  // namespace
