// Pens, brushes and fonts of the drawing, and drawing with them.
#pragma once

#include <windows.h>

#include <vector>

#include "drawing/drawing_layout.h"
#include "toolbox/strings.h"

/// Owns an object of the system's drawing functions.
template <class Handle>
class Owned {
  public:
    explicit Owned(Handle handle) : handle_(handle) {}
    ~Owned() {
        if (handle_) DeleteObject(handle_);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    operator Handle() const { return handle_; }

  private:
    Handle handle_;
};

/// A line and a filling of one colour.
struct Paint {
    explicit Paint(COLORREF of, int width = 1)
        : colour(of), pen(CreatePen(PS_SOLID, width, of)), brush(CreateSolidBrush(of)) {}

    COLORREF colour;
    Owned<HPEN> pen;
    Owned<HBRUSH> brush;
};

struct DrawingTools {
    DrawingTools();

    Paint paper{RGB(255, 255, 255)};
    Paint grid{RGB(238, 241, 245)}, strongGrid{RGB(219, 225, 233)};
    Paint ruler{RGB(245, 247, 250)}, rulerText{RGB(104, 114, 126)};
    Paint ink{RGB(38, 46, 56)}, faint{RGB(126, 136, 148)};
    Paint force{RGB(84, 52, 150)}, strongForce{RGB(84, 52, 150), 2};
    Paint uniform{RGB(22, 120, 112)}, uniformFill{RGB(226, 243, 240)};
    Paint curve{RGB(232, 112, 20), 2};
    Paint label{RGB(255, 253, 232)}, labelBorder{RGB(170, 160, 110)};
    Paint halo{RGB(214, 232, 252)}, chosen{RGB(0, 102, 214)}, strongChosen{RGB(0, 102, 214), 2};
    // A beam, and its flanges darker: without results, well within the elastic limit, near it,
    // beyond it.
    Paint unknown{RGB(190, 196, 204)}, unknownEdge{RGB(120, 128, 138)};
    Paint sound{RGB(128, 168, 208)}, soundEdge{RGB(44, 92, 142)};
    Paint strained{RGB(245, 200, 98)}, strainedEdge{RGB(176, 118, 8)};
    Paint broken{RGB(240, 132, 122)}, brokenEdge{RGB(190, 30, 26)};
    Owned<HFONT> font, boldFont, smallFont;
};

/// Draws on a device context, which it leaves as it was.
class Canvas {
  public:
    Canvas(HDC dc, const DrawingTools& tools);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void fill(const PixelRect& rect, const Paint& paint) const;
    void frame(const PixelRect& rect, const Paint& paint) const;
    void line(Pixel from, Pixel to, const Paint& paint) const;
    void polyline(const std::vector<Pixel>& points, const Paint& paint) const;
    void polygon(const std::vector<Pixel>& points, const Paint& edge, const Paint& inside) const;
    void circle(Pixel center, int radius, const Paint& edge, const Paint& inside) const;
    /// With a head of that length, or as much of it as there is room for.
    void arrow(const Arrow& arrow, int head, const Paint& paint, const Paint& shaft) const;

    [[nodiscard]] int textWidth(const CString& text, HFONT font) const;
    [[nodiscard]] int textHeight(HFONT font) const;
    /// Its left side and the middle of its height.
    void text(Pixel at, const CString& text, HFONT font, const Paint& paint) const;
    /// Everything drawn later is cut off outside.
    void clip(const PixelRect& rect) const;

    const DrawingTools& tools;

  private:
    HDC dc_;
    int saved_;
};
