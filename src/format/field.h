// Text in a field of a format's width.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/formats.h"

namespace toolbox::format {

/// The text padded with blanks to `width` characters on the side that `justify` leaves free; a
/// longer text is cut to its first `width` characters, to nothing when `width` is negative.
[[nodiscard]] std::string inField(std::string_view text, int width, Justification justify);

/// As inField(), for a text with `zeros` further zeros at the position `at`.
[[nodiscard]] std::string inField(std::string_view text, std::size_t at, std::size_t zeros,
                                  int width, Justification justify);

}  // namespace toolbox::format
