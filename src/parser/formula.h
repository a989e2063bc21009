// Parses a formula and computes its value in the same pass.
#pragma once

#include <cstddef>
#include <vector>

#include "parser/program.h"
#include "toolbox/parser.h"

namespace toolbox::parser {

struct Parsed {
    CellKind kind = CellKind::text;  ///< text (not a formula), value (names no cell) or formula
    double value = 0;                ///< 0 when not a formula
    FormulaFault fault = FormulaFault::none;
    std::size_t position = 0;  ///< of the fault
    std::size_t tokens = 0;    ///< tokens read: no program of this text has more steps
};

/// Allocates nothing, changes nothing but what `out` writes to, and takes a time proportional to
/// the text's length.
[[nodiscard]] Parsed parseFormula(const char* text, const CellTable& cells, Emitter& out);

/// The program of a text that parsed as a formula with that many tokens.
[[nodiscard]] std::vector<Step> compileFormula(const char* text, std::size_t tokens);

/// For a parse whose value does not matter.
inline const CellTable kNoCells{};

}  // namespace toolbox::parser
