#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <set>
#include <string>

#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::FormulaFault;

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

    Parser grid_;
};

TEST_F(Formula, ComputesByTheRulesOfPrecedence) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"1+2*3", 7},
        {"(1+2)*3", 9},
        {"8-3-2", 3},
        {"8/4/2", 1},
        {"2^3^2", 512},
        {"-2^2", 4},
        {"2^-1", 0.5},
        {"2*-3", -6},
        {"2--3", 5},
        {"-(2+3)*2", -10},
        {"2*3^2", 18},
        {"(2*3)^2", 36},
        {"  1 + 2 ", 3},
        {"A1:A3", 6},
        {"a1:a3*2", 12},
        {"A1:C1", 111},
        {"-A1:A3", -6},
        {"A2:A2", 2},
        {"A1+B1*C1", 1001},
        {"(A1+B1)*C1", 1100},
        {"A01+A3", 4},
        {"E5", 0},
        {"E5:E9", 0},
        {"2^(A1:A3)", 64},
        {"1/0", HUGE_VAL},
        {"A1/(B1-10)", HUGE_VAL},
        {"D1", HUGE_VAL},
        {"-D1", -HUGE_VAL},
        {"1/D1", 0},
        {"C1:D1", HUGE_VAL},
        {"-1/0", HUGE_VAL},
        {"A3-A2-A1-1*B1/B1/2", -0.5},
        {"(((((((((((((((((7)))))))))))))))))", 7},  // 17 pairs
        {"1^1^1^1^1^1^1^1^1^A3", 1},                 // 9 operators
    };
    for (const auto& c : cases) {
        EXPECT_EQ(valueOf(c.text), c.value) << c.text;
        EXPECT_NE(kindOf(c.text), CellKind::text) << c.text;
    }
}

TEST_F(Formula, KeepsTheSignOfZero) {
    EXPECT_TRUE(std::signbit(valueOf("-0")));
    EXPECT_FALSE(std::signbit(valueOf("0-0")));
}

TEST_F(Formula, CallsEachFunctionUnderItsLongestName) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"ABS(-3)", 3},
        {"acos(0.5)", std::acos(0.5)},
        {"ASIN(0.5)", std::asin(0.5)},
        {"ATAN(2)", std::atan(2.0)},
        {"COSH(2)", std::cosh(2.0)},
        {"COS(2)", std::cos(2.0)},
        {"EXP(1.5)", std::exp(1.5)},
        {"LOG10(1000)", std::log10(1000.0)},
        {"LOG(1000)", std::log(1000.0)},
        {"POW10(3)", 1000},
        {"ROUNDDOWN(-2.5)", -3},
        {"ROUNDUP(2.1)", 3},
        {"round(2.3)", 3},
        {"ROUND(2)", 3},
        {"ROUND(-2.5)", -2},
        {"SINH(2)", std::sinh(2.0)},
        {"SIN(2)", std::sin(2.0)},
        {"SQRT(2)", std::sqrt(2.0)},
        {"SQR(1.5)", 2.25},
        {"TANH(2)", std::tanh(2.0)},
        {"TAN(2)", std::tan(2.0)},
        {"TRUNC(-2.5)", -3},
        {"Abs (A1 - B1)", 9},
        {"2*SQR(A3)^2", 162},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(valueOf(c.text), c.value) << c.text;
    EXPECT_TRUE(std::isnan(valueOf("SQRT(-1)")));
}

TEST_F(Formula, ConvertsNumbersToTheNearestDouble) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"1E3", 1000},
        {"1e3", 1000},
        {"5.", 5},
        {".5", 0.5},
        {"1E", 1},
        {"2E+", 2},
        {"1.5E-003", 0.0015},
        {"0E999", 0},
        {"0.000", 0},
        {"0.1", 0.1},
        {"1E23", 1e23},
        {"9007199254740993", 9007199254740992.0},
        {"9007199254740993.00000000000000000001", 9007199254740994.0},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"0.00000000000000000000000000000012345", 1.2345e-31},
        {"1.7976931348623157E308", std::numeric_limits<double>::max()},
        {"2.2250738585072011E-308", 2.2250738585072011e-308},
        {"4.9E-324", std::numeric_limits<double>::denorm_min()},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(kindOf(c.text), CellKind::value) << c.text;
        EXPECT_EQ(valueOf(c.text), c.value) << c.text;
    }
}

