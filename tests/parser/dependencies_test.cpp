#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "toolbox/parser.h"

namespace {

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
    const std::pair<const char*, const char*> cells[] = {
        {"A1", "A2+B1"}, {"A2", "A3:A4*2"}, {"A3", "J10+1"}, {"A4", "J10+A3"}, {"B1", "A2^2"}};
    for (const auto& [name, text] : cells) grid.setCell(name, text);
    grid.setCell("J10", 1);
    const auto done = grid.recalculate();
    EXPECT_TRUE(done.cycle.empty());
    EXPECT_EQ(grid.getCell("A1"), 110);  // A3 2, A4 3, A2 10, B1 100
    EXPECT_EQ(names(done.order), "A3 A4 A2 B1 A1") << "each after those that it names";
}

TEST(Recalculation, NamesACycleAndLeavesWhatDependsOnIt) {
    Parser grid;
    // B1 -> C1 -> D1 -> B1 is a cycle: A1 depends on it, E1 does not.
    const std::pair<const char*, const char*> cells[] = {
        {"A1", "B1+1"}, {"B1", "C1+1"}, {"C1", "E1+D1"}, {"D1", "B1"}, {"E1", "F1*2"}, {"F1", "4"}};
    for (const auto& [name, text] : cells) grid.setCell(name, text);
    const double before[] = {grid.getCell("A1"), grid.getCell("B1")};
    const auto done = grid.recalculate();
    EXPECT_EQ(names(done.cycle), "B1 C1 D1");
    EXPECT_EQ(names(done.order), "E1");
    EXPECT_EQ(grid.getCell("E1"), 8);
    grid.setCell("B1", before[1]);
    EXPECT_EQ(grid.getCell("A1"), before[0]);

    grid.setCell("B1", "B1+1");
    EXPECT_EQ(names(grid.recalculate().cycle), "B1");
    grid.setCell("B1", "1/J1");
    EXPECT_TRUE(grid.recalculate().cycle.empty());
    EXPECT_NE(Parser::isError(), 0) << "raised as reading does";
}

}  // namespace
