// Numbers in fixed notation, without the zeros that say nothing.
#include "drawing/drawing_amounts.h"

#include <array>
#include <charconv>
#include <string>

CString amount(double value, int decimals, const char* unit) {
    std::array<char, 400> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    std::string figure(digits.data(), end);
    if (figure.find('.') != std::string::npos) {
        figure.erase(figure.find_last_not_of('0') + 1);
        if (figure.back() == '.') figure.pop_back();
    }
    if (figure == "-0") figure = "0";
    if (*unit) figure = figure + " " + unit;
    return figure;
}
