#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "generated_formulas.h"
#include "literal_grid.h"
#include "toolbox/parser.h"

namespace {

/// Bit for bit, but that any not-a-number equals any other.
bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

TEST(Grid, AgreesWithOneThatGoesStepByStep) {
    Parser grid;
    literal::Grid steps;
    FormulaGenerator generate(1);
    int formulas = 0;
    testing::internal::CaptureStdout();
    for (int i = 0; i < 50'000; ++i) {
        const int row = static_cast<int>(generate.below(10));
        const int col = static_cast<int>(generate.below(10));
        const std::string given = generate.next();
        std::string text = given;
        grid.setCell(row, col, text.data());
        steps.setCell(row, col, given.c_str());
        const literal::Record& expected = *steps.record(row, col);
        formulas += expected.kind == 2;
        ASSERT_EQ(static_cast<int>(grid.cellKind(row, col)), expected.kind) << given;
        ASSERT_EQ(text, expected.text) << given;
        ASSERT_EQ(toolbox::diagnoseFormula(given.c_str()).fault == toolbox::FormulaFault::tooDeep,
                  steps.stackOverflowed())
            << given;
        const int readRow = static_cast<int>(generate.below(10));
        const int readCol = static_cast<int>(generate.below(10));
        for (const auto& [r, c] : {std::pair(row, col), std::pair(readRow, readCol)}) {
            if (!steps.record(r, c)) continue;
            Parser::setError(0);
            literal::Grid::error = false;
            const double ours = grid.getCell(r, c);
            ASSERT_PRED2(same, ours, steps.getCell(r, c)) << steps.record(r, c)->text;
            ASSERT_EQ(Parser::isError() != 0, literal::Grid::error);
        }
    }
    testing::internal::GetCapturedStdout();
    EXPECT_GT(formulas, 20'000) << "the generated texts test too little";
}

}  // namespace
