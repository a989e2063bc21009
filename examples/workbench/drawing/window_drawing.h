// What a window draws around a project: paper with a grid and rulers behind it, what is selected
// before it.
#pragma once

#include "drawing/project_drawing.h"

/// Room of the rulers, at the left and at the bottom of the window.
inline constexpr int kRulerWidth = 46, kRulerHeight = 22;
/// What the rulers leave of a window.
[[nodiscard]] PixelRect drawingPart(const PixelRect& client);

/// Draws all of a window, whose part in the scene is that of drawingPart(), but what shows that
/// labels are selected.
void drawWindow(TvCanvas& canvas, const Scene& scene, const PixelRect& client,
                const Selection& selection, const TvTagLayout& labels);
