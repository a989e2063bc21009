// What the grid makes of any text is what its diagnosis says, which changes nothing; and a formula
// has the same value when it is written out and read once more.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "require.h"
#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::FormulaFault;

bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void check(Parser& grid, const std::string& text) {
    Parser::setError(3);
    const auto diagnosis = toolbox::diagnoseFormula(text.c_str());
    require(Parser::isError() == 3);
    require(diagnosis.position <= text.size());
    grid.setCell(9, 9, text.c_str());
    const CellKind kind = grid.cellKind(9, 9);
    require(kind == diagnosis.kind);
    require((kind == CellKind::text) == (diagnosis.fault != FormulaFault::none));
    const auto named = toolbox::cellsNamedBy(text.c_str());
    require(named.empty() == (kind != CellKind::formula));
    if (kind == CellKind::text) {
        require(grid.cellText(9, 9).str() == text);
        return;
    }
    const double value = grid.getCell(9, 9);
    require((Parser::isError() != 0) == (value == HUGE_VAL));
    const auto isItself = [](const auto& cell) { return cell.row == 9 && cell.col == 9; };
    if (kind == CellKind::formula && std::ranges::none_of(named, isItself)) {
        grid.setCell(9, 8, grid.cellText(9, 9).c_str());
        require(same(grid.getCell(9, 8), value));
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The grid tells on standard output when a formula nests too deep.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));
    Parser grid;
    int row = 0;
    for (const char* cell : {"3", "-0.5", "1e200", "a text", "A1/8", "7e-9"}) {
        grid.setCell(row, row % 3, cell);
        ++row;
    }
    check(grid, text);
    return 0;
}
