// Where the documents of a client area go when they are tiled: pure arithmetic, without windows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace toolbox::window {

/// A place in the client area, in pixels.
struct Cell {
    int x;
    int y;
    int width;
    int height;

    friend bool operator==(const Cell&, const Cell&) = default;
};

/// A row is at least this many captions high, as long as there is more than one.
inline constexpr int kCaptionsPerRow = 5;

/// The cells of `count` documents, row by row. Where the rows do not come out even the later ones
/// hold one more. Without documents there are no cells; an area without height gives flat ones.
[[nodiscard]] inline std::vector<Cell> tileCells(int count, int width, int height,
                                                 int captionHeight) {
    std::vector<Cell> cells;
    if (count <= 0) return cells;
    height = std::max(height, 0);
    const int rows = std::clamp(height / std::max(captionHeight * kCaptionsPerRow, 1), 1, count);
    const int rowHeight = height / rows;
    cells.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < rows; ++row) {
        const int columns = count / rows + (count % rows > rows - (row + 1) ? 1 : 0);
        const int cellWidth = width / columns;
        for (int column = 0; column < columns; ++column)
            cells.push_back({column * cellWidth, row * rowHeight, cellWidth, rowHeight});
    }
    return cells;
}

}  // namespace toolbox::window
