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
#include <tuple>
#include <utility>
#include <vector>

#include "agreement.h"
#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::CellPosition;

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
    char doubled[] = "a1*2";
    grid.setCell("A2", doubled);
    EXPECT_EQ(grid.cellText(1, 0), "A1*2");
    grid.setCell("A3", "A2+1");
    grid.setCell("A1", 5);
    EXPECT_EQ(grid.getCell("A3"), 7) << "A2 has not been read since";
    EXPECT_EQ(grid.getCell("A2"), 10);
    EXPECT_EQ(grid.getCell("A3"), 11);
    grid.setCell("A1", "A1+1");  // the old cell counts for 0: 0 + 1
    for (const double value : {2, 3}) EXPECT_EQ(grid.getCell("A1"), value);
}

TEST(Grid, FollowsANameAsFarAsItReads) {
    // Row and column; -1 where nothing is stored.
    for (const auto& [name, atRow, atCol] : {std::tuple{"J10", 9, 9},
                                             {"B", 2, 1},
                                             {"b7", 2, 3},
                                             {"AA1", -1, 0},
                                             {"B11", -1, 0},
                                             {"E5xyz", 4, 4}}) {
        Parser grid;
        grid.setCell("D3", "set last");
        grid.setCell(name, 42);
        for (int row = 0; row < 10; ++row)
            for (int col = 0; col < 10; ++col)
                EXPECT_EQ(grid.cellKind(row, col) == CellKind::value, row == atRow && col == atCol)
                    << name;
    }
    Parser grid;
    const char* none = nullptr;
    grid.setCell(none, 1);
    EXPECT_EQ(grid.getCell("A1"), 1) << "a grid starts at A1";
    EXPECT_EQ(grid.getCell(none), 0);
    for (const int outside : {-1, 10, 1 << 30}) {
        grid.setCell(outside, 0, "1");
        EXPECT_EQ(grid.getCell(outside, 0), 0);
        EXPECT_EQ(grid.cellKind(0, outside), CellKind::empty);
        EXPECT_TRUE(grid.cellsNamedBy(0, outside).empty());
    }
}

TEST(Grid, SharesItsCellsWithACopy) {
    auto original = std::make_unique<Parser>();
    original->setCell("A1", 3);
    original->setCell("A2", "A1*2");
    Parser copy;
    copy.setCell("J10", "lost");
    copy = *original;
    EXPECT_EQ(copy.cellKind(9, 9), CellKind::empty);
    copy.setCell("A1", 50);
    EXPECT_EQ(original->getCell("A1"), 3) << "set in the copy only";
    EXPECT_EQ(copy.getCell("A2"), 100);
    original->setCell("A3", "A2");
    EXPECT_EQ(original->getCell("A3"), 100) << "the value lies in the shared cell";

    original.reset();
    EXPECT_EQ(copy.getCell("A2"), 100);
}

TEST(Grid, ComputesAgainAfterCopyingAndAssigning) {
    Parser grids[2], assigned;
    for (const int i : {0, 1}) {
        grids[i].setCell("A1", 3 + 2 * i);
        grids[i].setCell("A2", "A1*2");
        grids[i].setCell("B1", "A2+1");
    }
    alignas(Parser) unsigned char place[sizeof(Parser)];
    for (const int i : {0, 1, 0}) {
        auto* copy = new (place) Parser(grids[i]);  // one after the other, at the same address
        assigned = grids[i];
        for (Parser* grid : {copy, &assigned}) {
            grid->recalculate();
            EXPECT_EQ(grid->getCell("B1"), 7 + 4 * i);
        }
        copy->~Parser();
    }
}

std::string names(const std::vector<CellPosition>& cells) {
    std::string text;
    for (const auto& [row, col] : cells) {
        if (!text.empty()) text += ' ';
        text += static_cast<char>('A' + col);
        text += std::to_string(row + 1);
    }
    return text;
}

TEST(Recalculation, ReadsEachFormulaAfterThoseThatItNames) {
    Parser grid;
    // Backwards, so that neither the order of setting nor that of the grid is the right one.
    const std::pair<const char*, const char*> cells[] = {
        {"A1", "A2+B1"}, {"A2", "A3:A4*2"}, {"A3", "J10+1"}, {"A4", "J10+A3"}, {"B1", "A2^2"}};
    for (const auto& [name, text] : cells) grid.setCell(name, text);
    grid.setCell("J10", 1);
    const auto done = grid.recalculate();
    EXPECT_EQ(grid.getCell("A1"), 110);  // A3 2, A4 3, A2 10, B1 100
    EXPECT_EQ(names(done.order), "A3 A4 A2 B1 A1") << "each after those that it names";
}

TEST(Recalculation, NamesACycleAndLeavesWhatDependsOnIt) {
    Parser grid;
    // B1 -> C1 -> D1 -> B1 is a cycle: A1 depends on it, E1 does not.
    const std::pair<const char*, const char*> cells[] = {
        {"A1", "B1+1"}, {"B1", "C1+1"}, {"C1", "E1+D1"}, {"D1", "B1"}, {"E1", "F1*2"}, {"F1", "4"}};
    for (const auto& [name, text] : cells) grid.setCell(name, text);
    const auto done = grid.recalculate();
    EXPECT_EQ(names(done.cycle), "B1 C1 D1");
    EXPECT_EQ(names(done.order), "E1");
    grid.setCell("B1", "B1+1");
    EXPECT_EQ(names(grid.recalculate().cycle), "B1");
}

TEST(Grid, AgreesWithOneThatGoesStepByStep) {
    testing::internal::CaptureStdout();
    const Agreement result = compareGrids(50'000, 1);
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(result.agrees) << result.differsOn;
    EXPECT_GT(result.formulas, 20'000) << "the generated texts test too little";
}

}  // namespace
