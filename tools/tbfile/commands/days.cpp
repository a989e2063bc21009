// Dates of a header as texts: year, month and day, each with all of its digits.
#include "commands/days.h"

#include <charconv>

#include "toolbox/dates.h"

namespace tbfile {
namespace {

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

}  // namespace

std::string dayText(std::int32_t day) {
    const TarvDate date(static_cast<int>(day));
    if (!date.isValid()) return {};
    std::string year = std::to_string(date.getYear());
    year.insert(0, year.size() < 4 ? 4 - year.size() : 0, '0');
    return year + '-' + twoDigits(date.getMonth()) + '-' + twoDigits(date.getDay());
}

std::optional<std::int32_t> dayOf(std::string_view text) {
    constexpr int kLastYear = 5874898;
    const char* end = text.data() + text.size();
    int year = 0;
    int month = 0;
    int day = 0;
    const char* at = std::from_chars(text.data(), end, year).ptr;
    if (at != end) at = std::from_chars(at + 1, end, month).ptr;
    if (at != end) std::from_chars(at + 1, end, day);
    if (year < 1 || year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31)
        return std::nullopt;
    const auto number = static_cast<std::int32_t>(static_cast<long>(TarvDate(year, month, day)));
    // There is one text for each day.
    return dayText(number) == text ? std::optional(number) : std::nullopt;
}

}  // namespace tbfile
