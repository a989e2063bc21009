// Exact products of 128 bits and their division by powers of two and ten, with the rest compared
// with half the divisor: rounding to even needs to know whether a value is exactly a tie.
#include "base/scaled_decimal.h"

namespace toolbox::base {
namespace {

struct Wide {
    std::uint64_t high;
    std::uint64_t low;
};

#if defined(__SIZEOF_INT128__)

__extension__ using Integer128 = unsigned __int128;

Wide multiply(std::uint64_t a, std::uint64_t b) noexcept {
    const Integer128 product = Integer128{a} * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
}

#else

Wide multiply(std::uint64_t a, std::uint64_t b) noexcept {
    const std::uint64_t aLow = a & 0xFFFFFFFF, aHigh = a >> 32;
    const std::uint64_t bLow = b & 0xFFFFFFFF, bHigh = b >> 32;
    const std::uint64_t low = aLow * bLow;
    const std::uint64_t cross = aHigh * bLow + (low >> 32);
    const std::uint64_t middle = aLow * bHigh + (cross & 0xFFFFFFFF);
    return {aHigh * bHigh + (cross >> 32) + (middle >> 32), middle << 32 | (low & 0xFFFFFFFF)};
}

#endif

/// What a division leaves, compared with half the divisor.
enum class Rest { below, half, above };

constexpr Rest compare(std::uint64_t rest, std::uint64_t half) noexcept {
    return rest < half ? Rest::below : rest == half ? Rest::half : Rest::above;
}

constexpr std::uint64_t rounded(std::uint64_t quotient, Rest rest) noexcept {
    const bool up = rest == Rest::above || (rest == Rest::half && (quotient & 1));
    return quotient + (up ? 1 : 0);
}

constexpr std::uint64_t lowBits(std::uint64_t number, int count) noexcept {
    return number & ((std::uint64_t{1} << count) - 1);
}

/// product / 2^shift. A product of a mantissa and a power of ten has less than 118 bits.
bool divide(Wide product, int shift, std::uint64_t& out) noexcept {
    if (shift >= 128) {
        out = 0;
        return true;
    }
    if (shift > 64) {
        const int bits = shift - 64;
        Rest rest = compare(lowBits(product.high, bits), std::uint64_t{1} << (bits - 1));
        if (rest == Rest::half && product.low) rest = Rest::above;
        out = rounded(product.high >> bits, rest);
        return true;
    }
    if (shift == 64) {
        out = rounded(product.high, compare(product.low, std::uint64_t{1} << 63));
        return true;
    }
    if (product.high >> shift) return false;
    const std::uint64_t quotient = product.high << (64 - shift) | product.low >> shift;
    out = rounded(quotient, compare(lowBits(product.low, shift), std::uint64_t{1} << (shift - 1)));
    return out != 0 || quotient == 0;  // not wrapped round
}

}  // namespace

bool scaleToInteger(BinaryParts value, int power, std::uint64_t& out) noexcept {
    if (power < -kMaxPower || power > kMaxPower || value.shift < kLeastShift) return false;
    if (power >= 0) {
        const std::uint64_t ten = kPowersOfTen[static_cast<std::size_t>(power)];
        if (value.shift > 0) return divide(multiply(value.mantissa, ten), value.shift, out);
        const Wide product = multiply(value.mantissa << -value.shift, ten);
        out = product.low;
        return product.high == 0;
    }
    const std::uint64_t ten = kPowersOfTen[static_cast<std::size_t>(-power)];
    const bool small = value.shift >= 64;
    const std::uint64_t whole = small              ? 0
                                : value.shift >= 0 ? value.mantissa >> value.shift
                                                   : value.mantissa << -value.shift;
    const bool fraction =
        small ? value.mantissa != 0 : value.shift > 0 && lowBits(value.mantissa, value.shift);
    Rest rest = compare(whole % ten, ten / 2);
    if (rest == Rest::half && fraction) rest = Rest::above;
    out = rounded(whole / ten, rest);
    return true;
}

}  // namespace toolbox::base
