// The parts of dates that are not inline: reading texts, today, and day numbers outside the range
// of the fast conversion.
#include <algorithm>
#include <cstring>

#include "toolbox/dates.h"
#include "toolbox/platform.h"

namespace {

using toolbox::calendar::kFirstDay;

/// The decimal integer that at most `length` characters of `text` begin with, after blanks and a
/// sign. Moves `text` past them, never past its terminator.
int takeNumber(const char*& text, int length) noexcept {
    const char* const end = std::find(text, text + length, '\0');
    const char* at = text;
    text = end;
    while (at != end && std::strchr(" \t\n\v\f\r", *at)) ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    int number = 0;
    for (; at != end && *at >= '0' && *at <= '9'; ++at) number = number * 10 + (*at - '0');
    return negative ? -number : number;
}

/// Days before a year. The quotients are cut toward zero, so before year 1 the leap years lie
/// elsewhere than the calendar has them; dates there are invalid anyway.
constexpr long long daysBeforeYear(long long year) noexcept {
    const long long past = year - 1;
    return past * 365 + past / 4 - past / 100 + past / 400;
}

}  // namespace

TarvDate::TarvDate(const char* text) noexcept {
    if (!text) return;
    year_ = takeNumber(text, 4);
    month_ = static_cast<signed char>(takeNumber(text, 2));
    day_ = static_cast<signed char>(takeNumber(text, 2));
}

TarvDate& TarvDate::initToday() noexcept {
    const toolbox::platform::LocalDate today = toolbox::platform::current().system->today();
    return *this = TarvDate(today.year, today.month, today.day);
}

// An estimate of the year with at most one correction each way: right from year 1 on, and before it
// what files written by older programs were read with.
void TarvDate::setFarDayNumber(long long dayNumber) noexcept {
    *this = TarvDate(0, 0, 0);
    if (dayNumber < INT32_MIN || dayNumber > INT32_MAX) return;
    const long long days = dayNumber - (kFirstDay - 1);
    auto year = static_cast<int>(static_cast<double>(days) / 365.2425) + 1;
    long long inYear = days - daysBeforeYear(year);
    if (inYear < 1) inYear = days - daysBeforeYear(--year);
    if (const int length = getNumDaysInYear(year); inYear > length) {
        inYear -= length;
        ++year;
    }
    year_ = year;
    const int leapDay = isLeapYear(year) && inYear > 59 ? 1 : 0;
    const auto* const table = toolbox::calendar::kDaysBeforeMonth;
    for (int month = 1; month <= 12; ++month) {
        if (inYear > table[month + 1] + leapDay) continue;
        month_ = static_cast<signed char>(month);
        day_ = static_cast<signed char>(inYear - table[month] - (month > 2 ? leapDay : 0));
        return;
    }
}

int TarvDate::farDayNumber() const noexcept {
    const long long number = daysBeforeYear(year_) + getDayOfYear() + (kFirstDay - 1);
    return static_cast<int>(asDayNumber(number));
}
