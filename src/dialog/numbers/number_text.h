// Texts of typed numbers. They do not depend on the language: the decimal sign is a point.
#pragma once

#include <string>

#include "toolbox/formats.h"

namespace toolbox::numbers {

/// As few digits as read back to the same bits; an exponent of at least three digits outside 1e-5
/// to 1e16.
template <class T>
[[nodiscard]] std::string shortestText(T value);

/// The layout of a number in a column.
struct NumberLayout {
    int width = 0;      ///< 0 for none
    int decimals = -1;  ///< -1 for as many as the number needs
    Justification justification = Right;
};

/// Without blanks around it. Not rounded where that is shorter than what does not fit the width.
template <class T>
[[nodiscard]] std::string roundedText(T value, const NumberLayout& layout);

/// Filled up with blanks to the width.
[[nodiscard]] std::string justified(std::string text, const NumberLayout& layout);

}  // namespace toolbox::numbers
