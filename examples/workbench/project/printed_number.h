// Whether a printed number can be believed.
#pragma once

#include <string_view>

/// False when a reader of the text would not get the value that it was printed from, rounded to the
/// decimals that it shows: a format that is too narrow cuts exponents off. The text has no blanks.
[[nodiscard]] bool standsFor(std::string_view text, double value);
