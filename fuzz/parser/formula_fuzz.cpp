// A text is a formula for the grid exactly when it is one for the grid that goes step by step, and
// both give the same value; its diagnosis says the same and changes nothing.

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "literal_grid.h"
#include "require.h"
#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::FormulaFault;

bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

class Sheet {
  public:
    Sheet() {
        const char* const column[] = {"3", "-0.5", "1e200", "a text", "A1/8", "7e-9"};
        int row = 0;
        for (const char* text : column) {
            grid_.setCell(row, row % 3, text);
            steps_.setCell(row, row % 3, text);
            ++row;
        }
    }

    /// Puts the text in J10 of both grids.
    void check(const std::string& text) {
        Parser::setError(3);
        const auto diagnosis = toolbox::diagnoseFormula(text.c_str());
        require(Parser::isError() == 3);
        require(diagnosis.position <= text.size());
        std::string given = text;
        grid_.setCell(9, 9, given.data());
        steps_.setCell(9, 9, text.c_str());
        const literal::Record& expected = *steps_.record(9, 9);
        const CellKind kind = grid_.cellKind(9, 9);
        require(kind == diagnosis.kind && static_cast<int>(kind) == expected.kind);
        require((kind == CellKind::text) == (diagnosis.fault != FormulaFault::none));
        require((diagnosis.fault == FormulaFault::tooDeep) == steps_.stackOverflowed());
        require(given == expected.text);
        if (kind == CellKind::text) {
            require(grid_.cellText(9, 9).str() == text);
        } else {
            const double value = grid_.getCell(9, 9);
            require(same(value, steps_.getCell(9, 9)));
            require((Parser::isError() != 0) == (value == HUGE_VAL));
        }
        require(toolbox::cellsNamedBy(text.c_str()).empty() == (kind != CellKind::formula));
        grid_.setCell(9, 9, 0);
        steps_.setCell(9, 9, "0");
    }

  private:
    Parser grid_;
    literal::Grid steps_;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The grid tells on standard output when a formula nests too deep.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));
    static Sheet sheet;
    if (text.size() < literal::kLongestText) sheet.check(text);
    return 0;
}
