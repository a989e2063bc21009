// Paths and clippings on a device context. Everything is polygons and polylines in its own units.
#include "canvas/device/device_win32.h"

#include <algorithm>
#include <cmath>

using namespace toolbox::canvas;

namespace {

constexpr double kMostScale = 1e6;
constexpr float kSmooth = 1.1F;  // joins of up to 49 degrees, more than those within curves

[[nodiscard]] bool isScale(double scale) {
    return scale > 0 && scale <= kMostScale;  // false for what is no number
}

[[nodiscard]] bool isPage(const TvDevicePage& page) {
    return isScale(page.scaleX) && isScale(page.scaleY) &&
           std::fabs(page.originX) <= kTvCanvasFar && std::fabs(page.originY) <= kTvCanvasFar;
}

[[nodiscard]] bool canDrawOn(HDC dc) {
    const DWORD type = GetObjectType(dc);
    return type == OBJ_DC || type == OBJ_MEMDC || type == OBJ_ENHMETADC;
}

[[nodiscard]] bool hasCurve(const TvPath& path) {
    const auto steps = path.steps();
    return std::find(steps.begin(), steps.end(), TvPath::Curve) != steps.end();
}

/// Whether the shape is one upright rectangle.
[[nodiscard]] bool isRectangle(const DeviceShape& shape) {
    const auto& p = shape.points();
    if (shape.counts().size() != 1 || p.size() != 4) return false;
    return (p[0].x == p[3].x && p[1].x == p[2].x && p[0].y == p[1].y && p[2].y == p[3].y) ||
           (p[0].x == p[1].x && p[2].x == p[3].x && p[1].y == p[2].y && p[0].y == p[3].y);
}

}  // namespace

TvDeviceCanvas::Device::Device(HDC dc, const TvDevicePage& page)
    : dc_(dc),
      map_{page.scaleX, page.scaleY, page.originX, page.originY},
      tools_(dc, map_.scale()) {
    if (!isPage(page) || !canDrawOn(dc)) return;
    isPicture_ = GetObjectType(dc) == OBJ_ENHMETADC;
    saved_ = SaveDC(dc);
    SetPolyFillMode(dc, ALTERNATE);
    SetROP2(dc, R2_COPYPEN);
    SetMiterLimit(dc, kSmooth, nullptr);
    SetBkMode(dc, TRANSPARENT);
    SetTextAlign(dc, TA_LEFT | TA_BASELINE | TA_NOUPDATECP);
    SetTextCharacterExtra(dc, 0);
    SetTextJustification(dc, 0, 0);
}

TvDeviceCanvas::Device::~Device() {
    if (saved_ != 0) RestoreDC(dc_, saved_);
}

bool TvDeviceCanvas::Device::drawPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    if (saved_ == 0) return false;
    bool done = true;
    if (brush) {
        shape_.set(path, map_, nullptr);
        done = fill(*brush);
    }
    if (pen) {
        shape_.set(path, map_, pen);
        done = outline(path, *pen) && done;
    }
    return done;
}

bool TvDeviceCanvas::Device::polygons() {
    const auto& counts = shape_.counts();
    return PolyPolygon(dc_, shape_.points().data(), counts.data(),
                       static_cast<int>(counts.size())) != 0;
}

bool TvDeviceCanvas::Device::fill(const TvBrush& brush) {
    return shape_.empty() || (tools_.usePen(nullptr) && tools_.useBrush(&brush) && polygons());
}

bool TvDeviceCanvas::Device::outline(const TvPath& path, const TvPen& pen) {
    if (shape_.empty()) return true;
    if (!tools_.usePen(&pen, hasCurve(path))) return false;
    if (!shape_.noneClosed() && !tools_.useBrush(nullptr)) return false;
    const auto& counts = shape_.counts();
    const POINT* points = shape_.points().data();
    if (shape_.allClosed()) return polygons();
    if (shape_.noneClosed() && counts.size() > 1) {
        const std::vector<DWORD> each(counts.begin(), counts.end());
        return PolyPolyline(dc_, points, each.data(), static_cast<DWORD>(each.size())) != 0;
    }
    bool done = true;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const int count = counts[i];
        done = (shape_.closed()[i] ? Polygon(dc_, points, count) : Polyline(dc_, points, count)) &&
               done;
        points += count;
    }
    return done;
}

bool TvDeviceCanvas::Device::clip(const TvPath& path) {
    if (saved_ == 0) return false;
    tools_.letGo();  // so that no state that is restored has them
    clips_.push_back(SaveDC(dc_));
    shape_.set(path, map_, nullptr);
    return clips_.back() != 0 && clipToShape();
}

bool TvDeviceCanvas::Device::clipToShape() {
    const auto& p = shape_.points();
    if (shape_.empty()) return IntersectClipRect(dc_, 0, 0, 0, 0) != ERROR;
    if (isRectangle(shape_))
        return IntersectClipRect(dc_, std::min(p[0].x, p[2].x), std::min(p[0].y, p[2].y),
                                 std::max(p[0].x, p[2].x), std::max(p[0].y, p[2].y)) != ERROR;
    return BeginPath(dc_) && polygons() && EndPath(dc_) && SelectClipPath(dc_, RGN_AND);
}

bool TvDeviceCanvas::Device::unclip() {
    if (clips_.empty()) return false;
    const int state = clips_.back();
    clips_.pop_back();
    tools_.letGo();
    return state != 0 && RestoreDC(dc_, state) != 0;
}

TvDeviceCanvas::TvDeviceCanvas(HDC dc, const TvDevicePage& page)
    : TvCanvas(page.width, page.height), device_(std::make_unique<Device>(dc, page)) {}

TvDeviceCanvas::~TvDeviceCanvas() = default;

void TvDeviceCanvas::onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    if (!device_->drawPath(path, pen, brush)) refuse();
}

void TvDeviceCanvas::onText(TvPoint at, const TvText& text, const TvFont& font,
                            const TvTextPlace& place) {
    if (!device_->drawText(at, text, font, place)) refuse();
}

void TvDeviceCanvas::onClip(const TvPath& path) {
    if (!device_->clip(path)) refuse();
}

void TvDeviceCanvas::onUnclip() {
    if (!device_->unclip()) refuse();
}
