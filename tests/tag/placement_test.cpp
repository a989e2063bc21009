#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <tuple>
#include <vector>

#include "toolbox/tag_layout.h"

namespace {

using toolbox::PlaneRect;

constexpr double kTouch = 0.001;
const TransMatrix2D kPlain;

/// What a box covers, found by cutting a segment with all four sides.
bool covers(const PlaneRect& box, const TvSegment& line) {
    double from = 0;
    double to = 1;
    const auto cut = [&](double start, double delta, double low, double high) {
        if (delta == 0) return start > low && start < high;
        const double a = (low - start) / delta;
        const double b = (high - start) / delta;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
        return from < to;
    };
    return cut(line.from.x, line.to.x - line.from.x, box.left + kTouch, box.right - kTouch) &&
           cut(line.from.y, line.to.y - line.from.y, box.top + kTouch, box.bottom - kTouch);
}
bool covers(const PlaneRect& box, const PlaneRect& other) {
    return box.left + kTouch < other.right && box.right - kTouch > other.left &&
           box.top + kTouch < other.bottom && box.bottom - kTouch > other.top;
}
bool isWithin(const PlaneRect& box, const PlaneRect& frame) {
    return box.left >= frame.left - kTouch && box.right <= frame.right + kTouch &&
           box.top >= frame.top - kTouch && box.bottom <= frame.bottom + kTouch;
}

struct Scene {
    explicit Scene(unsigned seed, double side, int tags, int lines) : random(seed) {
        around.frame = {0, 0, side, side};
        for (int i = 0; i < lines; ++i) {
            const TvPoint from{upTo(side), upTo(side)};
            segments.push_back({from, {from.x + upTo(40) - 20, from.y + upTo(40) - 20}});
            if (i % 3 == 0) segments.back().to.y = from.y;
            if (i % 7 == 0) segments.back().to = {from.x, from.y + 20};
            if (i % 5 == 0) rectangles.push_back({from.x, from.y, from.x + upTo(15), from.y + 5});
        }
        around.segments = segments;
        around.rectangles = rectangles;
        for (int i = 0; i < tags; ++i) {
            TvTag tag;
            tag.text = std::string(1 + static_cast<std::size_t>(upTo(7)), 'a');
            tag.anchor = {upTo(side), upTo(side)};
            if (i % 4 == 0) tag.anchor = {side / 2, side / 2};
            tag.locked = i % 11 == 10;
            labels.push_back(tag);
        }
    }
    double upTo(double most) {
        return static_cast<double>(random()) / std::minstd_rand::max() * most;
    }
    [[nodiscard]] bool isFree(const PlaneRect& box) const {
        return isWithin(box, around.frame) &&
               std::none_of(segments.begin(), segments.end(),
                            [&](const TvSegment& each) { return covers(box, each); }) &&
               std::none_of(rectangles.begin(), rectangles.end(),
                            [&](const PlaneRect& each) { return covers(box, each); });
    }

