// Numbers at the start of texts, the same on every system and under every locale.
#pragma once

#include <string_view>

namespace toolbox::base {

/// Blanks are skipped, a sign is taken, digits are read up to the first other character; 0 when
/// there is no digit. A number beyond the range gives the nearer end of it.
[[nodiscard]] long long leadingInteger(std::string_view text) noexcept;

/// The same for decimal reals with or without an exponent, "inf" and "nan" included. Beyond the
/// range the result is an infinity, or 0 for what is too small.
[[nodiscard]] double leadingReal(std::string_view text) noexcept;

}  // namespace toolbox::base
