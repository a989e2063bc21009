// The two points of a gesture, and when its shape is drawn.
#include "graphics/drag_geometry.h"
#include "toolbox/graphics.h"

namespace {

constexpr std::uint32_t kVisible = 1;
constexpr std::uint32_t kOrtho = 2;
constexpr std::uint32_t kCursorPos = 4;

toolbox::graphics::Pixel pixel(const POINT& point) {
    return {point.x, point.y};
}

POINT toPoint(toolbox::graphics::Pixel pixel) {
    return {pixel.x, pixel.y};
}

/// Takes the mouse cursor to a point of the window that has the capture.
void putCursor(const POINT& point) {
    const HWND window = GetCapture();
    if (!window) return;
    POINT wanted = point;
    POINT now;
    ClientToScreen(window, &wanted);
    // Each SetCursorPos is a mouse message that leads here again, so only what moves it is called.
    if (GetCursorPos(&now) && pixel(now) == pixel(wanted)) return;
    SetCursorPos(wanted.x, wanted.y);
}

}  // namespace

Dragger::Dragger(int ortho, HICON cursor, int cursorPosMode)
    : flags_((ortho ? kOrtho : 0) | (cursorPosMode ? kCursorPos : 0)), cursor_(cursor) {}

Dragger::~Dragger() = default;

void Dragger::setOrthoOrigin(const POINT& origin) {
    orthoOrigin_ = origin;
}

POINT Dragger::getOrthoOrigin() {
    return orthoOrigin_;
}

void Dragger::setMode(int ortho) {
    setFlag(kOrtho, ortho != 0);
}

int Dragger::isModeOrtho() {
    return static_cast<int>(flags_ & kOrtho);
}

void Dragger::setCursorPosMode(int on) {
    setFlag(kCursorPos, on != 0);
}

int Dragger::getCursorPosMode() const {
    return static_cast<int>(flags_ & kCursorPos);
}

int Dragger::isVisible() {
    return static_cast<int>(flags_ & kVisible);
}

void Dragger::getPoints(POINT& start, POINT& end) {
    start = start_;
    end = end_;
}

void Dragger::erase(HDC dc) {
    if (isVisible()) drawInvisible(dc, start_, end_);
    setFlag(kVisible, false);
}

void Dragger::anchor(const POINT& point, HDC dc) {
    setOrthoOrigin(point);
    anchorOnly(point, dc);
}

void Dragger::anchorOnly(const POINT& point, HDC dc) {
    if (isVisible() && dc) erase(dc);
    start_ = point;
    if (dc)
        drag(dc, point);
    else
        end_ = start_;
}

void Dragger::anchorAtPreset(const POINT& point, HDC dc) {
    if (isVisible() && dc) erase(dc);
    if (dc) {
        drag(dc, point);
    } else {
        end_ = start_;
        modifyDraggedPoint(end_);
    }
}

void Dragger::drag(HDC dc, POINT point) {
    if (dc && cursor_) SetCursor(cursor_);
    modifyDraggedPoint(point);
    if (isVisible()) {
        if (pixel(point) == pixel(end_)) return;
        drawInvisible(dc, start_, end_);
    }
    drawVisible(dc, start_, point);
    setFlag(kVisible, true);
    end_ = point;
}

void Dragger::modifyDraggedPoint(POINT& point) {
    if (!isModeOrtho()) return;
    point = toPoint(toolbox::graphics::constrainOrthogonally(pixel(point), pixel(orthoOrigin_)));
    if (getCursorPosMode()) putCursor(point);
}

VectIniDragger::VectIniDragger(int ortho, HICON cursor, int cursorPosMode)
    : VectDragger(ortho, cursor, cursorPosMode) {}

void VectIniDragger::setDims(const POINT& start) {
    setOrthoOrigin(start);
    presetStart(start);
}

void VectIniDragger::anchor(const POINT& point, HDC dc) {
    anchorAtPreset(point, dc);
}

TriangleIniDragger::TriangleIniDragger(int ortho, HICON cursor, int cursorPosMode)
    : VectIniDragger(ortho, cursor, cursorPosMode) {}

void TriangleIniDragger::setDims(const POINT& start, const POINT& third) {
    VectIniDragger::setDims(start);
    third_ = third;
}

StickDragger::StickDragger(int ortho, HICON cursor, int cursorPosMode)
    : Dragger(ortho, cursor, cursorPosMode) {}

void StickDragger::setDims(const POINT& origin, const POINT& stick) {
    setOrthoOrigin(origin);
    stick_ = stick;
}

void StickDragger::anchor(const POINT& point, HDC dc) {
    anchorOnly(point, dc);
}

ThetaDragger::ThetaDragger(int ortho, HICON cursor) : Dragger(ortho, cursor, 0) {}

void ThetaDragger::setDims(const POINT& center, int radiusX, int radiusY) {
    center_ = center;
    radiusX_ = radiusX;
    radiusY_ = radiusY;
    setOrthoOrigin(center);
}

void ThetaDragger::anchor(const POINT& point, HDC dc) {
    anchorOnly(point, dc);
}

void ThetaDragger::setCursorPosMode(int) {}

void ThetaDragger::modifyDraggedPoint(POINT& point) {
    Dragger::modifyDraggedPoint(point);
    point = toPoint(
        toolbox::graphics::projectOntoEllipse(pixel(point), {pixel(center_), radiusX_, radiusY_}));
}

ThetaIniDragger::ThetaIniDragger(int ortho, HICON cursor) : ThetaDragger(ortho, cursor) {}

void ThetaIniDragger::setDims(const POINT& center, int radiusX, int radiusY, const POINT& start) {
    ThetaDragger::setDims(center, radiusX, radiusY);
    presetStart(start);
}

void ThetaIniDragger::anchor(const POINT& point, HDC dc) {
    anchorAtPreset(point, dc);
}
