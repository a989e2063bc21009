// What draggers draw, in a real window: pixels before, during and after.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "picture_window.h"

namespace {

using OnFigure = std::function<bool(int x, int y)>;

constexpr POINT kStart{40, 50};
constexpr POINT kEnd{160, 110};

/// Within a pixel of the segment.
bool onLine(const POINT& a, const POINT& b, int x, int y) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double along = ((x - a.x) * (b.x - a.x) + (y - a.y) * (b.y - a.y)) / length;
    const double off = std::abs((x - a.x) * (b.y - a.y) - (y - a.y) * (b.x - a.x)) / length;
    return off < 1 && along > -1 && along < length + 1;
}

OnFigure line(const POINT& a, const POINT& b) {
    return [=](int x, int y) { return onLine(a, b, x, y); };
}

/// Within two pixels of the ellipse with the radii 80 and 50.
OnFigure ellipse(const POINT& center) {
    return [=](int x, int y) {
        const auto inside = [&](double grown) {
            return std::hypot((x - center.x) / (80 + grown), (y - center.y) / (50 + grown)) <= 1;
        };
        return inside(2) && !inside(-2);
    };
}

TEST(Dragger, DrawsItsFigureAndTakesItAway) {
    RectDragger rectangle(nullptr);
    rectangle.setMode(1);  // to no effect
    VectIniDragger preset(0, nullptr, 0);
    preset.setDims({200, 20});
    TriangleIniDragger triangle(0, nullptr, 0);
    triangle.setDims({30, 170}, {250, 150});
    StickDragger stick(0, nullptr, 0);
    stick.setDims({5, 5}, {60, -40});
    const POINT center{150, 100};
    ThetaDragger theta(0, nullptr);
    theta.setDims(center, 80, 50);
    VectDragger vector(0, nullptr, 0);

    // The right and the lower side of a rectangle lie within.
    const POINT last{kEnd.x - 1, kEnd.y - 1};
    // kEnd is (10, 10) off the center: 206.57 and, mirrored, 64.64.
    const struct {
        Dragger& dragger;
        std::vector<OnFigure> parts;  // each of which shows
    } cases[] = {
        {rectangle,
         {line(kStart, {last.x, kStart.y}), line(kStart, {kStart.x, last.y}),
          line({last.x, kStart.y}, last), line({kStart.x, last.y}, last)}},
        {vector, {line(kStart, kEnd)}},
        {preset, {line({200, 20}, kEnd)}},
        {triangle, {line({30, 170}, kEnd), line(kEnd, {250, 150})}},
        {stick, {line(kEnd, {kEnd.x + 60, kEnd.y - 40})}},
        {theta, {ellipse(center), line(center, {206, 64})}},
    };
    PictureWindow window;
    const Picture before = window.picture();
    const HDC dc = GetDC(window.handle());
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        c.dragger.anchor(kStart, dc);
        c.dragger.drag(dc, {70, 150});
        c.dragger.drag(dc, kEnd);
        const Picture during = window.picture();
        std::vector<int> hits(c.parts.size());
        for (const POINT& p : differences(before, during)) {
            bool expected = false;
            for (std::size_t i = 0; i < hits.size(); ++i) {
                const bool hit = c.parts[i](p.x, p.y);
                hits[i] += hit;
                expected |= hit;
            }
            ASSERT_TRUE(expected) << p.x << ", " << p.y;
            // Blue, combined with what is below.
            ASSERT_EQ(during.at(p.x, p.y), ~(before.at(p.x, p.y) ^ 0x0000FFu) & 0xFFFFFF);
        }
        for (const int each : hits) EXPECT_GT(each, 10);
        c.dragger.erase(dc);
        EXPECT_EQ(c.dragger.isVisible(), 0);
        EXPECT_TRUE(window.picture() == before) << "the picture is not restored";
        // What it selects into the context is taken out again.
        EXPECT_EQ(GetROP2(dc), R2_COPYPEN);
        EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), GetStockObject(BLACK_PEN));
    }
    ReleaseDC(window.handle(), dc);
    EXPECT_EQ(xy(stick.getOrthoOrigin()), xy({5, 5}));
}

}  // namespace
