// Cuts a text into the parts of a number in one pass, then converts: reals by realFromChars,
// after a comma became a point; integers digit by digit, since an exponent may add or take zeros.
#include "base/entered_number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "base/real_chars.h"

namespace toolbox::base {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What people put between groups of digits; a second decimal sign too.
constexpr std::string_view kGrouping = " .,'\240\222_";

class PartsReader {
  public:
    explicit PartsReader(std::string_view text)
        : start_(text.data()), at_(start_), end_(start_ + text.size()) {}

    EntryParts read() {
        skipBlanks();
        if (at_ == end_) return fail(EntryFault::empty);
        const char* number = at_;
        if (*at_ == '+')
            number = ++at_;
        else if (*at_ == '-')
            ++at_;
        if (!readDigits() || !readExponent()) return parts_;
        parts_.number = {number, static_cast<std::size_t>(at_ - number)};
        const char* const after = at_;
        skipBlanks();
        return at_ == end_ ? parts_ : failAfter(after);
    }

  private:
    /// A NUL at the end, where no text of a number has one.
    [[nodiscard]] char next() const { return at_ == end_ ? '\0' : *at_; }
    [[nodiscard]] std::size_t place() const { return static_cast<std::size_t>(at_ - start_); }
    void skipBlanks() {
        while (next() == ' ') ++at_;
    }
    std::size_t takeDigits() {
        const char* const from = at_;
        while (at_ != end_ && isDigit(*at_)) ++at_;
        return static_cast<std::size_t>(at_ - from);
    }

    bool readDigits() {
        parts_.wholeDigits = takeDigits();
        if (next() == '.' || next() == ',') {
            parts_.sign = place();
            ++at_;
            parts_.decimals = takeDigits();
        }
        return parts_.wholeDigits + parts_.decimals > 0 || failAtDigit();
    }

    bool readExponent() {
        if (next() != 'e' && next() != 'E') return true;
        const char* const from = ++at_;
        if (next() == '+' || next() == '-') ++at_;
        if (takeDigits() == 0) return failAtDigit();
        parts_.exponent = {from, static_cast<std::size_t>(at_ - from)};
        return true;
    }

    EntryParts fail(EntryFault fault) {
        parts_.fault = fault;
        parts_.position = place();
        return parts_;
    }
    /// Something else stands where a digit must. False.
    bool failAtDigit() {
        fail(at_ == end_ ? EntryFault::incomplete : EntryFault::badCharacter);
        return false;
    }
    /// Something follows the number that ended at `after`, and blanks.
    EntryParts failAfter(const char* after) {
        const char* const further = std::max(at_, after + 1);
        const bool betweenDigits = parts_.exponent.empty() &&
                                   kGrouping.find(*after) != std::string_view::npos &&
                                   further != end_ && isDigit(*further);
        if (betweenDigits) at_ = after;
        return fail(betweenDigits ? EntryFault::grouping : EntryFault::badCharacter);
    }

    const char* start_;
    const char* at_;
    const char* end_;
    EntryParts parts_;
};

constexpr std::int64_t kEndless = std::int64_t{1} << 40;

/// The exponent, or an end of +-2^40, which is beyond the digits of any text.
std::int64_t exponentOf(const EntryParts& parts) {
    std::string_view digits = parts.exponent;
    const bool negative = digits.starts_with('-');
    if (!digits.empty() && !isDigit(digits.front())) digits.remove_prefix(1);
    std::int64_t exponent = 0;
    for (const char c : digits) exponent = std::min(exponent * 10 + (c - '0'), kEndless);
    return negative ? -exponent : exponent;
}

/// The number's digits before its exponent, with the decimal sign and without the minus.
std::string_view mantissaOf(const EntryParts& parts) {
    const std::size_t signs = parts.number.starts_with('-') ? 1 : 0;
    const std::size_t point = parts.sign == std::string_view::npos ? 0 : 1;
    return parts.number.substr(signs, parts.wholeDigits + point + parts.decimals);
}

constexpr std::string_view kNonZero = "123456789";

EntryFault beyondRange(const EntryParts& parts) {
    const std::string_view mantissa = mantissaOf(parts);
    const std::size_t first = mantissa.find_first_of(kNonZero);
    // The exponent of the first digit that is not 0, when it stands before the point.
    std::int64_t size = static_cast<std::int64_t>(parts.wholeDigits) -
                        static_cast<std::int64_t>(std::min(first, mantissa.size()));
    size += exponentOf(parts);
    if (size <= 0) return EntryFault::nearZero;
    return parts.number.starts_with('-') ? EntryFault::tooSmall : EntryFault::tooLarge;
}

template <class Real>
EntryFault convertReal(const EntryParts& parts, std::string_view digits, Real& out) {
    Real value = 0;
    const auto [end, error] = realFromChars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::result_out_of_range || std::isinf(value)) return beyondRange(parts);
    if (value == 0 && mantissaOf(parts).find_first_of(kNonZero) != std::string_view::npos)
        return EntryFault::nearZero;
    out = value;
    return EntryFault::none;
}

