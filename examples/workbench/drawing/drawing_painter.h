// The picture of a project.
#pragma once

#include "drawing/drawing_tools.h"
#include "project/document.h"

/// Room of the rulers, at the left and at the bottom of the window.
inline constexpr int kRulerWidth = 46, kRulerHeight = 22;
/// What the rulers leave of a window.
[[nodiscard]] PixelRect drawingPart(const PixelRect& client);

class DrawingPainter {
  public:
    /// All are borrowed for the painter's life.
    DrawingPainter(const Canvas& canvas, Document& document, const DrawingLayout& layout,
                   const PixelRect& client);

    /// Returns the labels that are in sight, in the order in which they were drawn.
    std::vector<LabelPlace> paint();

  private:
    void grid() const;
    void rulers() const;
    void beams();
    void beam(std::size_t index);
    void body(const BeamPlace& place, const BeamResults* results) const;
    void supports(const BeamPlace& place) const;
    void uniformLoad(const Beam& beam, const BeamPlace& place);
    void pointLoads(const Beam& beam, const BeamPlace& place);
    void pointLoad(const PointLoad& load, const Arrow& arrow, bool isSelected);
    void beamTexts(const Beam& beam, const BeamPlace& place, const BeamResults* results);
    void dimension(const Beam& beam, const BeamPlace& place) const;
    void labels();
    void label(const Label& label);
    void selectionOf(const BeamPlace& place) const;
    void handle(Pixel at) const;
    [[nodiscard]] bool isSelected(Selection::Kind kind, std::uint32_t id) const;

    const Canvas& canvas_;
    const DrawingTools& tools_;
    Document& document_;
    const DrawingLayout& layout_;
    PixelRect client_;
    PixelRect part_;
    std::vector<LabelPlace> labels_;
    std::vector<PixelRect> taken_;  // by the texts of the beam being drawn
};
