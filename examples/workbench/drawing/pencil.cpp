// Each figure sets the styles that it is drawn with.
#include "drawing/pencil.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

std::vector<TvPoint> pointsOf(const std::vector<Pixel>& pixels) {
    std::vector<TvPoint> points;
    std::ranges::transform(pixels, std::back_inserter(points), pointOf);
    return points;
}

TvPen penOf(const Paint& paint) {
    return {paint.color, paint.width, {}};
}

}  // namespace

void Pencil::take(const TvPen& pen, const TvBrush& brush) const {
    canvas_.setPen(pen);
    canvas_.setBrush(brush);
}

void Pencil::fill(const PixelRect& rect, const Paint& paint) const {
    take(TvPen::none(), paint.color);
    canvas_.rectangle(planeRect(rect));
}

void Pencil::frame(const PixelRect& rect, const Paint& paint) const {
    take(penOf(paint), {});
    canvas_.rectangle(planeRect({rect.left, rect.top, rect.right - 1, rect.bottom - 1}));
}

void Pencil::line(Pixel from, Pixel to, const Paint& paint) const {
    canvas_.setPen(penOf(paint));
    canvas_.line(pointOf(from), pointOf(to));
}

void Pencil::polyline(const std::vector<TvPoint>& points, const Paint& paint) const {
    canvas_.setPen(penOf(paint));
    canvas_.polyline(points);
}

void Pencil::polygon(const std::vector<Pixel>& points, const Paint& edge,
                     const Paint& inside) const {
    take(penOf(edge), inside.color);
    canvas_.polygon(pointsOf(points));
}

void Pencil::circle(Pixel center, int radius, const Paint& edge, const Paint& inside) const {
    take(penOf(edge), inside.color);
    canvas_.ellipse(pointOf(center), radius, radius);
}

void Pencil::arrow(const Arrow& arrow, int head, const Paint& paint, const Paint& shaft) const {
    const int length = std::abs(arrow.tip.y - arrow.tail.y);
    const int size = std::min(head, length);
    const int back = arrow.tip.y > arrow.tail.y ? -size : size;
    line(arrow.tail, {arrow.tip.x, arrow.tip.y + back}, shaft);
    const int half = (size + 1) / 2;
    polygon({arrow.tip,
             {arrow.tip.x - half, arrow.tip.y + back},
             {arrow.tip.x + half, arrow.tip.y + back}},
            paint, paint);
}

int Pencil::textWidth(const CString& text, const TvFont& font) {
    return static_cast<int>(std::ceil(font.measure(text).width));
}

void Pencil::text(Pixel at, const CString& text, TvFont font, const Paint& paint) const {
    font.color = paint.color;
    canvas_.setFont(font);
    canvas_.text(pointOf(at), text, {.level = TvLevel::middle});
}

void Pencil::clip(const PixelRect& rect) const {
    canvas_.clip(planeRect(rect));
}
