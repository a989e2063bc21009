#include "canvas/device/device_shape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

using namespace toolbox::canvas;

namespace {

const TvPen kPen{{}, 1};

DeviceShape shapeOf(const TvPath& path, const TvPen* pen, const DeviceMap& map = {}) {
    DeviceShape shape;
    shape.set(path, map, pen);
    return shape;
}

TEST(DeviceShape, MakesPiecesOfWholeUnits) {
    TvPath path;
    path.moveTo({0.4, 0.5}).lineTo({10.6, -0.5}).lineTo({3, 3}).close();
    path.moveTo({50, 50}).moveTo({5, 5}).lineTo({5.1, 5.1}).moveTo({7, 7}).lineTo({7, 7});
    const DeviceShape outline = shapeOf(path, &kPen, {2, 2, 1, 0});
    std::string text;
    for (const DevicePoint& point : outline.points())
        text += std::to_string(point.x) + ',' + std::to_string(point.y) + ' ';
    EXPECT_EQ(text, "2,1 22,-1 7,6 11,10 12,10 15,14 15,14 ");
    EXPECT_EQ(outline.counts(), (std::vector<int>{3, 2, 2}));
    EXPECT_EQ(outline.closed(), (std::vector<bool>{true, false, false}));
    EXPECT_TRUE(shapeOf(path, nullptr).allClosed());
    EXPECT_TRUE(shapeOf({}, nullptr).empty());
}

TEST(DeviceShape, MakesDashesRoundCorners) {
    const auto dashes = [](const TvPath& path, std::array<double, 6> dash) {
        const TvPen pen{{}, 1, dash};
        return shapeOf(path, &pen).counts();
    };
    const TvPath square = TvPath().rectangle({0, 0, 10, 10});
    EXPECT_EQ(dashes(square, {7, 1}), (std::vector<int>{2, 3, 3, 3, 2}));
    EXPECT_EQ(dashes(square, {20}), (std::vector<int>{3}));  // and as much left out
    // No more than can be seen, or counted.
    EXPECT_EQ(dashes(square, {1e-9, 1e-9}), (std::vector<int>{4}));
    EXPECT_EQ(dashes(TvPath().moveTo({-1e9, 0}).lineTo({1e9, 0}), {2, 2}), (std::vector<int>{2}));
}

TEST(DeviceShape, KeepsArcsOnTheirCircle) {
    for (const double sweep : {0.1, -2.0, 3.2, 6.2, 7.0, -100.0}) {
        for (const double radius : {3.0, 400.0, 1e4, 1e6}) {
            const TvPath path = TvPath().arc({5, 5}, radius, radius, 0.7, sweep);
            const bool isWhole = std::fabs(sweep) > 2 * std::numbers::pi;
            EXPECT_EQ(path.steps().back() == TvPath::Close, isWhole);
            const DeviceShape shape = shapeOf(path, &kPen);
            const auto& points = shape.points();
            for (std::size_t i = 1; i < points.size(); ++i) {
                const double x = (points[i - 1].x + points[i].x) / 2.0 - 5;
                const double y = (points[i - 1].y + points[i].y) / 2.0 - 5;
                ASSERT_NEAR(std::hypot(x, y), radius, 1 + radius * 3e-4) << sweep;
            }
            if (isWhole) continue;
            EXPECT_NEAR(points.back().x, 5 + radius * std::cos(0.7 + sweep), 1.1);
            EXPECT_NEAR(points.back().y, 5 + radius * std::sin(0.7 + sweep), 1.1);
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
        const DeviceShape fill = shapeOf(TvPath().polygon(corners), nullptr);
        std::vector<TvPoint> cut;
        for (const DevicePoint& point : fill.points()) {
            EXPECT_LE(std::max(std::abs(1.0 * point.x), std::abs(1.0 * point.y)), kDeviceFar);
            cut.push_back({1.0 * point.x, 1.0 * point.y});
        }
        for (int i = 0; i < 20; ++i) {
            const TvPoint at{anywhere(chance) / 4.1, anywhere(chance) / 4.1};
            EXPECT_EQ(crossings(cut, at), crossings(corners, at)) << turn;
        }
        const DeviceShape line = shapeOf(TvPath().polyline({corners.data(), 2}), &kPen);
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
