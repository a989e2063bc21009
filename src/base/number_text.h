// Text of numbers, the same characters on every system and under every locale.
//
// Rounding is that of the exact binary value, ties to even. The decimal point is '.'. An exponent
// has a sign and at least three digits. Infinities are "inf" and "-inf", not-a-number is "nan".
#pragma once

#include <cstddef>
#include <string_view>

namespace toolbox::base {

/// Digits after the point beyond which every double has only zeros.
inline constexpr int kMaxPrecision = 1100;

/// Room that any of the printers below can need: sign, 309 digits, point, kMaxPrecision digits.
inline constexpr std::size_t kNumberTextMax = 1 + 309 + 1 + kMaxPrecision + 8;

// Each printer writes no terminator and returns the end of the text. `out` has room for
// kNumberTextMax characters, or for what the arguments can need; a precision outside
// 0..kMaxPrecision is moved to the nearer end.

/// `precision` digits after the point; no point when it is 0. As "%.*f".
char* printFixed(char* out, double value, int precision);
/// One digit, the point, `precision` digits, exponent. As "%.*e" with a three-digit exponent.
char* printExponent(char* out, double value, int precision);
/// `precision` significant digits (0 counts as 1) in the shorter of the two forms: exponent form
/// when the exponent is below -4 or not below the precision. Zeros at the end, and then the point,
/// are dropped unless `keepZeros`. As "%.*g" with a three-digit exponent.
char* printGeneral(char* out, double value, int precision, bool keepZeros = false);
/// `significant` digits (at least 1), exponent form when the decimal exponent is below -1 or above
/// significant - 1; zeros at the end are dropped, the point is kept: "0.", "100000.", "1.e+010".
char* printGcvt(char* out, double value, int significant);

/// Digits of the integer part of a finite value that is not negative, 1 when it is below 1. Counted
/// exactly: a logarithm gives one more for 999.9999999999999.
[[nodiscard]] int integerDigits(double magnitude);

/// Decimal digits of a value rounded to a number of decimals.
struct DecimalDigits {
    char text[kNumberTextMax];
    int count;      ///< digits in `text`; 0 when the value rounds to zero
    int point;      ///< digits before the decimal point; negative counts zeros after it
    bool negative;  ///< the sign bit of the value
};
/// Rounds `value`, which is finite, to `decimals` digits after the point and gives its digits
/// without leading zeros. A value that rounds to zero has no digits and its point at -decimals.
void decimalDigits(double value, int decimals, DecimalDigits& out);

}  // namespace toolbox::base
