#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

#include "toolbox/dates.h"

void PrintTo(const TarvDate& date, std::ostream* out) {
    *out << date.getYear() << '-' << date.getMonth() << '-' << date.getDay();
}

namespace {

TEST(TarvDate, ConvertsEveryDayOfTheYears1To9999) {
    using namespace std::chrono;
    const sys_days first{year{1} / 1 / 1};
    for (sys_days day = first; day < sys_days{year{10000} / 1 / 1}; day += days{1}) {
        const year_month_day expected{day};
        const auto number = static_cast<long>((day - first).count()) + 1721426;
        const TarvDate date(number);
        ASSERT_EQ(date.getYear(), static_cast<int>(expected.year())) << number;
        ASSERT_EQ(date.getMonth(), static_cast<int>(unsigned{expected.month()})) << number;
        ASSERT_EQ(date.getDay(), static_cast<int>(unsigned{expected.day()})) << number;
        ASSERT_EQ(static_cast<long>(date), number);
        ASSERT_EQ(static_cast<unsigned>(date.getDayOfWeek()), weekday{day}.c_encoding());
    }
}

TEST(TarvDate, ConvertsDaysFarFromToday) {
    const std::pair<long, TarvDate> cases[] = {
        {1721425, {0, 12, 30}},
        {1721060, {0, 1, 0}},
        {1721059, {-1, 12, 30}},
        {2147483647, {5874898, 6, 3}},
    };
    for (const auto& [number, date] : cases) {
        EXPECT_EQ(TarvDate(number), date) << number;
        EXPECT_EQ(static_cast<long>(date), date.isValid() ? number : -1);
    }
}

TEST(TarvDate, IsInvalidWhereNoDayIsNamed) {
    for (const TarvDate& date : {TarvDate(1900, 2, 29), TarvDate(0, 1, 1), TarvDate(2001, 13, 1),
                                 TarvDate(2001, 1, 0), TarvDate(INT_MIN, 3, 1)}) {
        SCOPED_TRACE(testing::PrintToString(date));
        EXPECT_FALSE(date.isValid());
        EXPECT_EQ(static_cast<long>(date), -1);
    }
    TarvDate date(2000, 2, 29);
    EXPECT_EQ(date.setYear(2001), 0);
    EXPECT_EQ(date, TarvDate(2001, 2, 29)) << "kept";
    EXPECT_EQ(date.setMonth(3), 1);
}

TEST(TarvDate, ReadsTextAsFarAsItGoes) {
    const std::pair<const char*, TarvDate> cases[] = {
        {"20010430", {2001, 4, 30}}, {"20010000", {2001, 0, 0}}, {"20010430123", {2001, 4, 30}},
        {" -12+3 4", {-12, 3, 4}},   {"2001043", {2001, 4, 3}},  {"", {0, 0, 0}},
        {"20a1x1 9", {20, 0, 9}},    {nullptr, {0, 0, 0}},
    };
    for (const auto& [text, date] : cases)
        EXPECT_EQ(TarvDate(text), date) << (text ? text : "(null)");
}

TEST(TarvDate, CalculatesInDays) {
    const TarvDate lastDay(1999, 12, 31);
    const TarvDate newYear(2000, 1, 1);
    EXPECT_EQ(lastDay + 1, newYear);
    EXPECT_EQ(newYear - lastDay, 1L);
    EXPECT_EQ(TarvDate(2001, 1, 1) - 1721426 * 2L, 2451911 - 3442852);
    // There is no date for a result out of range.
    for (const TarvDate& none : {newYear + LONG_MAX, newYear + INT_MAX, TarvDate(2147483647L) + 1})
        EXPECT_EQ(none, TarvDate(0, 0, 0));
    for (const TarvDate& none : {newYear + INT_MIN, newYear + LONG_MIN, TarvDate(LONG_MIN)})
        EXPECT_FALSE(none.isValid());
    EXPECT_EQ(newYear - INT_MIN, -1);
}

}  // namespace
