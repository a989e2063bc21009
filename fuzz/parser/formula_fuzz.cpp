// A text is a formula for the grid exactly when it is one for an evaluator that works another way,
// but for formulas that nest too deep, and both give the same value.

#include <bit>
#include <cstdint>
#include <cstdio>
#include <tuple>

#include "recursive_evaluator.h"
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
        const std::tuple<std::size_t, std::size_t, double> filled[] = {
            {0, 0, 3}, {0, 1, -0.5}, {1, 0, 1e200}, {2, 6, 0.125}, {9, 8, -7e-9}};
        for (const auto& [col, row, value] : filled) {
            grid_.setCell(static_cast<int>(row), static_cast<int>(col), value);
            cells_[col][row] = value;
        }
        grid_.setCell("B2", "a text");
        cells_[1][1] = HUGE_VAL;
    }

    /// Puts the text in J10 and holds the grid to the other evaluator's answer.
    void check(const std::string& text) {
        std::string capitals = text;
        for (char& c : capitals)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        const auto expected = recursive::Descent(capitals, cells_).all();

        Parser::setError(3);
        const auto diagnosis = toolbox::diagnoseFormula(text.c_str());
        require(Parser::isError() == 3);
        require(diagnosis.position <= text.size());
        std::string given = text;
        grid_.setCell("J10", given.data());
        const CellKind kind = grid_.cellKind(9, 9);
        require(kind == diagnosis.kind);
        if (kind == CellKind::text) {
            require(!expected || diagnosis.fault == FormulaFault::tooDeep);
            require(diagnosis.fault != FormulaFault::none);
            require(given == text && grid_.cellText(9, 9).str() == text);
        } else {
            require(expected.has_value() && given == capitals);
            require(expected->namesCell == (kind == CellKind::formula));
            // The first read computes with the value that setting gave J10, should it be named.
            cells_[9][9] = expected->value;
            const double value = recursive::Descent(capitals, cells_).all()->value;
            require(same(grid_.getCell("J10"), value));
            require((Parser::isError() != 0) == (value == HUGE_VAL));
        }
        require(toolbox::cellsNamedBy(text.c_str()).empty() == (kind != CellKind::formula));
        grid_.setCell("J10", 0);
        cells_[9][9] = 0;
    }

  private:
    Parser grid_;
    recursive::Cells cells_{};
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
    sheet.check(text);
    return 0;
}
