// Pixels of a window, and those of the drawing, which are a 96th of an inch at every resolution
// (Windows only).
#pragma once

#include <windows.h>

#include <cmath>

#include "drawing/drawing_plane.h"

/// The screen's resolution as the drawing sees it.
class ScreenScale {
  public:
    ScreenScale() {
        constexpr double kUsualResolution = 96;
        const HDC screen = GetDC(nullptr);
        factor_ = GetDeviceCaps(screen, LOGPIXELSX) / kUsualResolution;
        ReleaseDC(nullptr, screen);
    }

    /// Pixels of the window for one of the drawing.
    [[nodiscard]] double factor() const { return factor_; }
    [[nodiscard]] Pixel toDrawing(const POINT& at) const {
        return {scaled(at.x, 1 / factor_), scaled(at.y, 1 / factor_)};
    }
    [[nodiscard]] POINT toWindow(Pixel at) const {
        return {scaled(at.x, factor_), scaled(at.y, factor_)};
    }

  private:
    [[nodiscard]] static int scaled(int value, double by) {
        return static_cast<int>(std::lround(value * by));
    }

    double factor_ = 1;
};
