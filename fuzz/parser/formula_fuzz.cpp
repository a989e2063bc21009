// What the grid makes of any text is what its diagnosis says, which changes nothing.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "require.h"
#include "toolbox/parser.h"

using toolbox::CellKind;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The grid tells on standard output when a formula nests too deep.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));
    Parser::setError(3);
    const auto diagnosis = toolbox::diagnoseFormula(text.c_str());
    require(Parser::isError() == 3);
    require(diagnosis.position <= text.size());
    Parser grid;
    grid.setCell("A1", 3);
    grid.setCell(9, 9, text.c_str());
    const CellKind kind = grid.cellKind(9, 9);
    require(kind == diagnosis.kind);
    require((kind == CellKind::text) == (diagnosis.fault != toolbox::FormulaFault::none));
    require(toolbox::cellsNamedBy(text.c_str()).empty() == (kind != CellKind::formula));
    if (kind == CellKind::text)
        require(grid.cellText(9, 9).str() == text);
    else
        require((grid.getCell(9, 9) == HUGE_VAL) == (Parser::isError() != 0));
    return 0;
}
