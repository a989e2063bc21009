// How the plane of a project (metres, y up) is shown in a window (pixels, y down).
#pragma once

#include "project/project.h"
#include "toolbox/transform.h"

struct Pixel {
    int x = 0, y = 0;

    bool operator==(const Pixel&) const = default;
};

/// Right and bottom are outside, as in the system's rectangles.
struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;

    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
    [[nodiscard]] bool contains(Pixel at) const {
        return at.x >= left && at.x < right && at.y >= top && at.y < bottom;
    }
    [[nodiscard]] bool meets(const PixelRect& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    /// Larger by so many pixels on each side.
    [[nodiscard]] PixelRect grown(int by) const {
        return {left - by, top - by, right + by, bottom + by};
    }
    bool operator==(const PixelRect&) const = default;
};

/// The least that has the whole of a rectangle.
[[nodiscard]] PixelRect pixelsOf(const toolbox::PlaneRect& rect);
// Where a canvas has them.
[[nodiscard]] TvPoint pointOf(Pixel pixel);
[[nodiscard]] toolbox::PlaneRect planeRect(const PixelRect& rect);

/// A place in metres.
struct Place {
    double x = 0, y = 0;

    bool operator==(const Place&) const = default;
};

/// The smallest rectangle with every beam and every label's place in it; top is the highest y. A
/// project without beams has a piece of the plane to draw the first in.
[[nodiscard]] toolbox::PlaneRect extentOf(const Project& project);

class DrawingPlane {
  public:
    static constexpr double kScaleMin = 0.02, kScaleMax = 2000;  ///< pixels a metre

    DrawingPlane() { place(1, 0, 0); }
    /// All of an extent in the middle of a part of the window, with room around it for what is
    /// drawn of beams at its edge. Where that would be smaller than a scale, the upper left of it.
    DrawingPlane(const toolbox::PlaneRect& extent, const PixelRect& part, double scaleMin = 0);

    [[nodiscard]] double scale() const { return scale_; }
    /// From places to pixels.
    [[nodiscard]] const TransMatrix2D& matrix() const { return toWindow_; }
    [[nodiscard]] Pixel toWindow(const Place& place) const;
    [[nodiscard]] Place toPlane(Pixel pixel) const;
    /// The place that the mouse picks at a pixel.
    [[nodiscard]] Place snappedPlace(Pixel pixel) const;
    /// The part of the plane that a part of the window shows; top is the highest y.
    [[nodiscard]] toolbox::PlaneRect shown(const PixelRect& part) const;

    /// Larger or smaller by a factor, within the limits; what is at `about` stays there.
    void zoom(double factor, Pixel about);
    /// Moves the picture by so many pixels.
    void pan(int dx, int dy);

  private:
    void place(double scale, double x, double y);

    double scale_ = 1;
    TransMatrix2D toWindow_;
    TransMatrix2D toPlane_;
};

/// Metres between lines of a grid: 1, 2 or 5 times a power of ten, the least that keeps them
/// `pixels` apart.
[[nodiscard]] double gridStep(double scale, int pixels);
