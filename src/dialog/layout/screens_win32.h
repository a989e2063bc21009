// Windows and screens as boxes.
#pragma once

#include <vector>

#include "dialog/layout/boxes.h"
#include "toolbox/win_types.h"

namespace toolbox::dialog {

[[nodiscard]] inline Box boxOf(const RECT& area) {
    return {area.left, area.top, area.right, area.bottom};
}

/// Of a window, with its frame, on the screen.
[[nodiscard]] Box boxOf(HWND window);

/// The screens without what task bars take of them.
[[nodiscard]] std::vector<Box> workAreas();

/// That of the screen which has most of a window, minimized or not, or of the first for none.
[[nodiscard]] Box workAreaOf(HWND window);

/// Dots per inch of the screen.
[[nodiscard]] int screenDpi();

/// Moves and sizes a window, nothing else.
void place(HWND window, const Box& box);

}  // namespace toolbox::dialog
