// Exact rounding of doubles to decimal integers, for the magnitudes and precisions of tables.
//
// A double is an integer times a power of two. Multiplied by a power of ten that fits 64 bits it is
// still exact in 128 bits, so it can be rounded without any loss, in a few instructions. Other
// values are reported and left to the general algorithm.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace toolbox::base {

inline constexpr int kMaxPower = 19;

inline constexpr std::array<std::uint64_t, kMaxPower + 1> kPowersOfTen = [] {
    std::array<std::uint64_t, kMaxPower + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// Decimal digits of a number, 1 for 0.
[[nodiscard]] constexpr int digitCount(std::uint64_t number) noexcept {
    // 1233 / 4096 is just below log10(2): right, or one too few.
    const int atLeast = static_cast<int>(std::bit_width(number | 1)) * 1233 >> 12;
    return atLeast + (number >= kPowersOfTen[static_cast<std::size_t>(atLeast)] ? 1 : 0) +
           (number == 0 ? 1 : 0);
}

/// A finite double without its sign: mantissa * 2^-shift.
struct BinaryParts {
    std::uint64_t mantissa;
    int shift;

    explicit constexpr BinaryParts(double value) noexcept {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        const auto biased = static_cast<int>(bits >> 52 & 0x7FF);
        mantissa = (bits & 0xFFFFFFFFFFFFF) | (biased ? std::uint64_t{1} << 52 : 0);
        shift = 1075 - (biased ? biased : 1);
    }
};

/// A value with a lesser shift, 2^64 or more, does not fit 64 bits.
inline constexpr int kLeastShift = -11;

/// The magnitude of `value` times 10^power, rounded to an integer, ties to even. False when the
/// result or `power` is out of range; `out` is then unspecified.
[[nodiscard]] bool scaleToInteger(BinaryParts value, int power, std::uint64_t& out) noexcept;

}  // namespace toolbox::base
