// Calendar dates.
//
// TarvDate is a date of the proleptic Gregorian calendar. It converts to and from a day number, the
// count of days in which 1 January of year 1 is 1721426 (the Julian day number); files store day
// numbers. A date may hold any three values; isValid() says whether they name a day, and an
// invalid date has the day number -1. TarvDateString adds the names of the months in English and
// French.
//
// Day numbers are 32-bit on every system: the last one is 2147483647, in year 5874898. Both
// conversions are inline, so that loops over many dates cost no calls.
#pragma once

#include "toolbox/detail/calendar.h"
#include "toolbox/export.h"

/// A plain value: copied freely, never allocates, never fails. Years count from 1.
class TarvDate {
  public:
    /// Days of the week; weeks begin with Sunday.
    enum DayOfWeek : int { Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };

    /// Today, from the local clock.
    TarvDate() noexcept { initToday(); }

    /// The date of a day number. Numbers of days before year 1 give an invalid date; a number that
    /// does not fit 32 bits gives year, month and day 0.
    constexpr TarvDate(long dayNumber) noexcept { setDayNumber(dayNumber); }
    constexpr TarvDate(int dayNumber) noexcept { setDayNumber(dayNumber); }

    /// Stores the values without a check; month and day are kept in 8 bits.
    constexpr TarvDate(int year, int month, int day) noexcept
        : year_(year),
          month_(static_cast<signed char>(month)),
          day_(static_cast<signed char>(day)) {}

    /// Eight digits: year, month, day ("20010430"). Each part is read as a decimal integer after
    /// blanks and a sign, up to the first character that is not a digit; a part without digits is
    /// 0. No check is made. A shorter text lacks its last parts, null is the empty text.
    TB_API TarvDate(const char* text) noexcept;

    /// Makes this date today, from the local clock.
    TB_API TarvDate& initToday() noexcept;

    /// 1 for a leap year of the Gregorian calendar, else 0.
    [[nodiscard]] static constexpr int isLeapYear(int year) noexcept {
        return toolbox::calendar::isLeap(year);
    }
    /// Days of a month; -1 unless the month is 1 to 12 and the year 0 or more.
    [[nodiscard]] static constexpr int getNumDaysInMonth(int year, int month) noexcept;
    /// 366 or 365, for any year.
    [[nodiscard]] static constexpr int getNumDaysInYear(int year) noexcept {
        return isLeapYear(year) ? 366 : 365;
    }

    // The same for this date's own year and month.
    [[nodiscard]] constexpr int isLeapYear() const noexcept { return isLeapYear(year_); }
    [[nodiscard]] constexpr int getNumDaysInMonth() const noexcept {
        return getNumDaysInMonth(year_, month_);
    }
    [[nodiscard]] constexpr int getNumDaysInYear() const noexcept {
        return getNumDaysInYear(year_);
    }

    // The values as they are stored, valid or not.
    [[nodiscard]] constexpr int getYear() const noexcept { return year_; }
    [[nodiscard]] constexpr int getMonth() const noexcept { return month_; }
    [[nodiscard]] constexpr int getDay() const noexcept { return day_; }

    // Each stores the value, whatever it is, and returns isValid() of the result: a date that is
    // changed part by part may be invalid on the way.
    constexpr int setYear(int year) noexcept;
    constexpr int setMonth(int month) noexcept;
    constexpr int setDay(int day) noexcept;

    /// 1 when the values name a day: year 1 or more, month 1 to 12, day within its month; else 0.
    [[nodiscard]] constexpr int isValid() const noexcept {
        return toolbox::calendar::isValid(year_, month_, day_);
    }

    /// 1 to 366; -1 for an invalid date.
    [[nodiscard]] constexpr int getDayOfYear() const noexcept;
    /// Sunday for an invalid date.
    [[nodiscard]] constexpr DayOfWeek getDayOfWeek() const noexcept {
        return static_cast<DayOfWeek>((dayNumber() + 1LL) % 7);
    }

    /// The day number; -1 for an invalid date and for one past the last day number.
    constexpr operator long() const noexcept { return dayNumber(); }

    /// The date `days` days later.
    [[nodiscard]] constexpr TarvDate operator+(long days) const noexcept { return later(days); }
    [[nodiscard]] constexpr TarvDate operator+(int days) const noexcept { return later(days); }

    /// Days from the other date to this one.
    [[nodiscard]] constexpr long operator-(const TarvDate& other) const noexcept {
        return asDayNumber(static_cast<long long>(dayNumber()) - other.dayNumber());
    }
    /// The day number `days` days earlier: a number, not a date. No date is made on the way,
    /// so it may lie before year 1. A result that does not fit 32 bits is -1.
    [[nodiscard]] constexpr long operator-(long days) const noexcept { return earlier(days); }
    [[nodiscard]] constexpr long operator-(int days) const noexcept { return earlier(days); }

