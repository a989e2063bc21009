// Days and years are numbers; the name of the month comes from the library's dates.
#include "date_words.h"

#include <string>

#include "toolbox/messages.h"

CString dateInWords(const TarvDate& date) {
    const bool isFrench = GMSG::language == GMSG::French;
    const TarvDateString::Language before = TarvDateString::getLanguage();
    TarvDateString::setLanguage(isFrench ? TarvDateString::French : TarvDateString::English);
    const TarvDateString words(date);
    CString text = std::to_string(words.getDay());
    if (isFrench && words.getDay() == 1) text += "er";
    text += " " + RWCString(words.getMonthName()) + " " + std::to_string(words.getYear());
    TarvDateString::setLanguage(before);
    return text;
}
