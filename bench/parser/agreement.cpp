#include "agreement.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "generated_formulas.h"
#include "literal_grid.h"
#include "toolbox/parser.h"

namespace {

bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

struct Pair {
    Parser grid;
    literal::Grid steps;

    bool setsTheSame(int row, int col, const std::string& given) {
        std::string text = given;
        grid.setCell(row, col, text.data());
        steps.setCell(row, col, given.c_str());
        const literal::Record& expected = *steps.record(row, col);
        const bool tooDeep =
            toolbox::diagnoseFormula(given.c_str()).fault == toolbox::FormulaFault::tooDeep;
        return static_cast<int>(grid.cellKind(row, col)) == expected.kind &&
               text == expected.text && tooDeep == steps.stackOverflowed();
    }

    bool readsTheSame(int row, int col) {
        if (!steps.record(row, col)) return grid.getCell(row, col) == 0;
        Parser::setError(0);
        literal::Grid::error = false;
        return same(grid.getCell(row, col), steps.getCell(row, col)) &&
               (Parser::isError() != 0) == literal::Grid::error;
    }
};

}  // namespace

Agreement compareGrids(long texts, unsigned seed) {
    Pair pair;
    FormulaGenerator generate(seed);
    Agreement result;
    for (long i = 0; i < texts && result.agrees; ++i) {
        const auto place = [&] { return static_cast<int>(generate.below(10)); };
        const int row = place();
        const int col = place();
        const int otherRow = place();
        const int otherCol = place();
        const std::string text = generate.next();
        if (pair.setsTheSame(row, col, text) && pair.readsTheSame(row, col) &&
            pair.readsTheSame(otherRow, otherCol)) {
            result.formulas += pair.steps.record(row, col)->kind == 2;
        } else {
            result.agrees = false;
            result.differsOn = text;
        }
    }
    return result;
}
