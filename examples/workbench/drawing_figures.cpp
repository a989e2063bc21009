#include "drawing_figures.h"

namespace {

void lead(const Guide& guide, POINT& point) {
    const Pixel to = guide({point.x, point.y});
    point = {to.x, to.y};
}

}  // namespace

GuidedLine::GuidedLine(Pixel start, HCURSOR cursor, Guide guide)
    : VectIniDragger(0, cursor, 0), guide_(std::move(guide)) {
    setDims({start.x, start.y});
}

void GuidedLine::modifyDraggedPoint(POINT& point) {
    lead(guide_, point);
}

GuidedStick::GuidedStick(Pixel stick, HCURSOR cursor, Guide guide)
    : StickDragger(0, cursor, 0), guide_(std::move(guide)) {
    setDims({0, 0}, {stick.x, stick.y});
}

void GuidedStick::modifyDraggedPoint(POINT& point) {
    lead(guide_, point);
}

GuidedBox::GuidedBox(const PixelRect& box, HCURSOR cursor, Guide guide)
    : RectDragger(cursor), box_(box), guide_(std::move(guide)) {}

void GuidedBox::modifyDraggedPoint(POINT& point) {
    lead(guide_, point);
}

void GuidedBox::drawVisible(HDC dc, const POINT&, const POINT& end) {
    RectDragger::drawVisible(dc, {end.x + box_.left, end.y + box_.top},
                             {end.x + box_.right, end.y + box_.bottom});
}

void GuidedBox::drawInvisible(HDC dc, const POINT& start, const POINT& end) {
    drawVisible(dc, start, end);
}
