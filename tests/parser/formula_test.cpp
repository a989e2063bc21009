#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::FormulaFault;

/// The two sides of each entry of a list "left = right | left = right".
std::vector<std::pair<std::string, std::string>> entries(const std::string& list) {
    std::vector<std::pair<std::string, std::string>> all;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t middle = list.find(" = ", at);
        const std::size_t end = std::min(list.find(" | ", middle), list.size());
        all.emplace_back(list.substr(at, middle - at), list.substr(middle + 3, end - middle - 3));
        at = end + 3;
    }
    return all;
}

/// A1 to A3 are 1 to 3, B1 and C1 are 10 and 100, D1 is a text.
class Formula : public testing::Test {
  protected:
    Formula() {
        for (int row = 0; row < 3; ++row) grid_.setCell(row, 0, row + 1);
        grid_.setCell("B1", 10);
        grid_.setCell("C1", 100);
        grid_.setCell("D1", "weight");
    }

    CellKind kindOf(const std::string& text) {
        grid_.setCell("J10", text.c_str());
        return grid_.cellKind(9, 9);
    }
    double valueOf(const std::string& text) {
        grid_.setCell("J10", text.c_str());
        return grid_.getCell("J10");
    }
    void expectValues(const std::string& list) {
        for (const auto& [text, value] : entries(list)) {
            EXPECT_EQ(valueOf(text), std::strtod(value.c_str(), nullptr)) << text;
            EXPECT_NE(kindOf(text), CellKind::text) << text;
        }
    }

    Parser grid_;
};

// A second evaluator, which agrees on generated formulas, could share what is misread here.
TEST_F(Formula, ComputesByTheRulesOfPrecedence) {
    expectValues(
        "1+2*3 = 7 | (1+2)*3 = 9 | 8-3-2 = 3 | 8/4/2 = 1 | 2^3^2 = 512 | -2^2 = 4 | 2^-1 = 0.5 | "
        "2--3 = 5 | -(2+3)*2 = -10 |   1 + 2  = 3 | a1:a3*2 = 12 | A1:C1 = 111 | -A1:A3 = -6 | "
        "A2:A2 = 2 | A01+A3 = 4 | E5:E9 = 0 | 1/0 = inf | D1 = inf | -D1 = -inf | 1/D1 = 0 | "
        "C1:D1 = inf | -1/0 = inf | A3-A2-A1-1*B1/B1/2 = -0.5 | "
        "(((((((((((((((((7))))))))))))))))) = 7 | 1^1^1^1^1^1^1^1^1^A3 = 1");
    EXPECT_TRUE(std::signbit(valueOf("-0")));
    EXPECT_FALSE(std::signbit(valueOf("0-0")));
}

TEST_F(Formula, CallsEachFunctionUnderItsLongestName) {
    expectValues(
        "ABS(-3) = 3 | LOG10(1000) = 3 | POW10(3) = 1000 | ROUNDDOWN(-2.5) = -3 | "
        "ROUNDUP(2.1) = 3 | round(2.3) = 3 | ROUND(2) = 3 | ROUND(-2.5) = -2 | SQR(1.5) = 2.25 | "
        "SQRT(4) = 2 | TRUNC(-2.5) = -3 | Abs (A1 - B1) = 9 | 2*SQR(A3)^2 = 162");
    EXPECT_TRUE(std::isnan(valueOf("SQRT(-1)")));
}

TEST_F(Formula, IsDiagnosedWithoutAnyOtherEffect) {
    const std::pair<FormulaFault, const char*> cases[] = {
        {FormulaFault::empty, " = 0 |     = 3"},
        {FormulaFault::operandExpected, "() = 1 | 1+ = 2 | 1+*2 = 2 | --3 = 1 | +3 = 0"},
        {FormulaFault::operatorExpected, "1 2 = 2 | 2(3) = 1 | 2A1 = 1 | 1.5 .2 = 4"},
        {FormulaFault::badNumber,
         "1+. = 2 | .E5 = 0 | 1.5.2 = 0 | 2*1E1234 = 2 | 1E5.5 = 0 | 1.. = 0"},
        {FormulaFault::numberOutOfRange, "1+1E309 = 2 | 1E-400 = 0"},
        {FormulaFault::unknownName, "K1 = 0 | A11 = 0 | 1+A0 = 2 | AA1 = 0 | A = 0 | ABSX = 3"},
        {FormulaFault::unknownName, "A012 = 0 | 1+A100 = 2 | SUM(A1) = 0 | A1:A100 = 3"},
        {FormulaFault::decimalComma, "1,5 = 1 | SIN(2*0,5) = 7 | 1.,5 = 2"},
        {FormulaFault::parenthesisExpected, "SIN 2 = 4 | SIN = 3"},
        {FormulaFault::unopened, "1) = 1"},
        {FormulaFault::unclosed, "(1+2 = 0 | SIN(2 = 3 | 2*((1)+(3 = 7 | (((1)) = 0"},
        {FormulaFault::cellExpected, "A1: = 3 | A1:3 = 3"},
        {FormulaFault::badRange, "A3:A1 = 3 | C1:A1 = 3 | 2*A1:B2 = 5"},
        {FormulaFault::badCharacter, "1#2 = 1 | A1,5 = 2 | 1 ,5 = 2 | 1\t+2 = 1 | \351 = 0"},
        {FormulaFault::tooDeep, "((((((((((((((((((7)))))))))))))))))) = 19"},
    };
    Parser::setError(5);
    testing::internal::CaptureStdout();
    for (const auto& [fault, list] : cases)
        for (const auto& [text, position] : entries(list)) {
            const auto found = toolbox::diagnoseFormula(text.c_str());
            EXPECT_EQ(found.fault, fault) << text;
            EXPECT_EQ(found.position, std::stoul(position)) << text;
            EXPECT_EQ(found.kind, CellKind::text) << text;
        }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(Parser::isError(), 5);
    EXPECT_EQ(toolbox::diagnoseFormula("1+A2").fault, FormulaFault::none);
}

TEST_F(Formula, MayBeAsLongAsOneLikes) {
    std::string text = "A1";
    while (text.size() < 1 << 20) text += "+a2*2";
    EXPECT_EQ(kindOf(text), CellKind::formula);
    EXPECT_EQ(valueOf(text), 1 + 4 * static_cast<double>(text.size() / 5));
    EXPECT_EQ(kindOf(std::string(1 << 20, '7')), CellKind::text);
}

}  // namespace
