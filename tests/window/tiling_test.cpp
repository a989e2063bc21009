// Where tiled documents go, and how long a job still takes.
#include "window/tiling.h"

#include <gtest/gtest.h>

#include <map>

#include "window/time_left.h"

namespace {

using toolbox::window::Cell;
using toolbox::window::tileCells;

constexpr int kCaption = 20;  // so a row is 100 pixels high at least

/// Number of cells in each row, from the top.
std::vector<int> rowsOf(const std::vector<Cell>& cells) {
    std::map<int, int> rows;
    for (const Cell& cell : cells) ++rows[cell.y];
    std::vector<int> counts;
    for (const auto& [y, count] : rows) counts.push_back(count);
    return counts;
}

TEST(TileCells, FillsRowsSoThatTheLaterOnesHoldOneMore) {
    struct Case {
        int count, height;
        std::vector<int> rows;
    };
    const Case cases[] = {{5, 200, {2, 3}},        {5, 199, {5}},       {5, 99, {5}},
                          {3, 100000, {1, 1, 1}},  {7, 300, {2, 2, 3}}, {8, 300, {2, 3, 3}},
                          {11, 400, {2, 3, 3, 3}}, {-1, 300, {}}};
    for (const Case& c : cases)
        EXPECT_EQ(rowsOf(tileCells(c.count, 600, c.height, kCaption)), c.rows)
            << c.count << " in " << c.height;
}

TEST(TileCells, StaysWithinTheAreaHoweverSmall) {
    for (std::size_t count = 1; count <= 20; ++count)
        for (const int height : {-50, 0, 1, 350, 777}) {
            const std::vector<Cell> cells = tileCells(static_cast<int>(count), 333, height, 0);
            ASSERT_EQ(cells.size(), count);
            for (const Cell& cell : cells) {
                EXPECT_GE(cell.height, 0);
                EXPECT_LE(cell.x + cell.width, 333);
                EXPECT_LE(cell.y + cell.height, std::max(height, 0));
            }
        }
}

TEST(TimeLeft, IsToldOnceItIsKnown) {
    using toolbox::window::timeLeft;
    EXPECT_FALSE(timeLeft(4, 50, 100));
    EXPECT_FALSE(timeLeft(5, -1, 100));
    EXPECT_FALSE(timeLeft(5, 100, 100));
    EXPECT_FALSE(timeLeft(3600, 1, 1000));
    EXPECT_EQ(timeLeft(6, 50, 100), 10);
    EXPECT_EQ(timeLeft(59, 50, 100), 60);
    EXPECT_EQ(timeLeft(60, 50, 100), 90);
    EXPECT_EQ(timeLeft(1000, 1, 3), 2040);
}

}  // namespace
