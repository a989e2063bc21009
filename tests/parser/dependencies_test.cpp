#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::CellPosition;

std::string names(const std::vector<CellPosition>& cells) {
    std::string text;
    for (const auto& [row, col] : cells) {
        if (!text.empty()) text += ' ';
        text += static_cast<char>('A' + col);
        text += std::to_string(row + 1);
    }
    return text;
}

TEST(CellsNamed, AreListedOnceInTheOrderOfTheText) {
    const std::pair<const char*, const char*> cases[] = {
        {"B2+A1*b2", "B2 A1"},
        {"A1:A4+C1:D1", "A1 A2 A3 A4 C1 D1"},
        {"A2:A4-A1:A3", "A2 A3 A4 A1"},
        {"2*(C3/-SIN(J10)^D4)", "C3 J10 D4"},
        {"1+2", ""},
        {"A1+", ""},
    };
    Parser grid;
    for (const auto& [text, cells] : cases) {
        EXPECT_EQ(names(toolbox::cellsNamedBy(text)), cells) << text;
        grid.setCell("J1", text);
        EXPECT_EQ(names(grid.cellsNamedBy(0, 9)), cells) << text;
    }
    EXPECT_TRUE(toolbox::cellsNamedBy(nullptr).empty());
}

TEST(Recalculation, ReadsEachFormulaAfterThoseThatItNames) {
    Parser grid;
    // Backwards, so that neither the order of setting nor that of the grid is the right one.
    grid.setCell("A1", "A2+B1");
    grid.setCell("A2", "A3:A4*2");
    grid.setCell("A3", "J10+1");
    grid.setCell("A4", "J10+A3");
    grid.setCell("B1", "A2^2");
    grid.setCell("J10", 1);
    const auto done = grid.recalculate();
    EXPECT_TRUE(done.cycle.empty());
    EXPECT_EQ(done.order.size(), 5U);
    EXPECT_EQ(grid.getCell("A1"), 110);  // A3 2, A4 3, A2 10, B1 100
    grid.setCell("J10", 2);
    grid.recalculate();
    EXPECT_EQ(grid.getCell("A1"), 16 + 256);
    EXPECT_EQ(names(done.order), "A3 A4 A2 B1 A1") << "each after those that it names";
}

TEST(Recalculation, NamesACycleAndLeavesWhatDependsOnIt) {
    Parser grid;
    grid.setCell("A1", "B1+1");  // depends on the cycle
    grid.setCell("B1", "C1+1");  // B1 -> C1 -> D1 -> B1
    grid.setCell("C1", "E1+D1");
    grid.setCell("D1", "B1");
    grid.setCell("E1", "F1*2");  // does not
    grid.setCell("F1", 4);
    const double before[] = {grid.getCell("A1"), grid.getCell("B1"), grid.getCell("C1")};
    const auto done = grid.recalculate();
    EXPECT_EQ(names(done.cycle), "B1 C1 D1");
    EXPECT_EQ(names(done.order), "E1");
    EXPECT_EQ(grid.getCell("E1"), 8);
    grid.setCell("B1", before[1]);
    EXPECT_EQ(grid.getCell("A1"), before[0]);

    grid.setCell("B1", "B1+1");
    EXPECT_EQ(names(grid.recalculate().cycle), "B1");
    grid.setCell("B1", 1);
    EXPECT_TRUE(grid.recalculate().cycle.empty());
}

TEST(Recalculation, RaisesTheErrorFlagAsReadingDoes) {
    Parser grid;
    grid.setCell("A1", "1/B1");
    grid.recalculate();
    EXPECT_NE(Parser::isError(), 0);
}

}  // namespace
