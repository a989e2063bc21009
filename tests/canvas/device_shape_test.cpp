#include "canvas/device/device_shape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

using namespace toolbox::canvas;

namespace {

using Use = DeviceShape::Use;

DeviceShape shapeOf(const TvPath& path, Use use, const DeviceMap& map = {}) {
    DeviceShape shape;
    shape.set(path, map, use);
    return shape;
}

TEST(DeviceShape, MakesPiecesOfWholeUnits) {
    TvPath path;
    path.moveTo({0.4, 0.5}).lineTo({10.6, -0.5}).lineTo({3, 3}).close();
    path.moveTo({50, 50}).moveTo({5, 5}).lineTo({5.1, 5.1}).moveTo({7, 7}).lineTo({7, 7});
    const DeviceShape outline = shapeOf(path, Use::outline, {2, 2, 1, 0});
    std::string text;
    for (const DevicePoint& point : outline.points())
        text += std::to_string(point.x) + ',' + std::to_string(point.y) + ' ';
    EXPECT_EQ(text, "2,1 22,-1 7,6 11,10 12,10 15,14 15,14 ");
    EXPECT_EQ(outline.counts(), (std::vector<int>{3, 2, 2}));
    EXPECT_EQ(outline.closed(), (std::vector<bool>{true, false, false}));
    EXPECT_TRUE(shapeOf(path, Use::fill).allClosed());
    EXPECT_TRUE(shapeOf({}, Use::fill).empty());
}

TEST(DeviceShape, KeepsCurvesNearTheirCircle) {
    for (const double radius : {3.0, 400.0, 1e4, 1e6}) {
        const DeviceShape shape = shapeOf(TvPath().ellipse({5, 5}, radius, radius), Use::outline);
        const auto& points = shape.points();
        // Of the arc that the curves are: 0.03 % of the radius.
        const double off = 1 + radius * 3e-4;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const DevicePoint a = points[i - 1];
            const DevicePoint b = points[i];
            EXPECT_NEAR(std::hypot((a.x + b.x) / 2.0 - 5, (a.y + b.y) / 2.0 - 5), radius, off);
        }
    }
}

/// What is cut off does not change what is inside: random pieces against a test of each place.
TEST(DeviceShape, CutsWhatIsFarAwayOnly) {
    std::mt19937 chance(1);
    std::uniform_real_distribution<double> anywhere(-4 * kDeviceFar, 4 * kDeviceFar);
    const auto crossings = [](const std::vector<TvPoint>& polygon, TvPoint at) {
        bool inside = false;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const TvPoint a = polygon[i];
            const TvPoint b = polygon[(i + 1) % polygon.size()];
            if ((a.y > at.y) != (b.y > at.y) &&
                at.x < a.x + (at.y - a.y) / (b.y - a.y) * (b.x - a.x))
                inside = !inside;
        }
        return inside;
    };
    int shown = 0;
    for (int turn = 0; turn < 300; ++turn) {
        std::vector<TvPoint> corners(3 + chance() % 4);
        for (TvPoint& corner : corners) corner = {anywhere(chance), anywhere(chance)};
        const DeviceShape fill = shapeOf(TvPath().polygon(corners), Use::fill);
        std::vector<TvPoint> cut;
        for (const DevicePoint& point : fill.points()) {
            EXPECT_LE(std::max(std::abs(1.0 * point.x), std::abs(1.0 * point.y)), kDeviceFar);
            cut.push_back({1.0 * point.x, 1.0 * point.y});
        }
        for (int i = 0; i < 20; ++i) {
            const TvPoint at{anywhere(chance) / 4.1, anywhere(chance) / 4.1};
            EXPECT_EQ(crossings(cut, at), crossings(corners, at)) << turn;
        }
        const DeviceShape line = shapeOf(TvPath().polyline({corners.data(), 2}), Use::outline);
        const TvPoint along{corners[1].x - corners[0].x, corners[1].y - corners[0].y};
        for (const DevicePoint& point : line.points()) {
            ++shown;
            const double off =
                along.x * (point.y - corners[0].y) - along.y * (point.x - corners[0].x);
            EXPECT_LE(std::fabs(off) / std::hypot(along.x, along.y), 1) << turn;
        }
    }
    EXPECT_GT(shown, 30);
}

}  // namespace
