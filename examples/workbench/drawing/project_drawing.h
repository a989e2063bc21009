// The drawing of a project on any canvas: beams with loads and texts, and labels. Nothing here
// needs a window.
#pragma once

#include "drawing/label_drawing.h"
#include "drawing/pencil.h"

/// Draws a project, with its labels over it, on what is there.
void drawProject(TvCanvas& canvas, const Scene& scene, const TvTagLayout& labels);

/// A force with a head.
void drawForce(const Pencil& pencil, const Arrow& arrow, const Paint& head, const Paint& shaft);

/// The depth of a beam's section in mm, for layouts; 0 when it is not known.
[[nodiscard]] DrawingLayout::DepthOf depthIn(const OpenProject& work);
