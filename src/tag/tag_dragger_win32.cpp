// Where nothing has moved nothing is drawn, so that a click leaves the picture alone.
#include "tag/tag_dragger_win32.h"

#include <cstdlib>

#include "graphics/rubber_pen_win32.h"

namespace toolbox::tag {

void TagDragger::setShape(Shape shape, bool keepsAxis) {
    shape_ = std::move(shape);
    keepsAxis_ = keepsAxis;
}

void TagDragger::anchor(const POINT& point, HDC dc) {
    moves_ = false;
    Dragger::anchor(point, dc);
}

void TagDragger::setMode(int ortho) {
    Dragger::setMode(ortho && keepsAxis_);
}

void TagDragger::modifyDraggedPoint(POINT& point) {
    const POINT from = getOrthoOrigin();
    moves_ = moves_ || std::abs(point.x - from.x) >= GetSystemMetrics(SM_CXDRAG) ||
             std::abs(point.y - from.y) >= GetSystemMetrics(SM_CYDRAG);
    if (moves_)
        Dragger::modifyDraggedPoint(point);
    else
        point = from;
}

void TagDragger::drawVisible(HDC dc, const POINT& start, const POINT& end) {
    if (!dc || !shape_ || (start.x == end.x && start.y == end.y)) return;
    const Figure figure = shape_(start, end);
    const graphics::RubberPen pen(dc);
    for (const RECT& box : figure.boxes)
        pen.rectangle({box.left, box.top}, {box.right, box.bottom});
    for (const auto& [from, to] : figure.lines) {
        pen.moveTo(from);
        pen.lineTo(to);
    }
}

void TagDragger::redraw(HDC dc) {
    POINT start{};
    POINT end{};
    getPoints(start, end);
    if (isVisible()) drawVisible(dc, start, end);
}

void TagDragger::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}

}  // namespace toolbox::tag
