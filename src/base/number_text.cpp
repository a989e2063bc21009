// The printers of numbers. What rounds exactly in 64 bits takes the short way of short_number.h,
// all else std::to_chars; the layout of digits, point and exponent is ours.
#include "base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "base/scaled_decimal.h"
#include "base/short_number.h"

namespace toolbox::base {
namespace {

constexpr char kZero = '0';

char* copy(char* out, std::string_view text) {
    return std::copy(text.begin(), text.end(), out);
}

/// "inf", "-inf" or "nan"; the sign of a not-a-number is never shown.
char* printSpecial(char* out, double value) {
    if (std::isnan(value)) return copy(out, "nan");
    return copy(out, value < 0 ? "-inf" : "inf");
}

/// A value rounded to a number of significant digits: d.ddd times ten to the exponent.
struct Significant {
    char digits[kMaxPrecision + 1];
    int count;
    int exponent;
};

/// `magnitude` is finite and not negative.
void roundSignificant(double magnitude, int count, Significant& out) {
    out.count = count;
    if (ShortNumber number; roundExponent(magnitude, count - 1, number)) {
        writeDigits(out.digits + count, number.digits, count);
        out.exponent = number.exponent;
        return;
    }
    char text[kMaxPrecision + 16];
    const auto end =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, count - 1)
            .ptr;
    const char* const mark = std::find(text, end, 'e');
    out.digits[0] = text[0];
    std::copy(std::min<const char*>(text + 2, mark), mark, out.digits + 1);
    const bool negative = mark[1] == '-';
    std::from_chars(mark + 2, end, out.exponent);
    if (negative) out.exponent = -out.exponent;
}

void dropZeros(Significant& number) {
    while (number.count > 1 && number.digits[number.count - 1] == kZero) --number.count;
}

/// The digits in positional notation; "0." in front when they all lie after the point.
char* layOutFixed(char* out, const Significant& number, bool keepPoint) {
    const std::string_view digits(number.digits, static_cast<std::size_t>(number.count));
    const int before = number.exponent + 1;
    if (before <= 0) {
        out = copy(out, "0.");
        out = std::fill_n(out, -before, kZero);
        return copy(out, digits);
    }
    const auto whole = static_cast<std::size_t>(before);
    out = copy(out, digits.substr(0, whole));
    if (whole > digits.size()) out = std::fill_n(out, whole - digits.size(), kZero);
    if (whole < digits.size() || keepPoint) *out++ = '.';
    return whole < digits.size() ? copy(out, digits.substr(whole)) : out;
}

char* layOutExponent(char* out, const Significant& number, bool keepPoint) {
    *out++ = number.digits[0];
    if (number.count > 1 || keepPoint) *out++ = '.';
    out = std::copy(number.digits + 1, number.digits + number.count, out);
    return writeExponent(out, number.exponent);
}

char* printSign(char* out, double value) {
    if (std::signbit(value)) *out++ = '-';
    return out;
}

int clampPrecision(int precision) {
    return std::clamp(precision, 0, kMaxPrecision);
}

}  // namespace

char* printFixed(char* out, double value, int precision) {
    if (!std::isfinite(value)) return printSpecial(out, value);
    precision = clampPrecision(precision);
    if (ShortNumber number; roundFixed(value, precision, number)) return number.write(out);
    return std::to_chars(out, out + kNumberTextMax, value, std::chars_format::fixed, precision).ptr;
}

char* printExponent(char* out, double value, int precision) {
    if (!std::isfinite(value)) return printSpecial(out, value);
    const int count = clampPrecision(precision) + 1;
    if (ShortNumber number; roundExponent(value, count - 1, number)) return number.write(out);
    Significant number;
    roundSignificant(std::fabs(value), count, number);
    return layOutExponent(printSign(out, value), number, false);
}

char* printGeneral(char* out, double value, int precision, bool keepZeros) {
    if (!std::isfinite(value)) return printSpecial(out, value);
    const int count = std::clamp(precision, 1, kMaxPrecision);
    Significant number;
    roundSignificant(std::fabs(value), count, number);
    if (!keepZeros) dropZeros(number);
    out = printSign(out, value);
    const bool positional = number.exponent >= -4 && number.exponent < count;
    return positional ? layOutFixed(out, number, false) : layOutExponent(out, number, false);
}

char* printGcvt(char* out, double value, int significant) {
    if (!std::isfinite(value)) return printSpecial(out, value);
    const int count = std::clamp(significant, 1, kMaxPrecision);
    Significant number;
    roundSignificant(std::fabs(value), count, number);
    dropZeros(number);
    out = printSign(out, value);
    const bool positional = number.exponent >= -1 && number.exponent < count;
    return positional ? layOutFixed(out, number, true) : layOutExponent(out, number, true);
}

int integerDigits(double magnitude) {
    constexpr double kEnd = 1e19;
    if (magnitude < kEnd) return digitCount(static_cast<std::uint64_t>(magnitude));
    char text[kNumberTextMax];  // a value of this size has no fraction to round
    return static_cast<int>(printFixed(text, magnitude, 0) - text);
}

void decimalDigits(double value, int decimals, DecimalDigits& out) {
    decimals = clampPrecision(decimals);
    out.negative = std::signbit(value);
    char* end = printFixed(out.text, std::fabs(value), decimals);
    char* const point = std::find(out.text, end, '.');
    const auto whole = static_cast<int>(point - out.text);
    if (point != end) end = std::copy(point + 1, end, point);
    char* const first = std::find_if(out.text, end, [](char c) { return c != kZero; });
    out.point = first == end ? -decimals : whole - static_cast<int>(first - out.text);
    out.count = static_cast<int>(std::copy(first, end, out.text) - out.text);
}

}  // namespace toolbox::base
