// Numbers of drawing files: rounded, without zeros at the end, never "-0" and never an exponent.
#pragma once

#include <string>

#include "base/number_text.h"
#include "base/short_number.h"
#include "toolbox/canvas_text.h"

namespace toolbox::canvas {

/// Decimals of lengths in points: a third of a micrometre.
inline constexpr int kLengthDecimals = 3;
/// Decimals of sines and cosines.
inline constexpr int kFactorDecimals = 6;

/// Appends a finite value of at most 1e9.
inline void appendNumber(std::string& out, double value, int decimals = kLengthDecimals) {
    base::ShortNumber number{};
    if (!base::roundFixed(value, decimals, number)) return;  // not for such values
    while (number.decimals > 0 && number.digits % 10 == 0) {
        number.digits /= 10;
        --number.decimals;
    }
    if (number.digits == 0) number.negative = false;
    char text[base::ShortNumber::kMaxLength];
    out.append(text, number.write(text));
}

/// Appends a length that must not become 0, which files take for something else.
inline void appendPositive(std::string& out, double length) {
    constexpr double kLeast = 0.001;
    appendNumber(out, length > kLeast ? length : kLeast);
}

/// Appends "x y ", the form in which both kinds of files take points.
inline void appendPoint(std::string& out, TvPoint point) {
    appendNumber(out, point.x);
    out += ' ';
    appendNumber(out, point.y);
    out += ' ';
}

/// Appends a whole number.
inline void appendCount(std::string& out, std::size_t count) {
    char digits[20];
    char* const end = digits + sizeof digits;
    char* start = end;
    do {
        *--start = static_cast<char>('0' + count % 10);
        count /= 10;
    } while (count != 0);
    out.append(start, end);
}

/// Appends the last hexadecimal digits of a number.
inline void appendHex(std::string& out, char32_t value, int digits) {
    constexpr char kHex[] = "0123456789ABCDEF";
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out += kHex[value >> shift & 0xF];
}

}  // namespace toolbox::canvas
