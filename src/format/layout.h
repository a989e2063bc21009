// Values laid out in a field: a text of a format's width.
//
// A width beyond kWidestField counts as kWidestField, unless the text itself is longer. Nothing
// throws: without memory for the field the result is empty.
#pragma once

#include <string_view>

#include "toolbox/formats.h"

namespace toolbox::format {

/// Characters that a field is padded to at most: 16 MiB, which a 32-bit process can still provide.
inline constexpr int kWidestField = 1 << 24;

/// The text padded with blanks to `width` characters on the side that `justify` leaves free; a
/// longer text is cut to its first `width` characters, to nothing when `width` is negative.
[[nodiscard]] RWCString inField(std::string_view text, int width, Justification justify);

[[nodiscard]] RWCString layOutNumber(int value, int width, Justification justify);
[[nodiscard]] RWCString layOutReal(double value, int width, int precision, Justification justify);

// Whether the layout holds all digits and decimals, without exponent and without a cut.
[[nodiscard]] bool numberFits(int value, int width);
[[nodiscard]] bool realFits(double value, int width, int precision);

}  // namespace toolbox::format
