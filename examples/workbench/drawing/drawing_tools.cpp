// Drawing through the system's functions; objects are selected when they are needed, and the state
// of the device context is restored at the end.
#include "drawing/drawing_tools.h"

#include <algorithm>
#include <cstdlib>

namespace {

HFONT fontOf(int height, int weight) {
    LOGFONTA font{};
    font.lfHeight = -height;
    font.lfWeight = weight;
    font.lfCharSet = ANSI_CHARSET;
    font.lfQuality = ANTIALIASED_QUALITY;
    lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
    return CreateFontIndirectA(&font);
}

RECT rectOf(const PixelRect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

std::vector<POINT> pointsOf(const std::vector<Pixel>& pixels) {
    std::vector<POINT> points;
    for (const Pixel& pixel : pixels) points.push_back({pixel.x, pixel.y});
    return points;
}

}  // namespace

DrawingTools::DrawingTools()
    : font(fontOf(12, FW_NORMAL)),
      boldFont(fontOf(13, FW_BOLD)),
      smallFont(fontOf(11, FW_NORMAL)) {}

Canvas::Canvas(HDC dc, const DrawingTools& with) : tools(with), dc_(dc), saved_(SaveDC(dc)) {
    SetBkMode(dc, TRANSPARENT);
}

Canvas::~Canvas() {
    RestoreDC(dc_, saved_);
}

void Canvas::fill(const PixelRect& rect, const Paint& paint) const {
    const RECT area = rectOf(rect);
    FillRect(dc_, &area, paint.brush);
}

void Canvas::frame(const PixelRect& rect, const Paint& paint) const {
    const RECT area = rectOf(rect);
    FrameRect(dc_, &area, paint.brush);
}

void Canvas::line(Pixel from, Pixel to, const Paint& paint) const {
    SelectObject(dc_, paint.pen);
    MoveToEx(dc_, from.x, from.y, nullptr);
    LineTo(dc_, to.x, to.y);
}

void Canvas::polyline(const std::vector<Pixel>& points, const Paint& paint) const {
    SelectObject(dc_, paint.pen);
    const std::vector<POINT> corners = pointsOf(points);
    Polyline(dc_, corners.data(), static_cast<int>(corners.size()));
}

void Canvas::polygon(const std::vector<Pixel>& points, const Paint& edge,
                     const Paint& inside) const {
    SelectObject(dc_, edge.pen);
    SelectObject(dc_, inside.brush);
    const std::vector<POINT> corners = pointsOf(points);
    Polygon(dc_, corners.data(), static_cast<int>(corners.size()));
}

void Canvas::circle(Pixel center, int radius, const Paint& edge, const Paint& inside) const {
    SelectObject(dc_, edge.pen);
    SelectObject(dc_, inside.brush);
    Ellipse(dc_, center.x - radius, center.y - radius, center.x + radius + 1,
            center.y + radius + 1);
}

void Canvas::arrow(const Arrow& arrow, int head, const Paint& paint, const Paint& shaft) const {
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

int Canvas::textWidth(const CString& text, HFONT font) const {
    SelectObject(dc_, font);
    SIZE size{};
    GetTextExtentPoint32A(dc_, text.c_str(), text.GetLength(), &size);
    return size.cx;
}

int Canvas::textHeight(HFONT font) const {
    SelectObject(dc_, font);
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc_, &metrics);
    return metrics.tmHeight;
}

void Canvas::text(Pixel at, const CString& text, HFONT font, const Paint& paint) const {
    const int top = at.y - textHeight(font) / 2;
    SetTextColor(dc_, paint.colour);
    TextOutA(dc_, at.x, top, text.c_str(), text.GetLength());
}

void Canvas::clip(const PixelRect& rect) const {
    IntersectClipRect(dc_, rect.left, rect.top, rect.right, rect.bottom);
}
