// Draggers of the drawing: figures whose dragged point goes where the project allows it.
#pragma once

#include <functional>
#include <memory>

#include "drawing/drawing_plane.h"
#include "toolbox/graphics.h"

/// Where the dragged point comes to lie when the mouse is at a pixel.
using Guide = std::function<Pixel(Pixel mouse)>;

/// A line that starts at a given pixel.
[[nodiscard]] std::unique_ptr<Dragger> guidedLine(Pixel start, HCURSOR cursor, Guide guide);
/// A line that leads from the dragged point to where `stick` says, seen from there.
[[nodiscard]] std::unique_ptr<Dragger> guidedStick(Pixel stick, HCURSOR cursor, Guide guide);
