#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <utility>

#include "agreement.h"
#include "support/fake_system.h"
#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;

TEST(Grid, PutsFormulasInCapitalsWhereTheCallerHasThem) {
    Parser grid;
    char texts[][20] = {" a1 + sin(b2)*1e3", "1e3", "a1 + sin(b2"};
    for (int row = 0; row < 3; ++row) grid.setCell(row, 2, texts[row]);
    EXPECT_STREQ(texts[0], " A1 + SIN(B2)*1E3");
    EXPECT_STREQ(texts[1], "1E3");
    EXPECT_EQ(grid.cellText(0, 2), " A1 + SIN(B2)*1E3");
    EXPECT_EQ(grid.cellText(1, 2), "");
    EXPECT_EQ(grid.cellText(2, 2), "a1 + sin(b2");
}

TEST(Grid, StoresNumbersWithEightDigits) {
    Parser grid;
    // The double nearest to the eight digits, as reading their text gives it.
    std::mt19937_64 random(8);
    for (int i = 0; i < 200000; ++i) {
        const double any = std::bit_cast<double>(random());
        const double usual =
            std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 110));
        for (const double given : {any, usual, -usual, std::round(usual) / 256, -0.0}) {
            if (!std::isfinite(given)) continue;
            char text[32];
            std::snprintf(text, sizeof text, "%.7e", given);
            grid.setCell(0, 0, given);
            ASSERT_EQ(std::bit_cast<std::uint64_t>(grid.getCell(0, 0)),
                      std::bit_cast<std::uint64_t>(std::strtod(text, nullptr)))
                << text;
        }
    }
    grid.setCell("A1", HUGE_VAL);
    EXPECT_EQ(grid.cellKind(0, 0), CellKind::text);
}

TEST(Grid, ComputesAFormulaFromStoredValuesOnly) {
    Parser grid;
    grid.setCell("A1", 3);
    grid.setCell("A2", "A1*2");
    grid.setCell("A3", "A2+1");
    EXPECT_EQ(grid.getCell("A3"), 7);
    grid.setCell("A1", 5);
    EXPECT_EQ(grid.getCell("A3"), 7) << "A2 has not been read since";
    EXPECT_EQ(grid.getCell("A2"), 10);
    EXPECT_EQ(grid.getCell("A3"), 11);
    grid.setCell("A1", "A1+1");  // the old cell counts for 0: 0 + 1
    for (const double value : {2, 3, 4}) EXPECT_EQ(grid.getCell("A1"), value);
}

TEST(Grid, RaisesTheErrorFlagForHugeValues) {
    Parser grid;
    grid.setCell("A1", "a text");
    const std::pair<const char*, bool> cases[] = {
        {"1/0", true},  {"1+A1:A2", true},   {"EXP(1000)", true}, {"A text.", true},
        {"-A1", false}, {"SQRT(-1)", false}, {"A2", false},       {"1/A1", false}};
    for (const auto& [text, error] : cases) {
        grid.setCell("B1", text);
        EXPECT_EQ(Parser::isError(), 0) << text;
        grid.getCell("B1");
        EXPECT_EQ(Parser::isError() != 0, error) << text;
    }
    grid.getCell("A1");
    grid.getCell("A2");
    EXPECT_NE(Parser::isError(), 0) << "a good read clears nothing";
    char* none = nullptr;
    grid.setCell("A1", none);
    EXPECT_EQ(Parser::isError(), 0);
    EXPECT_EQ(grid.cellKind(0, 0), CellKind::text);
    Parser::setError(7);
    const Parser another;
    EXPECT_EQ(Parser::isError(), 0);
}

TEST(GridBudget, StartsFromTheMemoryLeft) {
    const std::pair<std::uint64_t, long> cases[] = {
        {999, 0}, {1001, 1}, {0xFFFFFFFF, 0x7FFFFFFF}, {~std::uint64_t{}, 0x7FFFFFFF}};
    for (const auto& [memory, budget] : cases) {
        FakeSystem machine;
        machine.memory = memory;
        EXPECT_EQ(Parser().getMemoryLeft(), budget) << memory;
    }
}

TEST(GridBudget, IsChargedForEachCellAndPaidBack) {
    FakeSystem machine;
    machine.memory = 1000 + 40;
    Parser grid;
    const std::pair<const char*, long> cases[] = {
        {"12345", 16}, {"", 10},    {"x", 10},     {"xyz", 12},
        {"A2", 20},    {" a2", 20}, {"A2+A3", 22}, {"12 bytes long", 22}};
    for (const auto& [text, cost] : cases) {
        grid.setCell("A1", text);
        EXPECT_EQ(40 - grid.getMemoryLeft(), cost) << text;
    }
    testing::internal::CaptureStdout();
    grid.setCell("B1", "123456789.");  // a number takes 16 whatever its length
    grid.setCell("B1", "ten bytes!");  // 20 with 18 left
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\aNot enough memory to allocate cell.");
    EXPECT_EQ(grid.cellKind(0, 1), CellKind::empty);
    EXPECT_EQ(grid.getMemoryLeft(), 18);
    EXPECT_EQ(grid.lastColumn(), 0);
    EXPECT_EQ(Parser::isError(), 0);
}