TEST_F(Formula, IsDiagnosedWithoutAnyOtherEffect) {
    const struct {
        const char* text;
        FormulaFault fault;
        std::size_t position;
    } cases[] = {
        {"", FormulaFault::empty, 0},
        {"   ", FormulaFault::empty, 3},
        {"()", FormulaFault::operandExpected, 1},
        {"1+", FormulaFault::operandExpected, 2},
        {"1+*2", FormulaFault::operandExpected, 2},
        {"--3", FormulaFault::operandExpected, 1},
        {"+3", FormulaFault::operandExpected, 0},
        {"2^--3", FormulaFault::operandExpected, 3},
        {"1 2", FormulaFault::operatorExpected, 2},
        {"1E1234", FormulaFault::operatorExpected, 5},
        {"1.5.2", FormulaFault::operatorExpected, 3},
        {"2(3)", FormulaFault::operatorExpected, 1},
        {"(1 2)", FormulaFault::operatorExpected, 3},
        {"A1:A2:A3", FormulaFault::operatorExpected, 5},
        {"A012", FormulaFault::operatorExpected, 3},
        {"(A1):A2", FormulaFault::operatorExpected, 4},
        {"1+.", FormulaFault::badNumber, 2},
        {".E5", FormulaFault::badNumber, 0},
        {"1+1E309", FormulaFault::numberOutOfRange, 2},
        {"1E-400", FormulaFault::numberOutOfRange, 0},
        {"K1", FormulaFault::unknownName, 0},
        {"A11", FormulaFault::unknownName, 0},
        {"1+A0", FormulaFault::unknownName, 2},
        {"A00", FormulaFault::unknownName, 0},
        {"AA1", FormulaFault::unknownName, 0},
        {"A", FormulaFault::unknownName, 0},
        {"weight", FormulaFault::unknownName, 0},
        {"ABSX", FormulaFault::unknownName, 3},
        {"SIN 2", FormulaFault::parenthesisExpected, 4},
        {"SIN", FormulaFault::parenthesisExpected, 3},
        {"1)", FormulaFault::unopened, 1},
        {"(1+2", FormulaFault::unclosed, 4},
        {"SIN(2", FormulaFault::unclosed, 5},
        {"A1:", FormulaFault::cellExpected, 3},
        {"A1:3", FormulaFault::cellExpected, 3},
        {"A3:A1", FormulaFault::badRange, 3},
        {"C1:A1", FormulaFault::badRange, 3},
        {"2*A1:B2", FormulaFault::badRange, 5},
        {"1#2", FormulaFault::badCharacter, 1},
        {"1\t+2", FormulaFault::badCharacter, 1},
        {"\351", FormulaFault::badCharacter, 0},
        {"((((((((((((((((((7))))))))))))))))))", FormulaFault::tooDeep, 19},  // 18 pairs
        {"1^1^1^1^1^1^1^1^1^1^1", FormulaFault::tooDeep, 19},
    };
    Parser::setError(5);
    testing::internal::CaptureStdout();
    for (const auto& c : cases) {
        const auto found = toolbox::diagnoseFormula(c.text);
        EXPECT_EQ(found.fault, c.fault) << c.text;
        EXPECT_EQ(found.position, c.position) << c.text;
        EXPECT_EQ(found.kind, CellKind::text) << c.text;
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(Parser::isError(), 5);
    for (const auto& c : cases) {
        if (c.fault == FormulaFault::tooDeep) continue;
        EXPECT_EQ(kindOf(c.text), CellKind::text) << c.text;
    }
    EXPECT_EQ(toolbox::diagnoseFormula("1+2").kind, CellKind::value);
    EXPECT_EQ(toolbox::diagnoseFormula("1+A2").kind, CellKind::formula);
    EXPECT_EQ(toolbox::diagnoseFormula("1+A2").fault, FormulaFault::none);
}

TEST(FormulaFaults, HaveTheirOwnTextInBothLanguages) {
    std::set<std::string> texts;
    int faults = 0;
    for (auto f = FormulaFault::empty; f <= FormulaFault::tooDeep; ++faults) {
        texts.insert(toolbox::formulaFaultText(f, 1));
        texts.insert(toolbox::formulaFaultText(f, 2));
        f = static_cast<FormulaFault>(static_cast<int>(f) + 1);
    }
    EXPECT_EQ(texts.size(), 2U * static_cast<unsigned>(faults));
    EXPECT_EQ(texts.count(""), 0U);
}

TEST_F(Formula, TooDeepIsToldOnceAndKeptAsText) {
    const std::string text = std::string(200, '(') + "7" + std::string(200, ')');
    testing::internal::CaptureStdout();
    grid_.setCell("A1", text.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\aParser stack overflow.");
    EXPECT_EQ(grid_.cellText(0, 0).str(), text);
    EXPECT_EQ(grid_.cellKind(0, 0), CellKind::text);
}

TEST_F(Formula, MayBeAsLongAsOneLikes) {
    std::string text = "A1";
    while (text.size() < 1 << 20) text += "+a2*2";
    EXPECT_EQ(kindOf(text), CellKind::formula);
    const double terms = static_cast<double>(text.size() / 5);
    EXPECT_EQ(valueOf(text), 1 + 4 * terms);
    grid_.setCell("A1", 7);
    EXPECT_EQ(grid_.getCell("J10"), 7 + 4 * terms);
}

TEST_F(Formula, MayBeAnyBytes) {
    constexpr std::size_t kLength = 1 << 20;
    for (const char* unit :
         {" ",  "(",   ")",    "-",    "1",  "0",  ".",   "1E",   "9.9",    "A",
          "A1", "A1:", "SIN(", "LOG1", "1+", "1^", "2*-", "\377", "\200\n", "E999"}) {
        std::string text;
        while (text.size() < kLength) text += unit;
        testing::internal::CaptureStdout();
        const CellKind kind = kindOf(text);
        testing::internal::GetCapturedStdout();
        EXPECT_NE(kind, CellKind::empty);
        if (kind == CellKind::text) {
            EXPECT_EQ(grid_.cellText(9, 9).str(), text);
        }
        EXPECT_LE(toolbox::diagnoseFormula(text.c_str()).position, text.size());
    }
}

}  // namespace
