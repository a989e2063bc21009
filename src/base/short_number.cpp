// Rounds doubles to short numbers, and writes such numbers two digits at a time.
#include "base/short_number.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "base/number_text.h"
#include "base/scaled_decimal.h"

namespace toolbox::base {
namespace {

constexpr int kMaxDigits = 18;
constexpr int kExponentLength = 5;

constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

int wholeDigits(const ShortNumber& number) noexcept {
    return std::max(digitCount(number.digits) - number.decimals, 1);
}

/// The decimal exponent of a value that is not 0. Below 1 it may be one too small.
int decimalExponent(double magnitude, BinaryParts parts) noexcept {
    if (magnitude >= 1) return integerDigits(magnitude) - 1;
    const int binary = static_cast<int>(std::bit_width(parts.mantissa)) - 1 - parts.shift;
    return binary * 315653 >> 20;  // the factor is just above log10(2)
}

}  // namespace

std::uint64_t writeDigits(char* end, std::uint64_t number, int count) noexcept {
    for (; count >= 2; count -= 2) {
        end -= 2;
        std::memcpy(end, kPairs.data() + 2 * (number % 100), 2);
        number /= 100;
    }
    if (count == 0) return number;
    end[-1] = static_cast<char>('0' + number % 10);
    return number / 10;
}

char* writeExponent(char* out, int exponent) noexcept {
    const int size = std::abs(exponent);
    out[0] = 'e';
    out[1] = exponent < 0 ? '-' : '+';
    out[2] = static_cast<char>('0' + size / 100);
    std::memcpy(out + 3, kPairs.data() + 2 * (size % 100), 2);
    return out + kExponentLength;
}

int ShortNumber::length() const noexcept {
    return (negative ? 1 : 0) + wholeDigits(*this) + (decimals ? 1 + decimals : 0) +
           (exponent == kNoExponent ? 0 : kExponentLength);
}

char* ShortNumber::write(char* out) const noexcept {
    const int whole = wholeDigits(*this);
    *out = '-';
    char* const point = out + (negative ? 1 : 0) + whole;
    char* const end = decimals ? point + 1 + decimals : point;
    const std::uint64_t wholePart = writeDigits(end, digits, decimals);
    if (decimals) *point = '.';
    writeDigits(point, wholePart, whole);
    return exponent == kNoExponent ? end : writeExponent(end, exponent);
}

bool roundFixed(double value, int precision, ShortNumber& out) noexcept {
    out.decimals = precision;
    out.exponent = ShortNumber::kNoExponent;
    out.negative = std::signbit(value);
    return scaleToInteger(BinaryParts(value), precision, out.digits);
}

bool roundExponent(double value, int precision, ShortNumber& out) noexcept {
    out.decimals = precision;
    out.negative = std::signbit(value);
    out.digits = 0;
    out.exponent = 0;
    const BinaryParts parts(value);
    if (precision >= kMaxDigits || parts.shift < kLeastShift) return false;
    if (parts.mantissa == 0) return true;
    out.exponent = decimalExponent(std::fabs(value), parts);
    // Rounding up, too, may give a digit more.
    const std::uint64_t tooLarge = kPowersOfTen[static_cast<std::size_t>(precision) + 1];
    for (;; ++out.exponent) {
        if (!scaleToInteger(parts, precision - out.exponent, out.digits)) return false;
        if (out.digits < tooLarge) return true;
    }
}

}  // namespace toolbox::base