    std::minstd_rand random;
    std::vector<TvSegment> segments;
    std::vector<PlaneRect> rectangles;
    std::vector<TvTag> labels;
    TvTagSurroundings around;
};

TvTagPlacement place(TvTagSet& set, const TvTagSurroundings& around) {
    TvTagPlacement placement = TvTagLayout(set, kPlain, nullptr).placeFree(around);
    EXPECT_EQ(set.move(placement.moves), 1);
    return placement;
}

/// Placed boxes with their texts, in an order of their own.
std::vector<std::tuple<double, double, std::string, bool>> picture(const TvTagSet& set) {
    std::vector<std::tuple<double, double, std::string, bool>> boxes;
    const TvTagLayout layout(set, kPlain, nullptr);
    for (const TvTagOnPage& each : layout.tags())
        boxes.emplace_back(each.box.left, each.box.top, each.tag->text, each.tag->unplaced);
    std::sort(boxes.begin(), boxes.end());
    return boxes;
}

TEST(TagPlacement, CoversNothingAndStaysInEveryOrder) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Scene scene(seed, 300, 60, static_cast<int>(seed) * 3);
        TvTagSet set;
        for (const TvTag& tag : scene.labels) set.add(tag);
        const TvTagLayout before(set, kPlain, nullptr);
        const TvTagPlacement placement = place(set, scene.around);
        const TvTagLayout after(set, kPlain, nullptr);
        std::vector<PlaneRect> taken;
        for (const TvTagOnPage& each : after.tags()) {
            const bool failed =
                std::binary_search(placement.unplaced.begin(), placement.unplaced.end(), each.id);
            ASSERT_EQ(each.tag->unplaced, failed);
            const PlaneRect& old = before.tag(each.id)->box;
            if (failed || each.tag->locked) {
                ASSERT_EQ(each.box, old);
            } else {
                ASSERT_TRUE(scene.isFree(each.box)) << seed << ' ' << each.id;
            }
            const auto isAlone = [&](std::span<const TvTagOnPage> tags) {
                return std::none_of(tags.begin(), tags.end(), [&](const TvTagOnPage& other) {
                    return other.id != each.id && covers(old, other.box);
                });
            };
            ASSERT_TRUE(each.box == old || !scene.isFree(old) || !isAlone(before.tags()));
            if (failed) continue;
            for (const PlaneRect& other : taken)
                ASSERT_TRUE(each.tag->locked || !covers(each.box, other)) << seed;
            taken.push_back(each.box);
        }
        EXPECT_TRUE(place(set, scene.around).moves.empty()) << seed;
        std::shuffle(scene.labels.begin(), scene.labels.end(), scene.random);
        TvTagSet shuffled;
        for (const TvTag& tag : scene.labels) shuffled.add(tag);
        place(shuffled, scene.around);
        EXPECT_EQ(picture(shuffled), picture(set)) << seed;
    }
}

/// All places where one tag may come to lie, each tried: on every line the ends of what obstacles
/// forbid, taken from the part of each obstacle beside the line.
class BruteForce {
  public:
    BruteForce(const Scene& scene, const PlaneRect& start) : scene_(scene), start_(start) {}

    std::optional<TvPoint> nearest() {
        const TvTagSurroundings& around = scene_.around;
        tryLine(1, 0);
        const int rows = static_cast<int>(around.reach / around.step);
        for (int k = -rows; k <= rows; ++k) tryLine(0, k * around.step);
        return best_;
    }

  private:
    void tryLine(int axis, double across) {
        const double size = axis == 0 ? start_.right - start_.left : start_.bottom - start_.top;
        const double from = axis == 0 ? start_.left : start_.top;
        std::vector<double> ends{0};
        const auto add = [&](double low, double high) {
            ends.push_back(high - from);
            ends.push_back(low - size - from);
        };
        for (const PlaneRect& each : scene_.rectangles)
            axis == 0 ? add(each.left, each.right) : add(each.top, each.bottom);
        for (const TvSegment& each : scene_.segments) addSegment(each, axis, across, add);
        for (const double end : ends)
            offer(axis == 0 ? TvPoint{end, across} : TvPoint{across, end});
    }
    template <class Add>
    void addSegment(const TvSegment& line, int axis, double across, Add add) const {
        const bool isRow = axis == 0;
        const double low = (isRow ? start_.top : start_.left) + across + kTouch;
        const double high = (isRow ? start_.bottom : start_.right) + across - kTouch;
        const TvPoint delta{line.to.x - line.from.x, line.to.y - line.from.y};
        const double start = isRow ? line.from.y : line.from.x;
        const double rise = isRow ? delta.y : delta.x;
        double t0 = 0;
        double t1 = 1;
        if (rise != 0) {
            t0 = std::max(t0, std::min((low - start) / rise, (high - start) / rise));
            t1 = std::min(t1, std::max((low - start) / rise, (high - start) / rise));
        }
        const auto at = [&](double t) {
            return isRow ? line.from.x + t * delta.x : line.from.y + t * delta.y;
        };
        if (t0 <= t1) add(std::min(at(t0), at(t1)), std::max(at(t0), at(t1)));
    }
    void offer(TvPoint by) {
        const double distance = std::hypot(by.x, by.y);
        if (distance > scene_.around.reach || (best_ && distance >= std::hypot(best_->x, best_->y)))
            return;
        const PlaneRect box{start_.left + by.x, start_.top + by.y, start_.right + by.x,
                            start_.bottom + by.y};
        if (scene_.isFree(box)) best_ = by;
    }

    const Scene& scene_;
    PlaneRect start_;
    std::optional<TvPoint> best_;
};

