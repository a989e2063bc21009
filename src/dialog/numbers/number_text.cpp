// Shortest texts: the digits are std::to_chars's, the layout of point and exponent is the library's.
#include "dialog/numbers/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <type_traits>

#include "base/number_text.h"
#include "base/short_number.h"

namespace toolbox::numbers {
namespace {

// Exponents of the first digit between which no exponent is written.
constexpr int kLeastPlain = -5;
constexpr int kMostPlain = 15;

/// Wider numbers are not written out when there is no width.
constexpr std::size_t kUsualWidth = 40;

std::string withExponent(std::string_view digits, int exponent) {
    std::string text(digits.substr(0, 1));
    if (digits.size() > 1) text.append(".").append(digits.substr(1));
    char written[8];
    return text.append(written, base::writeExponent(written, exponent));
}

std::string withoutExponent(std::string_view digits, int exponent) {
    const auto before = static_cast<std::size_t>(exponent < 0 ? 0 : exponent + 1);
    if (exponent < 0)
        return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
    if (digits.size() <= before) return std::string(digits).append(before - digits.size(), '0');
    return std::string(digits.substr(0, before)).append(".").append(digits.substr(before));
}

template <class Real>
std::string realText(Real value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char scientific[40];  // "d.ddde-xx"
    const char* const end = std::to_chars(scientific, scientific + sizeof scientific,
                                          std::fabs(value), std::chars_format::scientific)
                                .ptr;
    const std::string_view text(scientific, static_cast<std::size_t>(end - scientific));
    const std::size_t mark = text.find('e');
    int exponent = 0;
    std::from_chars(text.data() + mark + (text[mark + 1] == '+' ? 2 : 1), end, exponent);
    std::string digits(text.substr(0, mark));
    if (digits.size() > 1) digits.erase(1, 1);
    const bool plain = exponent >= kLeastPlain && exponent <= kMostPlain;
    return (std::signbit(value) ? "-" : "") +
           (plain ? withoutExponent(digits, exponent) : withExponent(digits, exponent));
}

std::string fixedText(double value, int decimals) {
    std::array<char, base::kNumberTextMax> text;
    const char* const end = base::printFixed(text.data(), value, decimals);
    std::string fixed(text.data(), static_cast<std::size_t>(end - text.data()));
    // A number that rounds to zero has no sign.
    if (fixed.starts_with('-') && fixed.find_first_not_of("-0.") == std::string::npos)
        fixed.erase(0, 1);
    return fixed;
}

}  // namespace

template <class T>
std::string shortestText(T value) {
    if constexpr (std::is_floating_point_v<T>) {
        return realText(value);
    } else {
        return std::to_string(value);
    }
}

template <class T>
std::string roundedText(T value, const NumberLayout& layout) {
    std::string shortest = shortestText(value);
    if constexpr (std::is_floating_point_v<T>) {
        if (layout.decimals < 0 || !std::isfinite(value)) return shortest;
        const auto room = layout.width ? static_cast<std::size_t>(layout.width) : kUsualWidth;
        std::string fixed = fixedText(value, layout.decimals);
        if (fixed.size() <= room || fixed.size() <= shortest.size()) return fixed;
    }
    return shortest;
}

std::string justified(std::string text, const NumberLayout& layout) {
    const auto width = static_cast<std::size_t>(layout.width);
    if (text.size() >= width) return text;
    text.insert(layout.justification == Left ? text.size() : 0, width - text.size(), ' ');
    return text;
}

template std::string shortestText(short);
template std::string shortestText(unsigned short);
template std::string shortestText(long);
template std::string shortestText(unsigned long);
template std::string shortestText(float);
template std::string shortestText(double);
template std::string roundedText(short, const NumberLayout&);
template std::string roundedText(unsigned short, const NumberLayout&);
template std::string roundedText(long, const NumberLayout&);
template std::string roundedText(unsigned long, const NumberLayout&);
template std::string roundedText(float, const NumberLayout&);
template std::string roundedText(double, const NumberLayout&);

}  // namespace toolbox::numbers
