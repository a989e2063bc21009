#include "literal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

namespace literal {
namespace {

/// The C library here writes two exponent digits: puts in a third, for which `text` has room. False
/// when there are three.
bool widenExponent(char* text) {
    char* const mark = std::strchr(text, 'e');
    if (!mark || (mark[4] >= '0' && mark[4] <= '9')) return false;
    std::memmove(mark + 3, mark + 2, std::strlen(mark + 2) + 1);
    mark[2] = '0';
    return true;
}

RWCString cut(const char* text, int width) {
    const std::size_t length = std::strlen(text);
    return {text, std::min(length, static_cast<std::size_t>(std::max(width, 0)))};
}

void printExponent(char* text, std::size_t room, double value, int field, int precision,
                   Justification justify) {
    if (justify == Left)
        std::snprintf(text, room, "%-*.*e", field, precision, value);
    else
        std::snprintf(text, room, "%*.*e", field, precision, value);
}

RWCString withExponent(double value, int width, int precision, Justification justify) {
    const auto room = static_cast<std::size_t>(std::max(width, precision + 10)) + 2;
    const std::unique_ptr<char[]> text(new char[room]);
    printExponent(text.get(), room, value, std::max(width - 1, 0), precision, justify);
    if (!widenExponent(text.get()))
        printExponent(text.get(), room, value, width, precision, justify);
    return cut(text.get(), width);
}

}  // namespace

int digits(double value) {
    return std::trunc(value) == 0 ? 1 : static_cast<int>(std::log10(std::fabs(value))) + 1;
}

RWCString number(int value, int width, Justification justify) {
    const int count = value == 0 ? 1 : static_cast<int>(std::log10(std::fabs(value))) + 1;
    const int sign = value < 0 ? 1 : 0;
    if (count > width - sign)
        return withExponent(value, width, std::max(width - (sign + 6), 0), justify);
    const auto room = static_cast<std::size_t>(std::max(width, 11)) + 1;
    const std::unique_ptr<char[]> text(new char[room]);
    if (justify == Left)
        std::snprintf(text.get(), room, "%-*d", width, value);
    else
        std::snprintf(text.get(), room, "%*d", width, value);
    return cut(text.get(), width);
}

RWCString real(double value, int width, int precision, Justification justify) {
    const int count = digits(value);
    const int sign = value <= 0.0 ? 1 : 0;
    if (count >= width - sign) {
        if (width < precision + sign + 6) precision = width - (sign + 6);
        return withExponent(value, width, std::max(precision, 0), justify);
    }
    if (width < count + precision + 1 + sign) precision = width - count - sign - 1;
    precision = std::max(precision, 0);
    const auto room = static_cast<std::size_t>(std::max(width, count + precision + 3)) + 1;
    const std::unique_ptr<char[]> text(new char[room]);
    if (justify == Left)
        std::snprintf(text.get(), room, "%-*.*f", width, precision, value);
    else
        std::snprintf(text.get(), room, "%*.*f", width, precision, value);
    return cut(text.get(), width);
}

}  // namespace literal
