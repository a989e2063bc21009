// Places of windows and controls: pure arithmetic, without windows.
#pragma once

#include <span>

namespace toolbox::dialog {

/// A rectangle in pixels; the right and the bottom edge are just outside.
struct Box {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
    [[nodiscard]] Box movedTo(int x, int y) const { return {x, y, x + width(), y + height()}; }

    friend bool operator==(const Box&, const Box&) = default;
};

/// How much of what its window gains each edge of a control moves, in percent.
struct EdgeShares {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// Where a control of a window goes that has become wider and higher by so much; never smaller than
/// nothing.
[[nodiscard]] Box follow(const Box& control, const EdgeShares& shares, int wider, int higher);

/// A size as it appears at another number of dots per inch, rounded.
[[nodiscard]] int scaled(int pixels, int fromDpi, int toDpi);

/// True when no part of the box is off the screens, which do not overlap: it may stand on several.
[[nodiscard]] bool isOnScreens(const Box& box, std::span<const Box> screens);

/// The box moved, as far as it must be, onto the screen that has most of it, or else the nearest.
/// Of one that is larger than that, the left upper corner is there; with `mayShrink` it becomes as
/// large as the screen. Without screens it stays where it is.
[[nodiscard]] Box ontoScreens(const Box& box, std::span<const Box> screens, bool mayShrink);

/// The box moved over the middle of another.
[[nodiscard]] Box centredOver(const Box& box, const Box& other);

}  // namespace toolbox::dialog
