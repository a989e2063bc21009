// Dates by the printed table of days before each month: the oracle that the library's results are
// checked against, and what its speed is compared with.
#pragma once

#include "toolbox/dates.h"

namespace literal {

struct Date {
    int year;
    int month;
    int day;
};
Date dateOf(long dayNumber);
long dayNumber(const Date& date);

}  // namespace literal

/// Compares the library with the oracle; ends the program with a message at the first difference.
void checkDates();
