// Formulas by recursive descent, with nothing in common with the library's parser but the language.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace recursive {

/// Values of the cells by column and row.
using Cells = std::array<std::array<double, 10>, 10>;

struct Answer {
    double value;
    bool namesCell;
};

/// Nothing when `text` is not a valid formula. Only the machine limits its depth.
std::optional<Answer> evaluate(std::string_view text, const Cells& cells);

}  // namespace recursive
