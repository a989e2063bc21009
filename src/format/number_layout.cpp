#include "format/number_layout.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/number_text.h"
#include "format/field.h"

namespace toolbox::format {
namespace {

// Columns that an exponent form needs beside its decimals: digit, point, "e", sign and two digits
// of the exponent. Its third digit is not counted, so a full field loses its last character.
constexpr long long kExponentColumns = 6;

using Scratch = char[base::kNumberTextMax];

/// The printed form of a value in a field. Decimals that no double has are zeros, put in here so
/// that the scratch text stays bounded whatever the precision.
RWCString printed(double value, bool exponentForm, long long precision, int width,
                  Justification justify) {
    Scratch text;
    const long long decimals = std::max(precision, 0LL);
    const int kept = static_cast<int>(std::min<long long>(decimals, base::kMaxPrecision));
    const char* const end =
        exponentForm ? base::printExponent(text, value, kept) : base::printFixed(text, value, kept);
    const std::string_view view(text, static_cast<std::size_t>(end - text));
    if (decimals == kept || !std::isfinite(value)) return inField(view, width, justify);
    const std::size_t at = exponentForm ? view.find('e') : view.size();
    return inField(view, at, static_cast<std::size_t>(decimals - kept), width, justify);
}

RWCString printedWithExponent(double value, long long precision, int sign, int width,
                              Justification justify) {
    const long long room = width - (sign + kExponentColumns);
    return printed(value, true, std::min(precision, room), width, justify);
}

/// Digits of the integer part, 1 for a value below 1. Counted exactly: the logarithm of a value
/// just below a power of ten is that of the power itself in floating point.
long long integerDigits(double magnitude) {
    constexpr double kExact[] = {1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const double* const above = std::upper_bound(std::begin(kExact), std::end(kExact), magnitude);
    if (above != std::end(kExact)) return above - std::begin(kExact) + 1;
    Scratch text;  // greater powers of ten are not doubles; such a value has no fraction to round
    return base::printFixed(text, magnitude, 0) - text;
}

}  // namespace

RWCString layOutNumber(int value, int width, Justification justify) {
    char text[12];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    const int sign = value < 0 ? 1 : 0;
    const long long digits = end - text - sign;
    if (digits > static_cast<long long>(width) - sign)
        return printedWithExponent(value, width, sign, width, justify);
    return inField({text, static_cast<std::size_t>(end - text)}, width, justify);
}

RWCString layOutReal(double value, int width, int precision, Justification justify) {
    if (!std::isfinite(value)) return printed(value, false, 0, width, justify);
    const int sign = value <= 0.0 ? 1 : 0;
    const long long digits = integerDigits(std::fabs(value));
    const long long room = static_cast<long long>(width) - sign;
    if (digits >= room) return printedWithExponent(value, precision, sign, width, justify);
    return printed(value, false, std::min<long long>(precision, room - digits - 1), width, justify);
}

}  // namespace toolbox::format
