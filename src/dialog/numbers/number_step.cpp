// Sums decimal numbers digit by digit, exactly: each place from the last of the smallest double to
// the first of the largest has an entry of its own, which carries only at the end.
#include "dialog/numbers/number_step.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/real_chars.h"
#include "dialog/numbers/number_text.h"

namespace toolbox::numbers {
namespace {

class DecimalSum {
  public:
    /// Adds a number that shortestText() wrote, `times` times (at most 2^33 either way).
    void add(std::string_view number, long long times);
    /// Once, after the last add().
    void carry();

    [[nodiscard]] bool isNegative() const { return negative_; }
    // The places that may have digits other than 0; digit d at a place counts d * 10^place.
    [[nodiscard]] int first() const { return first_; }
    [[nodiscard]] int last() const { return last_; }
    [[nodiscard]] int digit(int place) const {
        return place < last_ || place > first_ ? 0 : static_cast<int>(at(place));
    }
    /// Digits, and an exponent.
    [[nodiscard]] std::string text() const;

  private:
    static constexpr int kLeast = -350;
    static constexpr int kMost = 340;
    static constexpr int kCarried = 14;  // places that the factor and the sum can add

    [[nodiscard]] const std::int64_t& at(int place) const {
        return places_[static_cast<std::size_t>(place - kLeast)];
    }
    [[nodiscard]] std::int64_t& at(int place) {
        return places_[static_cast<std::size_t>(place - kLeast)];
    }
    std::int64_t carryUp(bool negated, bool store);

    std::array<std::int64_t, kMost - kLeast + 1> places_{};
    int first_ = 0;
    int last_ = 0;
    bool negative_ = false;
};

void DecimalSum::add(std::string_view number, long long times) {
    const std::size_t mark = number.find('e');
    int exponent = 0;
    if (mark != std::string_view::npos) {
        const std::size_t sign = number[mark + 1] == '+' ? 1 : 0;
        std::from_chars(number.data() + mark + 1 + sign, number.data() + number.size(), exponent);
        number = number.substr(0, mark);
    }
    if (number.starts_with('-')) {
        times = -times;
        number.remove_prefix(1);
    }
    const std::size_t point = std::min(number.find('.'), number.size());
    int place = exponent + static_cast<int>(point) - 1;
    first_ = std::max(first_, place + kCarried);
    for (const char c : number)
        if (c != '.') at(place--) += (c - '0') * times;
    last_ = std::min(last_, place + 1);
}

/// Makes digits of all places, of the sum or of its opposite. What is carried out of the first
/// place has the sum's sign.
std::int64_t DecimalSum::carryUp(bool negated, bool store) {
    std::int64_t up = 0;
    for (int place = last_; place <= first_; ++place) {
        const std::int64_t all = (negated ? -at(place) : at(place)) + up;
        up = all / 10 - (all % 10 < 0 ? 1 : 0);
        if (store) at(place) = all - up * 10;
    }
    return up;
}

void DecimalSum::carry() {
    negative_ = carryUp(false, false) < 0;
    carryUp(negative_, true);
}

std::string DecimalSum::text() const {
    int first = first_;
    int last = last_;
    while (first > last && at(first) == 0) --first;
    while (last < first && at(last) == 0) ++last;
    std::string all = negative_ ? "-" : "";
    for (int place = first; place >= last; --place) all += static_cast<char>('0' + digit(place));
    return all + 'e' + std::to_string(last);
}

template <class Real>
Real realOf(const DecimalSum& sum) {
    const std::string text = sum.text();
    Real value = 0;
    const auto result = base::realFromChars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc()) return value;
    // Beyond the range: above it when a digit stands before the point, else nearly zero.
    using Limits = std::numeric_limits<Real>;
    for (int place = 0; place <= sum.first(); ++place)
        if (sum.digit(place)) return sum.isNegative() ? Limits::lowest() : Limits::max();
    return 0;
}

template <class Integer>
Integer integerOf(const DecimalSum& sum) {
    using Limits = std::numeric_limits<Integer>;
    const Integer end = sum.isNegative() ? Limits::min() : Limits::max();
    const std::uint64_t most = sum.isNegative() ? 0 - static_cast<std::uint64_t>(Limits::min())
                                                : static_cast<std::uint64_t>(Limits::max());
    std::uint64_t size = 0;
    for (int place = sum.first(); place >= 0; --place) {
        const auto digit = static_cast<std::uint64_t>(sum.digit(place));
        if (digit > most || size > (most - digit) / 10) return end;
        size = size * 10 + digit;
    }
    if (sum.digit(-1) >= 5 && size++ == most) return end;
    return static_cast<Integer>(sum.isNegative() ? 0 - size : size);
}

}  // namespace

template <class T>
T decimalStep(T value, long long steps, double size) {
    DecimalSum sum;
    sum.add(shortestText(value), 1);
    sum.add(shortestText(size), steps);
    sum.carry();
    if constexpr (std::is_floating_point_v<T>) {
        return realOf<T>(sum);
    } else {
        return integerOf<T>(sum);
    }
}

template short decimalStep(short, long long, double);
template unsigned short decimalStep(unsigned short, long long, double);
template long decimalStep(long, long long, double);
template unsigned long decimalStep(unsigned long, long long, double);
template float decimalStep(float, long long, double);
template double decimalStep(double, long long, double);

}  // namespace toolbox::numbers
