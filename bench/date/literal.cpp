#include "literal.h"

namespace literal {
namespace {

constexpr int kTable[14] = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr long kDayZero = 1721425;

bool isLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

long daysBefore(long year) {
    return (year - 1) * 365 + (year - 1) / 4 - (year - 1) / 100 + (year - 1) / 400;
}

}  // namespace

Date dateOf(long dayNumber) {
    int year = static_cast<int>(static_cast<double>(dayNumber - kDayZero) / 365.2425) + 1;
    long day = dayNumber - kDayZero - daysBefore(year);
    if (day < 1) day = dayNumber - kDayZero - daysBefore(--year);
    if (const int length = isLeap(year) ? 366 : 365; day > length) {
        ++year;
        day -= length;
    }
    const int leap = isLeap(year) && day > 59 ? 1 : 0;
    for (int m = 2; m <= 13; ++m) {
        if (day > kTable[m] + leap) continue;
        return {year, m - 1, static_cast<int>(day - kTable[m - 1] - (m > 3 ? leap : 0))};
    }
    return {year, 0, 0};
}

long dayNumber(const Date& date) {
    const int leap = isLeap(date.year) && date.month > 2 ? 1 : 0;
    return kTable[date.month] + date.day + leap + daysBefore(date.year) + kDayZero;
}

}  // namespace literal
