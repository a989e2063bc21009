// Shortest texts: the digits are std::to_chars's, the layout of point and exponent is the
// library's.
#include "dialog/numbers/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
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

/// The digits that tell a positive number from all others, and the exponent of the first.
struct ShortestDigits {
    char text[20];
    std::size_t count = 1;
    int exponent = 0;

    template <class Real>
    explicit ShortestDigits(Real value) {
        char scientific[32];  // "d.ddde-xx"
        const char* const end = std::to_chars(scientific, scientific + sizeof scientific, value,
                                              std::chars_format::scientific)
                                    .ptr;
        const char* at = scientific;
        text[0] = *at++;
        if (*at == '.')
            while (*++at != 'e') text[count++] = *at;
        ++at;
        std::from_chars(at + (*at == '+' ? 1 : 0), end, exponent);
    }
};

char* copied(char* out, const char* from, std::size_t count) {
    std::memcpy(out, from, count);
    return out + count;
}

char* zeros(char* out, std::size_t count) {
    std::memset(out, '0', count);
    return out + count;
}

char* withExponent(char* out, const ShortestDigits& digits) {
    *out++ = digits.text[0];
    if (digits.count > 1) *out++ = '.';
    out = copied(out, digits.text + 1, digits.count - 1);
    return base::writeExponent(out, digits.exponent);
}

char* withoutExponent(char* out, const ShortestDigits& digits) {
    if (digits.exponent < 0) {
        out = copied(out, "0.", 2);
        out = zeros(out, static_cast<std::size_t>(-digits.exponent) - 1);
        return copied(out, digits.text, digits.count);
    }
    const auto whole = static_cast<std::size_t>(digits.exponent) + 1;
    if (digits.count <= whole)
        return zeros(copied(out, digits.text, digits.count), whole - digits.count);
    out = copied(out, digits.text, whole);
    *out++ = '.';
    return copied(out, digits.text + whole, digits.count - whole);
}

template <class Real>
std::string realText(Real value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    const ShortestDigits digits(std::fabs(value));
    char text[48];
    char* out = text;
    if (std::signbit(value)) *out++ = '-';
    const bool plain = digits.exponent >= kLeastPlain && digits.exponent <= kMostPlain;
    out = plain ? withoutExponent(out, digits) : withExponent(out, digits);
    return {text, out};
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
