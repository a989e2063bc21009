// The labels of a project where they lie in its drawing.
#pragma once

#include <vector>

#include "drawing/drawing_layout.h"
#include "project/open_project.h"

/// What is drawn, and where. All is borrowed.
struct Scene {
    const OpenProject& work;
    const DrawingLayout& layout;
    PixelRect part;  ///< of the canvas: what is drawn reaches into it

    [[nodiscard]] const Project& project() const { return work.project(); }
};

/// All labels, their tokens replaced by the values of their beams. Their
/// numbers are the labels' identifiers.
[[nodiscard]] TvTagLayout layOutLabels(const Scene& scene);

/// The smallest rectangle with everything that is drawn of a project, with room for the texts
/// beside its beams; empty without beams.
[[nodiscard]] PixelRect drawnPart(const Scene& scene, const TvTagLayout& labels);

/// All labels that cover beams, loads or each other, moved to where there is room; the part of the
/// scene plays no role. One for which there is none is marked.
[[nodiscard]] std::vector<Label> arrangedLabels(const Scene& scene);
