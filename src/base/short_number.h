// Rounded numbers of at most 64 bits, which covers what tables hold. Such a number knows how long
// its text is before the text is written, so it can be written where it has to stand, without a
// scratch buffer. number_text.h prints everything else.
#pragma once

#include <climits>
#include <cstdint>

namespace toolbox::base {

struct ShortNumber {
    static constexpr int kNoExponent = INT_MIN;
    static constexpr int kMaxLength = 1 + 20 + 1 + 19 + 5;  ///< of the text

    std::uint64_t digits;  ///< the number without its point
    int decimals;          ///< how many of the digits stand after the point
    int exponent;          ///< kNoExponent for one in positional notation
    bool negative;

    /// Characters of the text, without a terminator.
    [[nodiscard]] int length() const noexcept;
    /// Writes the text and returns its end.
    char* write(char* out) const noexcept;
};

// Each rounds a finite value, ties to even, as the printer of the same name. False when the result
// does not fit; `out` is then unspecified.

bool roundFixed(double value, int precision, ShortNumber& out) noexcept;
/// Never rounds to more than 18 digits: `precision` is at most 17.
bool roundExponent(double value, int precision, ShortNumber& out) noexcept;

/// Writes the last `count` decimal digits of a number, ending at `end`, and returns what is before
/// them.
std::uint64_t writeDigits(char* end, std::uint64_t number, int count) noexcept;

/// Writes 'e', a sign and three digits.
char* writeExponent(char* out, int exponent) noexcept;

}  // namespace toolbox::base
