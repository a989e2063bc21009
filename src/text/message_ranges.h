// Range texts: a message template, a minimum, a maximum and a display format, with commas between
// them (several in a row count as one).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolbox::text {

/// The number at the start of a text as base/number_scan.h reads it, for int, long and double. One
/// beyond the type's range gives the nearer end of it.
template <class Number>
[[nodiscard]] Number leadingNumber(std::string_view text);

/// GMSG::checkDouble for an int, long, float or double. A float is compared with the limits as
/// floats, so that a limit itself is never refused.
template <class Number>
[[nodiscard]] int checkRange(Number value, unsigned short formatId);

/// The fourth field of range text `formatId`; nothing when there is no such text or field.
[[nodiscard]] std::optional<std::string> displayFormat(unsigned short formatId);

}  // namespace toolbox::text
