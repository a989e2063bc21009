// Numbers that one exact operation gives are computed here, in their own precision; std::from_chars
// gets all others, which it computes with integers.
#include "base/real_chars.h"

#include <array>
#include <cstdint>
#include <limits>

namespace toolbox::base {
namespace {

// Powers of ten that the type holds exactly.
template <class Real>
constexpr auto kPowers = [] {
    std::array<Real, std::numeric_limits<Real>::digits == 53 ? 23 : 11> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

/// A decimal number of at most 19 digits after its leading zeros.
struct ShortDecimal {
    std::uint64_t digits = 0;
    int count = 0;  ///< of the digits; more than kMost when they are not all in `digits`
    int exponent = 0;
    bool negative = false;
    const char* end = nullptr;  ///< null when it is not written as one

    static constexpr int kMost = 19;

    ShortDecimal(const char* at, const char* last) {
        negative = at != last && *at == '-';
        if (negative) ++at;
        const char* const start = at;
        at = take(at, last);
        auto read = at - start;
        if (at != last && *at == '.') {
            const char* const decimals = ++at;
            at = take(at, last);
            read += at - decimals;
            if (at - decimals < kFar)
                exponent = -static_cast<int>(at - decimals);
            else
                count = kMost + 1;
        }
        if (read > 0) end = takeExponent(at, last);
    }

  private:
    static constexpr int kFar = 1000;

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    const char* take(const char* at, const char* last) {
        for (; at != last && isDigit(*at); ++at) {
            if (*at == '0' && count == 0) continue;
            if (++count > kMost)
                count = kMost + 1;
            else
                digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        }
        return at;
    }

    const char* takeExponent(const char* at, const char* last) {
        if (at == last || (*at != 'e' && *at != 'E')) return at;
        const char* digit = at + 1;
        const bool below = digit != last && *digit == '-';
        if (below || (digit != last && *digit == '+')) ++digit;
        if (digit == last || !isDigit(*digit)) return at;  // no part of the number
        int size = 0;
        for (; digit != last && isDigit(*digit); ++digit)
            if (size < kFar) size = size * 10 + (*digit - '0');
        exponent += below ? -size : size;
        return digit;
    }
};

}  // namespace

template <class Real>
std::from_chars_result realFromChars(const char* first, const char* last, Real& out) noexcept {
    constexpr auto kMostExact = static_cast<int>(kPowers<Real>.size()) - 1;
    constexpr std::uint64_t kMostDigits = std::uint64_t{1} << std::numeric_limits<Real>::digits;
    const ShortDecimal number(first, last);
    if (!number.end || number.count > ShortDecimal::kMost || number.digits > kMostDigits ||
        number.exponent > kMostExact || number.exponent < -kMostExact)
        return std::from_chars(first, last, out);
    const auto whole = static_cast<Real>(static_cast<std::int64_t>(number.digits));
    const auto power = [&](int exponent) {
        return kPowers<Real>[static_cast<std::size_t>(exponent)];
    };
    const Real size =
        number.exponent < 0 ? whole / power(-number.exponent) : whole * power(number.exponent);
    out = number.negative ? -size : size;
    return {number.end, std::errc()};
}

template std::from_chars_result realFromChars(const char*, const char*, float&) noexcept;
template std::from_chars_result realFromChars(const char*, const char*, double&) noexcept;

}  // namespace toolbox::base