TEST(Grid, KnowsItsLastColumnAndRow) {
    FakeSystem machine;
    machine.memory = 1000 + 60;
    Parser grid;
    for (const char* name : {"B2", "D3", "C7"}) grid.setCell(name, 1);
    EXPECT_FALSE(grid.isChanged());
    // A text that does not fit deletes the cell all the same.
    const std::string large(100, 'x');
    const struct {
        const char* name;
        int column, row;
    } cases[] = {{"A1", 3, 6}, {"D3", 2, 6}, {"C7", 1, 1}, {"B2", 0, 0}};
    testing::internal::CaptureStdout();
    for (const auto& c : cases) {
        grid.setCell(c.name, large.c_str());
        EXPECT_EQ(grid.lastColumn(), c.column);
        EXPECT_EQ(grid.lastRow(), c.row);
    }
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(grid.isChanged());
    EXPECT_EQ(grid.getMemoryLeft(), 60);
}

TEST(Grid, FollowsANameAsFarAsItReads) {
    const struct {
        const char* name;
        int row;  ///< -1: nothing is stored
        int col;
    } cases[] = {{"B7", 6, 1},   {"J10", 9, 9}, {"B", 2, 1},     {"b7", 2, 3},
                 {"", 2, 3},     {"7", 2, 3},   {"C123", -1, 0}, {"K1", -1, 0},
                 {"AA1", -1, 0}, {"B0", -1, 0}, {"B11", -1, 0},  {"E5xyz", 4, 4}};
    for (const auto& c : cases) {
        Parser grid;
        grid.setCell("D3", "set last");
        grid.setCell(c.name, 42);
        for (int row = 0; row < 10; ++row)
            for (int col = 0; col < 10; ++col)
                EXPECT_EQ(grid.cellKind(row, col) == CellKind::value, row == c.row && col == c.col)
                    << c.name;
    }
    Parser grid;
    const char* none = nullptr;
    grid.setCell(none, 1);
    EXPECT_EQ(grid.getCell("A1"), 1) << "a grid starts at A1";
    for (const char* name : {"a1", "K1", "A11", "A"}) EXPECT_EQ(grid.getCell(name), 0);
    EXPECT_EQ(grid.getCell(none), 0);
}

TEST(Grid, StoresNothingOutside) {
    Parser grid;
    const long before = grid.getMemoryLeft();
    for (const int outside : {-1, 10, 1 << 30}) {
        grid.setCell(outside, 0, "1");
        grid.setCell(0, outside, 1.5);
        EXPECT_EQ(grid.getCell(outside, 0), 0);
        EXPECT_EQ(grid.cellKind(0, outside), CellKind::empty);
        EXPECT_TRUE(grid.cellsNamedBy(0, outside).empty());
    }
    EXPECT_EQ(grid.getMemoryLeft(), before);
    EXPECT_EQ(Parser::isError(), 0);
}

TEST(Grid, SharesItsCellsWithACopy) {
    auto original = std::make_unique<Parser>();
    original->setCell("A1", 3);
    original->setCell("A2", "A1*2");
    Parser copy;
    copy.setCell("J10", "lost");
    copy = *original;
    EXPECT_EQ(copy.cellKind(9, 9), CellKind::empty);
    EXPECT_EQ(copy.getMemoryLeft(), original->getMemoryLeft());

    copy.setCell("A1", 50);
    EXPECT_EQ(original->getCell("A1"), 3) << "set in the copy only";
    EXPECT_EQ(copy.getCell("A2"), 100);
    original->setCell("A3", "A2");
    EXPECT_EQ(original->getCell("A3"), 100) << "the value lies in the shared cell";

    original.reset();
    const Parser& self = copy;
    copy = self;
    EXPECT_EQ(copy.getCell("A2"), 100);
}

TEST(Grid, ComputesAgainAfterCopyingAndAssigning) {
    Parser threes, fives;
    threes.setCell("A1", 3);
    threes.setCell("A2", "A1*2");
    threes.setCell("B1", "A2+1");
    fives = threes;
    fives.setCell("A1", 5);
    alignas(Parser) unsigned char place[sizeof(Parser)];
    const auto recalculated = [&](const Parser& original) {
        auto* copy = new (place) Parser(original);  // one after the other, at the same address
        copy->recalculate();
        const double value = copy->getCell("B1");
        copy->~Parser();
        return value;
    };
    EXPECT_EQ(recalculated(threes), 7);
    EXPECT_EQ(recalculated(fives), 11);
    EXPECT_EQ(recalculated(threes), 7);

    Parser assigned;
    for (const Parser* original : {&threes, &fives}) {
        assigned = *original;
        assigned.recalculate();
        EXPECT_EQ(assigned.getCell("B1"), original == &threes ? 7 : 11);
    }
}

TEST(Grid, AgreesWithOneThatGoesStepByStep) {
    testing::internal::CaptureStdout();
    const Agreement result = compareGrids(50'000, 1);
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(result.agrees) << result.differsOn;
    EXPECT_GT(result.formulas, 20'000) << "the generated texts test too little";
}

}  // namespace
