// What draggers draw, in a real window: pixels before, during and after.
#include <gtest/gtest.h>

#include <algorithm>
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

/// Drags from kStart to kEnd and takes the figure away, looking at every pixel of the window.
struct DraggerPixels : ::testing::Test {
    /// `reached` are parts of the figure, each of which shows.
    void expectDrawnOnly(Dragger& dragger, const std::vector<OnFigure>& reached) {
        const Picture before = window.picture();
        const HDC dc = GetDC(window.handle());
        dragger.anchor(kStart, dc);
        dragger.drag(dc, {70, 150});
        dragger.drag(dc, kEnd);
        const Picture during = window.picture();
        EXPECT_NE(dragger.isVisible(), 0);
        std::vector<int> hits(reached.size());
        for (const POINT& p : differences(before, during)) {
            bool expected = false;
            for (std::size_t i = 0; i < reached.size(); ++i) {
                const bool hit = reached[i](p.x, p.y);
                hits[i] += hit;
                expected |= hit;
            }
            ASSERT_TRUE(expected) << p.x << ", " << p.y;
            // Blue, combined with what is below.
            ASSERT_EQ(during.at(p.x, p.y), ~(before.at(p.x, p.y) ^ 0x0000FFu) & 0xFFFFFF);
        }
        for (std::size_t i = 0; i < hits.size(); ++i) EXPECT_GT(hits[i], 10) << i;
        dragger.erase(dc);
        EXPECT_EQ(dragger.isVisible(), 0);
        EXPECT_TRUE(window.picture() == before) << "the picture is not restored";
        // What it selects into the context is taken out again.
        EXPECT_EQ(GetROP2(dc), R2_COPYPEN);
        EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), GetStockObject(BLACK_PEN));
        ReleaseDC(window.handle(), dc);
    }

    static OnFigure line(const POINT& a, const POINT& b) {
        return [=](int x, int y) { return onLine(a, b, x, y); };
    }

    PictureWindow window;
};

TEST_F(DraggerPixels, NothingForVoid) {
    VoidDragger dragger(nullptr);
    expectDrawnOnly(dragger, {});
}

TEST_F(DraggerPixels, FourSidesForARectangle) {
    RectDragger dragger(nullptr);
    dragger.setMode(1);  // to no effect
    dragger.setCursorPosMode(1);
    EXPECT_EQ(dragger.isModeOrtho() + dragger.getCursorPosMode() + dragger.getMode(), 0);
    // The right and the lower side lie within.
    const POINT last{kEnd.x - 1, kEnd.y - 1};
    expectDrawnOnly(dragger, {line(kStart, {last.x, kStart.y}), line(kStart, {kStart.x, last.y}),
                              line({last.x, kStart.y}, last), line({kStart.x, last.y}, last)});
}

TEST_F(DraggerPixels, ALineForAVector) {
    VectDragger dragger(0, nullptr, 0);
    expectDrawnOnly(dragger, {line(kStart, kEnd)});
}

TEST_F(DraggerPixels, ALineFromItsPresetStart) {
    VectIniDragger dragger(0, nullptr, 0);
    dragger.setDims({200, 20});
    expectDrawnOnly(dragger, {line({200, 20}, kEnd)});
}

TEST_F(DraggerPixels, TwoSidesOfATriangle) {
    TriangleIniDragger dragger(0, nullptr, 0);
    dragger.setDims({30, 170}, {250, 150});
    expectDrawnOnly(dragger, {line({30, 170}, kEnd), line(kEnd, {250, 150})});
}

TEST_F(DraggerPixels, AStickThatFollows) {
    StickDragger dragger(0, nullptr, 0);
    dragger.setDims({5, 5}, {60, -40});
    expectDrawnOnly(dragger, {line(kEnd, {kEnd.x + 60, kEnd.y - 40})});
    EXPECT_EQ(xy(dragger.getOrthoOrigin()), xy({5, 5}));
}

TEST_F(DraggerPixels, AnEllipseWithItsRadius) {
    const POINT center{150, 100};
    const auto onEllipse = [=](int x, int y) {
        // Between the ellipses whose radii are 2 less and 2 more.
        const auto inside = [&](double grown) {
            return std::hypot((x - center.x) / (80 + grown), (y - center.y) / (50 + grown)) <= 1;
        };
        return inside(2) && !inside(-2);
    };
    ThetaDragger theta(0, nullptr);
    theta.setDims(center, 80, 50);
    theta.setCursorPosMode(1);
    EXPECT_EQ(theta.getCursorPosMode(), 0);
    // kEnd is (10, 10) off the center: 206.57 and, mirrored, 64.64.
    const POINT end{206, 64};
    expectDrawnOnly(theta, {onEllipse, line(center, end)});
    ThetaIniDragger preset(0, nullptr);
    preset.setDims(center, 80, 50, {7, 9});
    expectDrawnOnly(preset, {onEllipse, line(center, end)});
    POINT first;
    POINT last;
    preset.getPoints(first, last);
    EXPECT_EQ(xy(first), xy({7, 9}));
    EXPECT_EQ(xy(last), xy(end));
}

/// Counts instead of drawing.
class CountingDragger : public Dragger {
  public:
    explicit CountingDragger(int ortho) : Dragger(ortho, nullptr, 0) {}
    int drawn = 0;
    int removed = 0;

  protected:
    void drawVisible(HDC, const POINT&, const POINT&) override { ++drawn; }
    void drawInvisible(HDC, const POINT&, const POINT&) override { ++removed; }
};

TEST(Dragger, DrawsOnlyWhatChanges) {
    CountingDragger dragger(1);
    const HDC dc = CreateCompatibleDC(nullptr);
    dragger.erase(dc);
    EXPECT_EQ(dragger.removed, 0);
    dragger.anchor({10, 10}, dc);
    dragger.drag(dc, {30, 12});
    EXPECT_EQ(dragger.drawn, 2);
    EXPECT_EQ(dragger.removed, 1);
    dragger.drag(dc, {30, 15});  // the same point on the horizontal
    EXPECT_EQ(dragger.drawn, 2);
    dragger.drag(dc, {11, 40});
    EXPECT_EQ(dragger.drawn, 3);
    dragger.anchor({11, 40}, dc);  // removed, and drawn from the new start
    EXPECT_EQ(dragger.drawn, 4);
    EXPECT_EQ(dragger.removed, 3);
    EXPECT_EQ(xy(dragger.getOrthoOrigin()), xy({11, 40}));
    DeleteDC(dc);
}

TEST(Dragger, WithoutADeviceContextKeepsThePoints) {
    POINT start;
    POINT end;
    CountingDragger dragger(0);
    dragger.anchor({3, 4}, nullptr);
    dragger.getPoints(start, end);
    EXPECT_EQ(xy(start), xy({3, 4}));
    EXPECT_EQ(xy(end), xy({3, 4}));
    EXPECT_EQ(dragger.drawn + dragger.isVisible(), 0);

    ThetaIniDragger theta(0, nullptr);
    theta.setDims({100, 100}, 50, 20, {100, 160});
    theta.anchor({1, 1}, nullptr);
    theta.getPoints(start, end);
    EXPECT_EQ(xy(start), xy({100, 160}));
    EXPECT_EQ(xy(end), xy({100, 80}));  // the start, onto the ellipse
}

}  // namespace