TEST(TagPlacement, FindsTheNearestPlaceThatThereIs) {
    int moved = 0;
    int failed = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        Scene scene(seed, 120, 1, static_cast<int>(seed % 50));
        scene.around.step = 0.5 + seed % 7;
        scene.around.reach = seed % 3 == 0 ? 25 : 150;
        TvTagSet set;
        set.add(scene.labels[0]);
        PlaneRect start = TvTagLayout(set, kPlain, nullptr).tags()[0].box;
        const double out = std::max(start.right - 120, 0.0);
        const double below = std::max(start.bottom - 120, 0.0);
        start = {start.left - out, start.top - below, start.right - out, start.bottom - below};
        const std::optional<TvPoint> nearest = BruteForce(scene, start).nearest();
        const TvTagPlacement placement = place(set, scene.around);
        ASSERT_EQ(placement.unplaced.empty(), nearest.has_value()) << seed;
        failed += !nearest;
        if (!nearest) continue;
        const PlaneRect box = TvTagLayout(set, kPlain, nullptr).tags()[0].box;
        ASSERT_NEAR(std::hypot(box.left - start.left, box.top - start.top),
                    std::hypot(nearest->x, nearest->y), 1e-6)
            << seed;
        moved += !placement.moves.empty();
    }
    EXPECT_GT(moved, 100);
    EXPECT_GT(failed, 10);
}

TEST(TagPlacement, ChoosesAmongEqualPlaces) {
    TvTag tag;
    tag.text = "";
    tag.margin = 2;  // a box of 14 by 16
    TvTagSet set;
    set.add(tag);
    const auto placeWith = [&](const PlaneRect& obstacle) {
        TvTagSurroundings around{{-100, -100, 100, 100}};
        around.rectangles = std::span(&obstacle, 1);
        const auto placement = TvTagLayout(set, kPlain, nullptr).placeFree(around);
        return placement.moves.empty() ? TvPoint{} : placement.moves[0].offset;
    };
    EXPECT_EQ(placeWith({14, 0, 20, 16}), TvPoint());        // touching is free
    EXPECT_EQ(placeWith({6, 1, 8, 15}), (TvPoint{-8, 0}));   // left before right
    EXPECT_EQ(placeWith({-9, 7, 23, 9}), (TvPoint{0, -9}));  // up before down
    EXPECT_EQ(placeWith({5, 5, 20, 20}), (TvPoint{-9, 0}));  // sideways before up
}

TEST(TagPlacement, ReportsAndMarksWhatHasNoPlace) {
    TvTag tag;
    tag.text = "label";
    TvTagSet set;
    const TvTagId shown = set.add(tag);
    const TvTagId crowded = set.add(tag);
    TvTagSurroundings around{{-1, -1, 40, 20}};
    EXPECT_EQ(place(set, around).unplaced, std::vector{crowded});
    EXPECT_FALSE(set.find(shown)->unplaced);
    EXPECT_TRUE(set.find(crowded)->unplaced);
    EXPECT_EQ(set.find(crowded)->offset, TvPoint());
    around.frame.bottom = 60;
    EXPECT_TRUE(place(set, around).unplaced.empty());
    EXPECT_FALSE(set.find(crowded)->unplaced);
}

TEST(TagPlacement, RefusesImpossibleSurroundings) {
    const double kNan = std::numeric_limits<double>::quiet_NaN();
    const PlaneRect frame{0, 0, 100, 100};
    const PlaneRect badRect{0, kNan, 1, 1};
    const TvSegment badLine{{0, 0}, {2e9, 0}};
    const TvTagSurroundings cases[] = {
        {{0, 0, 0, 100}},
        {{0, 0, kNan, 100}},
        {frame, std::span(&badRect, 1)},
        {frame, {}, std::span(&badLine, 1)},
        {frame, {}, {}, 0.4},
        {frame, {}, {}, 2, kNan},
        {frame, {}, {}, 2, 5001},
    };
    TvTagSet set;
    set.add(TvTag{"a"});
    const TvTagLayout layout(set, kPlain, nullptr);
    for (const TvTagSurroundings& each : cases) EXPECT_TRUE(layout.placeFree(each).refused);
    EXPECT_FALSE(layout.placeFree({{-1e9, -1e9, 1e9, 1e9}}).refused);
}

}  // namespace
