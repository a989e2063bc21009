// What the fields of a dialog show and what a text typed into them means, without any window:
// texts, dates in the order of the message service's language, formatted values.
#pragma once

#include <string_view>

#include "toolbox/dates.h"
#include "toolbox/formats.h"
#include "toolbox/strings.h"

namespace toolbox::dialog {

/// Stands in a field's text for what bytes of Windows-1252 cannot hold. A control character, so a
/// text with it is refused.
inline constexpr char kForeign = '\x1A';

/// Whether a text can be stored: at most `limit` characters (0 and less: any number), no control
/// characters but for tabs and line ends where the field has several lines. A reason when not.
bool canStore(std::string_view text, int limit, bool severalLines, CString* why);

/// The text without units at its end and the blanks around both. Empty units: as it is.
[[nodiscard]] std::string_view withoutUnits(std::string_view text, std::string_view units);

/// "01/08/2026" for the first of August in French, "08/01/2026" in English; empty for an invalid
/// date.
[[nodiscard]] CString dateText(const TarvDate& date);
/// "2026-08-01"; empty for an invalid date.
[[nodiscard]] CString sortedDateText(const TarvDate& date);
/// Reads such texts: one of the first, or year, month and day. The empty text is date 0 0 0 when it
/// may be empty. `date` is unchanged and `why` a reason when it is refused.
bool scanDate(std::string_view text, bool mayBeEmpty, TarvDate& date, CString* why);

/// What a field shows of a value; see TvExchange::value().
[[nodiscard]] CString valueText(FormatedValue& value, const CString& units);
/// How many characters may be typed for a string with a format; 0: any number.
[[nodiscard]] int valueLimit(FormatedValue& value);
/// Stores a text in the value; nothing, and a reason, when it is not one of its kind.
bool scanValue(std::string_view text, const CString& units, FormatedValue& value, CString* why);

/// A formatted value's own value, to be given back later.
class KeptValue {
  public:
    /// Keeps the value that it has now.
    explicit KeptValue(FormatedValue& value);
    /// Gives it back, to a value of the same kind.
    void restore(FormatedValue& value) const;

  private:
    int integer_ = 0;
    double real_ = 0;
    RWCString text_;
};

}  // namespace toolbox::dialog
