// The drawing of a project on any canvas: beams with loads and texts, and labels. Nothing here
// needs a window.
#pragma once

#include <vector>

#include "drawing/drawing_layout.h"
#include "drawing/pencil.h"
#include "project/open_project.h"
#include "project/project_keys.h"

/// What is drawn, and where. All is borrowed.
struct Scene {
    const OpenProject& work;
    ProjectKeys& keys;  ///< their current values change
    const DrawingLayout& layout;
    PixelRect part;  ///< of the canvas: what is drawn reaches into it

    [[nodiscard]] const Project& project() const { return work.project(); }
};

/// Draws a project on what is there. Returns the labels that are in sight, in the order in which
/// they were drawn.
std::vector<LabelPlace> drawProject(TvCanvas& canvas, const Scene& scene);

/// One label in given colours.
void drawLabel(const Pencil& pencil, const LabelPlace& label, const Paint& inside,
               const Paint& border);
/// A force with a head.
void drawForce(const Pencil& pencil, const Arrow& arrow, const Paint& head, const Paint& shaft);

/// The depth of a beam's section in mm, for layouts; 0 when it is not known.
[[nodiscard]] DrawingLayout::DepthOf depthIn(const OpenProject& work);
