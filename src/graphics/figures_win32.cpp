// The figures that draggers show, drawn so that a second drawing removes the first.
#include "toolbox/graphics.h"

namespace {

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

}  // namespace

VoidDragger::VoidDragger(HICON cursor) : Dragger(0, cursor, 0) {}

void VoidDragger::drawVisible(HDC, const POINT&, const POINT&) {}

void VoidDragger::drawInvisible(HDC, const POINT&, const POINT&) {}

RectDragger::RectDragger(HICON cursor) : Dragger(0, cursor, 0) {}

void RectDragger::setMode(int) {
    Dragger::setMode(0);
}

void RectDragger::setCursorPosMode(int) {}

void RectDragger::drawVisible(HDC dc, const POINT& start, const POINT& end) {
    RubberPen(dc).rectangle(start, end);
}

void RectDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}

VectDragger::VectDragger(int ortho, HICON cursor, int cursorPosMode)
    : Dragger(ortho, cursor, cursorPosMode) {}

void VectDragger::drawVisible(HDC dc, const POINT& start, const POINT& end) {
    const RubberPen pen(dc);
    pen.moveTo(start);
    pen.lineTo(end);
}

void VectDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}

void TriangleIniDragger::drawVisible(HDC dc, const POINT& start, const POINT& end) {
    const RubberPen pen(dc);
    pen.moveTo(start);
    pen.lineTo(end);
    pen.lineTo(third_);
}

void TriangleIniDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}

void StickDragger::drawVisible(HDC dc, const POINT&, const POINT& end) {
    const RubberPen pen(dc);
    pen.moveTo(end);
    pen.lineTo({end.x + stick_.x, end.y + stick_.y});
}

void StickDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}

void ThetaDragger::drawVisible(HDC dc, const POINT&, const POINT& end) {
    const RubberPen pen(dc);
    pen.ellipse(center_, radiusX_, radiusY_);
    pen.moveTo(center_);
    pen.lineTo(end);
}

void ThetaDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}
