// std::from_chars for reals, right to the last bit on every system.
#pragma once

#include <charconv>

namespace toolbox::base {

/// As std::from_chars(first, last, out) for float and double. That of a 32-bit run-time multiplies
/// numbers of few digits in 80 bits and so rounds twice: two in a million are off by one bit.
template <class Real>
std::from_chars_result realFromChars(const char* first, const char* last, Real& out) noexcept;

}  // namespace toolbox::base