template <class Real>
EntryFault readReal(std::string_view text, const EntryParts& parts, Real& out) {
    if (parts.sign == std::string_view::npos || text[parts.sign] == '.')
        return convertReal(parts, parts.number, out);
    const auto at = parts.sign - static_cast<std::size_t>(parts.number.data() - text.data());
    std::array<char, 64> usual;
    if (parts.number.size() <= usual.size()) {
        std::ranges::copy(parts.number, usual.begin());
        usual[at] = '.';
        return convertReal(parts, {usual.data(), parts.number.size()}, out);
    }
    std::string withPoint(parts.number);
    withPoint[at] = '.';
    return convertReal(parts, withPoint, out);
}

template <class Integer>
EntryFault readInteger(const EntryParts& parts, Integer& out) {
    const bool negative = parts.number.starts_with('-');
    const EntryFault beyond = negative ? EntryFault::tooSmall : EntryFault::tooLarge;
    std::string_view digits = mantissaOf(parts);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    std::int64_t zeros = digits.empty() ? 0 : exponentOf(parts);
    const auto count = static_cast<std::int64_t>(digits.size());
    if (zeros < 0) {
        if (-zeros >= count) return EntryFault::notWhole;
        const auto kept = static_cast<std::size_t>(count + zeros);
        if (digits.find_first_not_of('0', kept) != std::string_view::npos)
            return EntryFault::notWhole;
        digits = digits.substr(0, kept);
        zeros = 0;
    }
    constexpr std::int64_t kMostDigits = 20;  // of 64 bits
    if (static_cast<std::int64_t>(digits.size()) + zeros > kMostDigits) return beyond;
    using Limits = std::numeric_limits<Integer>;
    const std::uint64_t most = negative ? 0 - static_cast<std::uint64_t>(Limits::min())
                                        : static_cast<std::uint64_t>(Limits::max());
    std::uint64_t size = 0;
    for (std::size_t i = 0; i < digits.size() + static_cast<std::size_t>(zeros); ++i) {
        const auto digit = i < digits.size() ? static_cast<std::uint64_t>(digits[i] - '0') : 0;
        if (size > (most - std::min(digit, most)) / 10 || digit > most) return beyond;
        size = size * 10 + digit;
    }
    out = static_cast<Integer>(negative ? 0 - size : size);
    return EntryFault::none;
}

}  // namespace

EntryParts entryParts(std::string_view text) {
    return PartsReader(text).read();
}

bool separatesThousands(std::string_view text, std::size_t comma) {
    std::size_t first = comma;
    while (first > 0 && isDigit(text[first - 1])) --first;
    const std::size_t digits = comma - first;
    std::size_t end = comma + 1;
    while (end < text.size() && isDigit(text[end])) ++end;
    return digits >= 1 && digits <= 3 && end - comma - 1 == 3 &&
           text.substr(first, digits).find_first_of(kNonZero) != std::string_view::npos;
}

template <class Number>
EntryCheck readEntry(std::string_view text, bool oneReading, Number& out) {
    const EntryParts parts = entryParts(text);
    if (parts.fault != EntryFault::none) return {parts.fault, parts.position};
    const bool hasSign = parts.sign != std::string_view::npos;
    const bool thousands =
        hasSign && text[parts.sign] == ',' && oneReading && separatesThousands(text, parts.sign);
    if constexpr (std::is_floating_point_v<Number>) {
        if (thousands) return {EntryFault::twoReadings, parts.sign};
        return {readReal(text, parts, out), parts.position};
    } else {
        if (hasSign) return {thousands ? EntryFault::grouping : EntryFault::notWhole, parts.sign};
        return {readInteger(parts, out), parts.position};
    }
}

template EntryCheck readEntry(std::string_view, bool, unsigned char&);
template EntryCheck readEntry(std::string_view, bool, short&);
template EntryCheck readEntry(std::string_view, bool, unsigned short&);
template EntryCheck readEntry(std::string_view, bool, int&);
template EntryCheck readEntry(std::string_view, bool, unsigned int&);
template EntryCheck readEntry(std::string_view, bool, long&);
template EntryCheck readEntry(std::string_view, bool, unsigned long&);
template EntryCheck readEntry(std::string_view, bool, float&);
template EntryCheck readEntry(std::string_view, bool, double&);

}  // namespace toolbox::base
