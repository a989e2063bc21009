#include "format/number_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/number_text.h"
#include "base/short_number.h"
#include "format/field.h"

namespace toolbox::format {
namespace {

// Columns that an exponent form needs beside its decimals: digit, point, "e", sign and two digits
// of the exponent. Its third digit is not counted, so a full field loses its last character.
constexpr long long kExponentColumns = 6;

using Scratch = char[base::kNumberTextMax];

/// The printed form of a value in a field, by way of a scratch text. Decimals that no double has
/// are zeros, put in here so that the scratch text stays bounded whatever the precision.
RWCString printedLong(double value, bool exponentForm, long long decimals, int width,
                      Justification justify) {
    Scratch text;
    const int kept = static_cast<int>(std::min<long long>(decimals, base::kMaxPrecision));
    const char* const end =
        exponentForm ? base::printExponent(text, value, kept) : base::printFixed(text, value, kept);
    const std::string_view view(text, static_cast<std::size_t>(end - text));
    if (decimals == kept || !std::isfinite(value)) return inField(view, width, justify);
    std::string longer(view);
    longer.insert(exponentForm ? view.find('e') : view.size(),
                  static_cast<std::size_t>(decimals - kept), '0');
    return inField(longer, width, justify);
}

RWCString printed(double value, bool exponentForm, long long precision, int width,
                  Justification justify) {
    const long long decimals = std::max(precision, 0LL);
    base::ShortNumber number;
    const auto round = exponentForm ? base::roundExponent : base::roundFixed;
    if (decimals > base::kMaxPrecision || !round(value, static_cast<int>(decimals), number))
        return printedLong(value, exponentForm, decimals, width, justify);
    if (const int length = number.length(); length <= width)
        return writtenInField(length, width, justify, [&](char* out) { number.write(out); });
    char text[base::ShortNumber::kMaxLength];
    return inField(std::string_view(text, number.write(text)), width, justify);
}

RWCString printedWithExponent(double value, long long precision, int sign, int width,
                              Justification justify) {
    const long long room = width - (sign + kExponentColumns);
    return printed(value, true, std::min(precision, room), width, justify);
}

}  // namespace

RWCString layOutNumber(int value, int width, Justification justify) {
    const int sign = value < 0 ? 1 : 0;
    const base::ShortNumber number{
        static_cast<std::uint64_t>(std::abs(static_cast<long long>(value))), 0,
        base::ShortNumber::kNoExponent, value < 0};
    const int length = number.length();
    if (length > width) return printedWithExponent(value, width, sign, width, justify);
    return writtenInField(length, width, justify, [&](char* out) { number.write(out); });
}

RWCString layOutReal(double value, int width, int precision, Justification justify) {
    if (!std::isfinite(value)) return printedLong(value, false, 0, width, justify);
    const int sign = value <= 0.0 ? 1 : 0;
    const long long digits = base::integerDigits(std::fabs(value));
    const long long room = static_cast<long long>(width) - sign;
    if (digits >= room) return printedWithExponent(value, precision, sign, width, justify);
    return printed(value, false, std::min<long long>(precision, room - digits - 1), width, justify);
}

}  // namespace toolbox::format
