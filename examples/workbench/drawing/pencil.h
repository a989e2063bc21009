// Colours and fonts of the drawing, and figures drawn with them on a canvas. A pixel of the drawing
// is a point of the canvas.
#pragma once

#include <vector>

#include "drawing/drawing_layout.h"
#include "toolbox/canvas.h"

/// A colour, and the width of lines in it.
struct Paint {
    TvColor color;
    double width = 1;
};

namespace paints {

inline constexpr Paint kPaper{{255, 255, 255}};
inline constexpr Paint kGrid{{238, 241, 245}}, kStrongGrid{{219, 225, 233}};
inline constexpr Paint kRuler{{245, 247, 250}}, kRulerText{{104, 114, 126}};
inline constexpr Paint kInk{{38, 46, 56}}, kFaint{{126, 136, 148}};
inline constexpr Paint kForce{{84, 52, 150}}, kStrongForce{{84, 52, 150}, 2};
inline constexpr Paint kUniform{{22, 120, 112}}, kUniformFill{{226, 243, 240}};
inline constexpr Paint kCurve{{232, 112, 20}, 2};
inline constexpr Paint kHalo{{214, 232, 252}}, kChosen{{0, 102, 214}};
inline constexpr Paint kStrongChosen{{0, 102, 214}, 2};
// A beam, and its flanges darker: without results, well within the elastic limit, near it, beyond
// it.
inline constexpr Paint kUnknown{{190, 196, 204}}, kUnknownEdge{{120, 128, 138}};
inline constexpr Paint kSound{{128, 168, 208}}, kSoundEdge{{44, 92, 142}};
inline constexpr Paint kStrained{{245, 200, 98}}, kStrainedEdge{{176, 118, 8}};
inline constexpr Paint kBroken{{240, 132, 122}}, kBrokenEdge{{190, 30, 26}};

}  // namespace paints

namespace fonts {

inline constexpr TvFont kUsual{.size = 12};
inline constexpr TvFont kBold{.size = 13, .bold = true};
inline constexpr TvFont kSmall{.size = 11};

}  // namespace fonts

/// Draws on a canvas, which is borrowed.
class Pencil {
  public:
    explicit Pencil(TvCanvas& canvas) : canvas_(canvas) {}

    void fill(const PixelRect& rect, const Paint& paint) const;
    /// Lines inside the rectangle, along its sides.
    void frame(const PixelRect& rect, const Paint& paint) const;
    void line(Pixel from, Pixel to, const Paint& paint) const;
    void polyline(const std::vector<TvPoint>& points, const Paint& paint) const;
    void polygon(const std::vector<Pixel>& points, const Paint& edge, const Paint& inside) const;
    void circle(Pixel center, int radius, const Paint& edge, const Paint& inside) const;
    /// With a head of that length, or as much of it as there is room for.
    void arrow(const Arrow& arrow, int head, const Paint& paint, const Paint& shaft) const;

    [[nodiscard]] static int textWidth(const CString& text, const TvFont& font);
    /// Its left side and the middle of its height.
    void text(Pixel at, const CString& text, TvFont font, const Paint& paint) const;
    /// Everything drawn later is cut off outside, until the canvas is restored.
    void clip(const PixelRect& rect) const;

  private:
    void take(const TvPen& pen, const TvBrush& brush) const;

    TvCanvas& canvas_;
};
