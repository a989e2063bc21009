// The names of the months.
#include "toolbox/dates.h"

namespace {

struct MonthName {
    const char* english;
    const char* french;
    const char* english3;
    const char* french3;
};

constexpr MonthName kMonths[] = {
    {"January", "janvier", "Jan", "jan"},
    {"February", "f\351vrier", "Feb", "f\351v"},
    {"March", "mars", "Mar", "mar"},
    {"April", "avril", "Apr", "avr"},
    {"May", "mai", "May", "mai"},
    {"June", "juin", "Jun", "jun"},
    {"July", "juillet", "Jul", "jul"},
    {"August", "ao\373t", "Aug", "ao\373"},
    {"September", "septembre", "Sep", "sep"},
    {"October", "octobre", "Oct", "oct"},
    {"November", "novembre", "Nov", "nov"},
    {"December", "d\351cembre", "Dec", "d\351c"},
};
static_assert(sizeof kMonths / sizeof kMonths[0] == 12);

TarvDateString::Language currentLanguage = TarvDateString::English;

const MonthName* find(int month) noexcept {
    return month >= 1 && month <= 12 ? &kMonths[month - 1] : nullptr;
}

}  // namespace

void TarvDateString::setLanguage(Language language) noexcept {
    currentLanguage = language;
}

TarvDateString::Language TarvDateString::getLanguage() noexcept {
    return currentLanguage;
}

const char* TarvDateString::getMonthName(int month) noexcept {
    const MonthName* const name = find(month);
    if (!name) return nullptr;
    return currentLanguage == French ? name->french : name->english;
}

const char* TarvDateString::getMonthName3(int month) noexcept {
    const MonthName* const name = find(month);
    if (!name) return nullptr;
    return currentLanguage == French ? name->french3 : name->english3;
}
