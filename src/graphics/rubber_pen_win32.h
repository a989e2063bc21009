// The pen of draggers.
#pragma once

#include <windows.h>

namespace toolbox::graphics {

/// While it lives, a device context draws dashed lines that undo themselves, and fills nothing.
class RubberPen {
  public:
    explicit RubberPen(HDC dc) : dc_(dc), saved_(SaveDC(dc)) {
        SetROP2(dc, R2_NOTXORPEN);
        SelectObject(dc, GetStockObject(NULL_BRUSH));
        SelectObject(dc, pen_);
    }
    ~RubberPen() {
        if (saved_ != 0) RestoreDC(dc_, -1);
        DeleteObject(pen_);  // which must not be selected any more
    }
    RubberPen(const RubberPen&) = delete;
    RubberPen& operator=(const RubberPen&) = delete;

    void moveTo(const POINT& point) const { MoveToEx(dc_, point.x, point.y, nullptr); }
    void lineTo(const POINT& point) const { LineTo(dc_, point.x, point.y); }
    void rectangle(const POINT& a, const POINT& b) const { Rectangle(dc_, a.x, a.y, b.x, b.y); }
    void ellipse(const POINT& center, int rx, int ry) const {
        Ellipse(dc_, center.x - rx, center.y + ry, center.x + rx, center.y - ry);
    }

  private:
    HDC dc_;
    int saved_;
    HPEN pen_ = CreatePen(PS_DASH, 1, RGB(0, 0, 255));
};

}  // namespace toolbox::graphics
