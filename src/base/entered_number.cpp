// Cuts a text into the parts of a number in one pass, then converts: reals by std::from_chars, after
// a comma became a point; integers digit by digit, since an exponent may add or take zeros.
#include "base/entered_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace toolbox::base {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What people put between groups of digits; a second decimal sign too.
constexpr std::string_view kGrouping = " .,'\240\222_";

class PartsReader {
  public:
    explicit PartsReader(std::string_view text) : text_(text) {}

    EntryParts read() {
        skipBlanks();
        if (atEnd()) return fail(EntryFault::empty);
        if (at() == '+') ++at_;
        start_ = at_;
        if (at_ == 0 || text_[at_ - 1] != '+') take('-');
        if (!readDigits() || !readExponent()) return parts_;
        parts_.number = text_.substr(start_, at_ - start_);
        const std::size_t end = at_;
        skipBlanks();
        return atEnd() ? parts_ : failAfter(end);
    }

  private:
    [[nodiscard]] bool atEnd() const { return at_ == text_.size(); }
    [[nodiscard]] char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }
    [[nodiscard]] char at() const { return at(at_); }
    void skipBlanks() {
        while (at() == ' ') ++at_;
    }
    void take(char c) {
        if (at() == c) ++at_;
    }
    std::size_t takeDigits() {
        const std::size_t from = at_;
        while (isDigit(at())) ++at_;
        return at_ - from;
    }

    bool readDigits() {
        parts_.wholeDigits = takeDigits();
        if (at() == '.' || at() == ',') {
            parts_.sign = at_++;
            parts_.decimals = takeDigits();
        }
        if (parts_.wholeDigits + parts_.decimals > 0) return true;
        missingDigit();
        return false;
    }

    bool readExponent() {
        if (at() != 'e' && at() != 'E') return true;
        const std::size_t from = ++at_;
        if (at() == '+' || at() == '-') ++at_;
        if (takeDigits() == 0) {
            missingDigit();
            return false;
        }
        parts_.exponent = text_.substr(from, at_ - from);
        return true;
    }

    EntryParts fail(EntryFault fault) {
        parts_.fault = fault;
        parts_.position = at_;
        return parts_;
    }
    void missingDigit() { fail(atEnd() ? EntryFault::incomplete : EntryFault::badCharacter); }
    /// Something follows the number that ended at `end`.
    EntryParts failAfter(std::size_t end) {
        const bool betweenDigits = parts_.exponent.empty() &&
                                   kGrouping.find(text_[end]) != std::string_view::npos &&
                                   isDigit(at(std::max(at_, end + 1)));
        if (betweenDigits) at_ = end;
        return fail(betweenDigits ? EntryFault::grouping : EntryFault::badCharacter);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t start_ = 0;
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
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
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
    const bool thousands = hasSign && text[parts.sign] == ',' && oneReading &&
                           separatesThousands(text, parts.sign);
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
