// Lays integers, reals and texts out in fields. A number that fits 64 bits is rounded first and
// then written into its place in the field; any other goes through a scratch text.
#include "format/layout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

#include "base/number_text.h"
#include "base/short_number.h"

namespace toolbox::format {
namespace {

// Columns that an exponent form needs beside its decimals: digit, point, "e", sign and two digits
// of the exponent. Its third digit is not counted, so a full field loses its last character.
constexpr long long kExponentColumns = 6;

using Scratch = char[base::kNumberTextMax];

/// A field of `width` blanks that takes a text of `length` characters, which `write` writes to the
/// place it is given. The text is not longer than the field.
template <class Write>
RWCString writtenInField(int length, int width, Justification justify, Write write) {
    RWCString field;
    field.str().assign(static_cast<std::size_t>(width), ' ');
    write(field.str().data() + (justify == Left ? 0 : width - length));
    return field;
}

RWCString paddedOrCut(std::string_view text, int width, Justification justify) {
    if (width <= 0) return {};
    const auto columns = static_cast<std::size_t>(width);
    if (text.size() >= columns) return text.substr(0, columns);
    return writtenInField(static_cast<int>(text.size()), width, justify,
                          [&](char* out) { text.copy(out, text.size()); });
}

/// What `layOut` gives, or nothing when memory does not suffice.
template <class LayOut>
RWCString asFarAsMemoryGoes(LayOut layOut) {
    try {
        return layOut();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/// The printed form of a value in a field, by way of a scratch text. Decimals beyond those of any
/// double are zeros, added here: so the scratch text stays bounded whatever the precision.
RWCString printedLong(double value, bool exponentForm, long long decimals, int width,
                      Justification justify) {
    Scratch text;
    const int kept = static_cast<int>(std::min<long long>(decimals, base::kMaxPrecision));
    const char* const end =
        exponentForm ? base::printExponent(text, value, kept) : base::printFixed(text, value, kept);
    const std::string_view view(text, static_cast<std::size_t>(end - text));
    if (decimals == kept || !std::isfinite(value)) return paddedOrCut(view, width, justify);
    std::string longer(view);
    longer.insert(exponentForm ? view.find('e') : view.size(),
                  static_cast<std::size_t>(decimals - kept), '0');
    return paddedOrCut(longer, width, justify);
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
    return paddedOrCut(std::string_view(text, number.write(text)), width, justify);
}

RWCString printedWithExponent(double value, long long precision, int sign, int width,
                              Justification justify) {
    const long long room = width - (sign + kExponentColumns);
    return printed(value, true, std::min(precision, room), width, justify);
}

base::ShortNumber wholeNumber(int value) {
    return {static_cast<std::uint64_t>(std::abs(static_cast<long long>(value))), 0,
            base::ShortNumber::kNoExponent, value < 0};
}

RWCString numberInField(int value, int width, Justification justify) {
    const base::ShortNumber number = wholeNumber(value);
    const int length = number.length();
    if (length > width) return printedWithExponent(value, width, value < 0, width, justify);
    return writtenInField(length, width, justify, [&](char* out) { number.write(out); });
}

RWCString realInField(double value, int width, int precision, Justification justify) {
    if (!std::isfinite(value)) return printedLong(value, false, 0, width, justify);
    const int sign = value <= 0.0 ? 1 : 0;
    const long long digits = base::integerDigits(std::fabs(value));
    const long long room = static_cast<long long>(width) - sign;
    if (digits >= room) return printedWithExponent(value, precision, sign, width, justify);
    return printed(value, false, std::min<long long>(precision, room - digits - 1), width, justify);
}

}  // namespace

RWCString inField(std::string_view text, int width, Justification justify) {
    // A text longer than the widest field is not padded, and cut only where the width says so.
    if (static_cast<std::size_t>(std::max(width, 0)) > text.size())
        width = std::min(width, std::max(kWidestField, static_cast<int>(text.size())));
    return asFarAsMemoryGoes([&] { return paddedOrCut(text, width, justify); });
}

RWCString layOutNumber(int value, int width, Justification justify) {
    width = std::min(width, kWidestField);
    return asFarAsMemoryGoes([&] { return numberInField(value, width, justify); });
}

RWCString layOutReal(double value, int width, int precision, Justification justify) {
    width = std::min(width, kWidestField);
    return asFarAsMemoryGoes([&] { return realInField(value, width, precision, justify); });
}

bool numberFits(int value, int width) {
    return wholeNumber(value).length() <= width;
}

bool realFits(double value, int width, int precision) {
    width = std::min(width, kWidestField);
    Scratch text;
    if (!std::isfinite(value)) return base::printFixed(text, value, 0) - text <= width;
    // Where the layout takes an exponent or fewer decimals there is no room for all of them.
    const long long decimals = std::max(precision, 0);
    const long long room = static_cast<long long>(width) - (value <= 0.0 ? 1 : 0);
    const long long digits = base::integerDigits(std::fabs(value));
    if (digits >= room || decimals > room - digits - 1) return false;
    // Rounding may give a digit more. Decimals beyond kMaxPrecision are zeros.
    const int printed = static_cast<int>(std::min<long long>(decimals, base::kMaxPrecision));
    return base::printFixed(text, value, printed) - text + (decimals - printed) <= width;
}

}  // namespace toolbox::format
