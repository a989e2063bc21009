// Places of windows and controls.
#include "dialog/layout/boxes.h"

#include <algorithm>

namespace toolbox::dialog {
namespace {

constexpr int kWhole = 100;  // percent

int part(int gained, int percent) {
    const long long hundredfold = static_cast<long long>(gained) * percent;
    return static_cast<int>(hundredfold / kWhole);
}

/// Of what two boxes have in common, in pixels.
long long commonArea(const Box& a, const Box& b) {
    const long long width = std::min(a.right, b.right) - std::max(a.left, b.left);
    const long long height = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return width > 0 && height > 0 ? width * height : 0;
}

/// Square of the distance between the edges of two boxes that have nothing in common.
long long distance(const Box& a, const Box& b) {
    const long long x = std::max({a.left - b.right, b.left - a.right, 0});
    const long long y = std::max({a.top - b.bottom, b.top - a.bottom, 0});
    return x * x + y * y;
}

const Box& nearestScreen(const Box& box, std::span<const Box> screens) {
    return *std::min_element(screens.begin(), screens.end(), [&](const Box& a, const Box& b) {
        const long long areaA = commonArea(box, a);
        const long long areaB = commonArea(box, b);
        return areaA != areaB ? areaA > areaB : distance(box, a) < distance(box, b);
    });
}

/// Where a stretch goes so that it lies between the ends; its beginning does in any case.
int within(int from, int length, int first, int last) {
    return std::max(std::min(from, last - length), first);
}

}  // namespace

Box follow(const Box& control, const EdgeShares& shares, int wider, int higher) {
    Box moved{control.left + part(wider, shares.left), control.top + part(higher, shares.top),
              control.right + part(wider, shares.right),
              control.bottom + part(higher, shares.bottom)};
    moved.right = std::max(moved.right, moved.left);
    moved.bottom = std::max(moved.bottom, moved.top);
    return moved;
}

int scaled(int pixels, int fromDpi, int toDpi) {
    if (fromDpi <= 0 || toDpi <= 0 || fromDpi == toDpi) return pixels;
    const long long product = static_cast<long long>(pixels) * toDpi;
    const long long half = product < 0 ? -fromDpi / 2 : fromDpi / 2;
    return static_cast<int>((product + half) / fromDpi);
}

bool isOnScreens(const Box& box, std::span<const Box> screens) {
    long long covered = 0;
    for (const Box& screen : screens) covered += commonArea(box, screen);
    return covered >= static_cast<long long>(box.width()) * box.height();
}

Box ontoScreens(const Box& box, std::span<const Box> screens, bool mayShrink) {
    if (screens.empty() || isOnScreens(box, screens)) return box;
    const Box& screen = nearestScreen(box, screens);
    const int width = mayShrink ? std::min(box.width(), screen.width()) : box.width();
    const int height = mayShrink ? std::min(box.height(), screen.height()) : box.height();
    const int left = within(box.left, width, screen.left, screen.right);
    const int top = within(box.top, height, screen.top, screen.bottom);
    return {left, top, left + width, top + height};
}

Box centredOver(const Box& box, const Box& other) {
    return box.movedTo(other.left + (other.width() - box.width()) / 2,
                       other.top + (other.height() - box.height()) / 2);
}

}  // namespace toolbox::dialog