    // Comparisons go by year, month and day as they stand, valid or not.
    [[nodiscard]] constexpr int operator<(const TarvDate& other) const noexcept;
    [[nodiscard]] constexpr int operator==(const TarvDate& other) const noexcept {
        return year_ == other.year_ && month_ == other.month_ && day_ == other.day_;
    }
    [[nodiscard]] constexpr int operator!=(const TarvDate& other) const noexcept {
        return !(*this == other);
    }
    [[nodiscard]] constexpr int operator<=(const TarvDate& other) const noexcept {
        return !(other < *this);
    }
    [[nodiscard]] constexpr int operator>(const TarvDate& other) const noexcept {
        return other < *this;
    }
    [[nodiscard]] constexpr int operator>=(const TarvDate& other) const noexcept {
        return !(*this < other);
    }

  private:
    constexpr void setDayNumber(long long dayNumber) noexcept;
    /// For day numbers outside the range of the inline conversion.
    TB_API void setFarDayNumber(long long dayNumber) noexcept;
    [[nodiscard]] constexpr int dayNumber() const noexcept;
    /// For valid dates that the inline conversion leaves out.
    [[nodiscard]] TB_API int farDayNumber() const noexcept;
    [[nodiscard]] static constexpr long asDayNumber(long long number) noexcept;
    [[nodiscard]] constexpr TarvDate later(long long days) const noexcept;
    [[nodiscard]] constexpr long earlier(long long days) const noexcept;

    int year_ = 0;
    signed char month_ = 0;
    signed char day_ = 0;
};

/// A date that knows the names of the months. The language of the names is one setting for all
/// objects of the process. Names are in Windows-1252 and live as long as the process.
class TarvDateString : public TarvDate {
  public:
    /// Language of the names.
    enum Language : int { English = 0, French = 1 };

    // As TarvDate's.
    TarvDateString() noexcept = default;
    constexpr TarvDateString(long dayNumber) noexcept : TarvDate(dayNumber) {}
    constexpr TarvDateString(int dayNumber) noexcept : TarvDate(dayNumber) {}
    constexpr TarvDateString(int year, int month, int day) noexcept : TarvDate(year, month, day) {}
    TarvDateString(const char* text) noexcept : TarvDate(text) {}
    constexpr TarvDateString(const TarvDate& date) noexcept : TarvDate(date) {}

    /// English at the start of the process. A value other than French gives English names.
    TB_API static void setLanguage(Language language) noexcept;
    [[nodiscard]] TB_API static Language getLanguage() noexcept;

    /// "January" or "janvier"; null when the month is not 1 to 12.
    [[nodiscard]] TB_API static const char* getMonthName(int month) noexcept;
    /// Three letters, "Jan" or "jan"; null when the month is not 1 to 12.
    [[nodiscard]] TB_API static const char* getMonthName3(int month) noexcept;
    // The same for this date's month.
    [[nodiscard]] const char* getMonthName() const noexcept { return getMonthName(getMonth()); }
    [[nodiscard]] const char* getMonthName3() const noexcept { return getMonthName3(getMonth()); }
};

constexpr int TarvDate::getNumDaysInMonth(int year, int month) noexcept {
    if (month < 1 || month > 12 || year < 0) return -1;
    return toolbox::calendar::kDaysInMonth[month] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

constexpr int TarvDate::setYear(int year) noexcept {
    year_ = year;
    return isValid();
}

constexpr int TarvDate::setMonth(int month) noexcept {
    month_ = static_cast<signed char>(month);
    return isValid();
}

constexpr int TarvDate::setDay(int day) noexcept {
    day_ = static_cast<signed char>(day);
    return isValid();
}

constexpr int TarvDate::getDayOfYear() const noexcept {
    if (!isValid()) return -1;
    return toolbox::calendar::kDaysBeforeMonth[month_] + day_ +
           (month_ > 2 && isLeapYear() ? 1 : 0);
}

constexpr int TarvDate::operator<(const TarvDate& other) const noexcept {
    if (year_ != other.year_) return year_ < other.year_;
    if (month_ != other.month_) return month_ < other.month_;
    return day_ < other.day_;
}

constexpr void TarvDate::setDayNumber(long long dayNumber) noexcept {
    using namespace toolbox::calendar;
    const auto fromFirst = static_cast<unsigned long long>(dayNumber) - kFirstDay;
    if (fromFirst >= kFastDays) {
        setFarDayNumber(dayNumber);
        return;
    }
    const Date date = dateOf(static_cast<std::uint32_t>(fromFirst));
    year_ = date.year;
    month_ = date.month;
    day_ = date.day;
}

constexpr int TarvDate::dayNumber() const noexcept {
    if (const int number = toolbox::calendar::ordinaryDayNumber(year_, month_, day_)) return number;
    if (!isValid()) return -1;
    return farDayNumber();
}

constexpr long TarvDate::asDayNumber(long long number) noexcept {
    return number >= INT32_MIN && number <= INT32_MAX ? static_cast<long>(number) : -1;
}

constexpr TarvDate TarvDate::later(long long days) const noexcept {
    // Kept away from the ends of 64 bits; past 32 bits any sum gives the same date.
    constexpr long long kFar = 1LL << 40;
    TarvDate date(0, 0, 0);
    date.setDayNumber(dayNumber() + (days > kFar ? kFar : days < -kFar ? -kFar : days));
    return date;
}

constexpr long TarvDate::earlier(long long days) const noexcept {
    constexpr long long kFar = 1LL << 40;
    return asDayNumber(dayNumber() - (days > kFar ? kFar : days < -kFar ? -kFar : days));
}
