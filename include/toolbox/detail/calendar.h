// Arithmetic of the proleptic Gregorian calendar in the header, so that it is compiled into the
// loops that use it. Not for applications: they use TarvDate.
//
// Both conversions count from 1 March, which puts the leap day at the end of the year, and replace
// divisions by multiplications with reciprocals that are exact over the ranges named here. Whether
// a date lies before March is calculated without a branch, which unordered dates would mispredict.
#pragma once

#include <array>
#include <cstdint>

namespace toolbox::calendar {

/// Day number of 1 January of year 1.
inline constexpr std::int32_t kFirstDay = 1721426;

/// Days from 1 March of year 0 to 1 January of year 1.
inline constexpr std::uint32_t kMarchToJanuary = 306;

inline constexpr std::uint32_t kDaysIn400Years = 146097;

inline constexpr signed char kDaysInMonth[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

/// Days of a common year before each month, 1 to 12; 13 has the year's length.
inline constexpr short kDaysBeforeMonth[14] = {0,   0,   31,  59,  90,  120, 151,
                                               181, 212, 243, 273, 304, 334, 365};

[[nodiscard]] constexpr bool isLeap(int year) noexcept {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// The last year whose days all have a day number of 32 bits.
inline constexpr int kLastFullYear = 5874897;

[[nodiscard]] constexpr bool isValid(int year, int month, int day) noexcept {
    if (year < 1 || month < 1 || month > 12 || day < 1) return false;
    return day <= kDaysInMonth[month] || (month == 2 && day == 29 && isLeap(year));
}

/// What the day number of a date takes from its month.
struct MonthFacts {
    std::uint8_t length = 0;      ///< days in a common year
    std::uint8_t yearBefore = 0;  ///< 1 when the month belongs to the year that began last March
    std::int16_t start = 0;       ///< days from 1 March to the day before the month
};

/// By month; values that are no month have no days, so that one comparison rules them out.
inline constexpr auto kMonths = [] {
    std::array<MonthFacts, 256> months{};
    for (unsigned m = 1; m <= 12; ++m) {
        const bool early = m < 3;
        const int sinceMarch = kDaysBeforeMonth[m] - kDaysBeforeMonth[3] + (early ? 365 : 0);
        months[m] = {static_cast<std::uint8_t>(kDaysInMonth[m]),
                     static_cast<std::uint8_t>(early ? 1 : 0),
                     static_cast<std::int16_t>(sinceMarch - 1)};
    }
    return months;
}();

/// Day number of a valid date of a year up to kLastFullYear; 0, which no such date has, for others,
/// and for 29 February, which is not worth the time of all other days here.
[[nodiscard]] constexpr std::int32_t ordinaryDayNumber(int year, signed char month,
                                                       signed char day) noexcept {
    const MonthFacts facts = kMonths[static_cast<unsigned char>(month)];
    if (static_cast<unsigned>(day - 1) >= facts.length) return 0;
    if (static_cast<unsigned>(year) - 1 >= static_cast<unsigned>(kLastFullYear)) return 0;
    const std::uint32_t y = static_cast<std::uint32_t>(year) - facts.yearBefore;
    const std::uint32_t century = y / 100;
    const auto daysOfYears = static_cast<std::uint32_t>(std::uint64_t{y} * 1461 / 4);
    return static_cast<std::int32_t>(daysOfYears - century + century / 4 - kMarchToJanuary) +
           (facts.start + day + kFirstDay);
}

struct Date {
    std::int32_t year;
    signed char month;
    signed char day;
};

/// Days counted from 1 January of year 1 (0) that dateOf() takes: those of years 1 to 2.9 million.
inline constexpr std::uint32_t kFastDays = (1U << 30) - 1000;

[[nodiscard]] constexpr Date dateOf(std::uint32_t daysFromYear1) noexcept {
    // Quarter days: a century is 146097 of them times 1/4, a year 1461 times 1/4.
    const std::uint32_t quarters = 4 * (daysFromYear1 + kMarchToJanuary) + 3;
    const std::uint32_t century = quarters / kDaysIn400Years;
    const std::uint32_t inCentury = quarters % kDaysIn400Years | 3;
    // 2939745 is 2^32 / 1461 rounded up: the high half is the year, the low one the part of it.
    const std::uint64_t product = std::uint64_t{2939745} * inCentury;
    const auto yearOfCentury = static_cast<std::uint32_t>(product >> 32);
    const std::uint32_t dayOfYear = static_cast<std::uint32_t>(product) / 2939745 / 4;
    // 2141 is 2^16 / 30.6: the high half is the month, the low one the part of it.
    const std::uint32_t months = 2141 * dayOfYear + 197913;
    // 1 from 1 January on, the day 306.
    const std::uint32_t nextYear = (dayOfYear + 512 - 306) >> 9;
    const std::uint32_t month = (months >> 16) - 12 * nextYear;
    const std::uint32_t year = 100 * century + yearOfCentury + nextYear;
    return {static_cast<std::int32_t>(year), static_cast<signed char>(month),
            static_cast<signed char>((months & 0xFFFF) / 2141 + 1)};
}

}  // namespace toolbox::calendar
