// The figures that draggers show, drawn so that a second drawing removes the first.
#include "graphics/rubber_pen_win32.h"
#include "toolbox/graphics.h"

using toolbox::graphics::RubberPen;

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
