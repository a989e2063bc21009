// Places the tags of a layout: first those that stay, then the others one by one, each of which
// holds its place from there on.
#include <algorithm>
#include <cmath>
#include <utility>

#include "canvas/styles.h"
#include "tag/free_place.h"
#include "tag/geometry.h"
#include "tag/tag_bytes.h"
#include "toolbox/tag_layout.h"

using namespace toolbox::tag;
using toolbox::PlaneRect;

namespace {

using toolbox::canvas::isNear;

constexpr double kLeastStep = 0.5;
constexpr double kMostReach = 5000;

PlaneRect upright(const PlaneRect& rect) {
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
            std::max(rect.left, rect.right), std::max(rect.top, rect.bottom)};
}

bool isNearRect(const PlaneRect& rect) {
    return isNear(TvPoint{rect.left, rect.top}) && isNear(TvPoint{rect.right, rect.bottom});
}

bool canHeed(const TvTagSurroundings& around) {
    return isNearRect(around.frame) && around.frame.left < around.frame.right &&
           around.frame.top < around.frame.bottom && around.step >= kLeastStep &&
           around.step <= kMostReach && around.reach >= 0 && around.reach <= kMostReach &&
           std::all_of(around.rectangles.begin(), around.rectangles.end(), isNearRect) &&
           std::all_of(around.segments.begin(), around.segments.end(),
                       [](const TvSegment& each) { return isNear(each.from) && isNear(each.to); });
}

/// A tag that may be moved.
struct Movable {
    const TvTagOnPage* tag;
    Pair start{};         ///< from its place into the frame
    bool fits = false;    ///< the frame has room for it
    bool placed = false;  ///< it has a place
    Pair by{};            ///< from its place to that one
};

bool isBeforeByFields(const TvTagOnPage& a, const TvTagOnPage& b) {
    std::string fieldsOfA;
    std::string fieldsOfB;
    addFields(fieldsOfA, *a.tag);
    addFields(fieldsOfB, *b.tag);
    return fieldsOfA < fieldsOfB;
}

/// The order in which tags are taken, whatever that of the set.
bool isBefore(const Movable& a, const Movable& b) {
    const auto key = [](const TvTagOnPage& tag) {
        return std::array{tag.anchor.y, tag.anchor.x,  tag.box.top,
                          tag.box.left, tag.box.right, tag.box.bottom};
    };
    const auto keyOfA = key(*a.tag);
    const auto keyOfB = key(*b.tag);
    return keyOfA != keyOfB ? keyOfA < keyOfB : isBeforeByFields(*a.tag, *b.tag);
}

class Placement {
  public:
    Placement(std::span<const TvTagOnPage> tags, const TvTagSurroundings& around)
        : range_{boxOf(around.frame), around.step, around.reach},
          movables_(movablesOf(tags)),
          grid_(boxOf(region(around.frame)),
                tags.size() + around.rectangles.size() + around.segments.size(), cellSize(tags)) {
        for (const TvTagOnPage& each : tags)
            if (each.tag->locked) grid_.add(boxOf(each.box));
        for (const PlaneRect& each : around.rectangles) grid_.add(boxOf(upright(each)));
        for (const TvSegment& each : around.segments) grid_.add(each);
    }

    TvTagPlacement run() {
        for (Movable& each : movables_) stay(each);
        for (Movable& each : movables_)
            if (!each.placed && each.fits) move(each);
        TvTagPlacement result;
        for (const Movable& each : movables_) report(each, result);
        std::sort(result.moves.begin(), result.moves.end(),
                  [](const TvTagMove& a, const TvTagMove& b) { return a.id < b.id; });
        std::sort(result.unplaced.begin(), result.unplaced.end());
        return result;
    }

  private:
    [[nodiscard]] std::vector<Movable> movablesOf(std::span<const TvTagOnPage> tags) const {
        std::vector<Movable> movables;
        for (const TvTagOnPage& each : tags) {
            if (each.tag->locked) continue;
            const Box box = boxOf(each.box);
            const Pair start = startInFrame(box, range_.frame);
            const auto goesIn = [&](int axis) {
                return box.high[axis] - box.low[axis] <=
                       range_.frame.high[axis] - range_.frame.low[axis];
            };
            movables.push_back({&each, start, goesIn(0) && goesIn(1)});
        }
        std::sort(movables.begin(), movables.end(), isBefore);
        return movables;
    }

    /// Where boxes can come to lie.
    [[nodiscard]] PlaneRect region(const PlaneRect& frame) const {
        PlaneRect all{frame.right, frame.bottom, frame.left, frame.top};
        for (const Movable& each : movables_)
            if (each.fits) all = unionOf(all, moved(each.tag->box, {each.start[0], each.start[1]}));
        return intersection(grown(all, range_.reach), frame);
    }

    /// About the height of a tag: few things lie in a cell, and a tag lies in few cells.
    static double cellSize(std::span<const TvTagOnPage> tags) {
        double sum = 0;
        for (const TvTagOnPage& each : tags) sum += each.box.bottom - each.box.top;
        return tags.empty() ? 1 : 2 * sum / static_cast<double>(tags.size());
    }

    void place(Movable& movable, const Pair& by) {
        movable.placed = true;
        movable.by = by;
        grid_.add(boxOf(moved(movable.tag->box, {by[0], by[1]})));
    }

    void stay(Movable& movable) {
        const auto isInside = [&](int axis) { return std::fabs(movable.start[axis]) <= kTouch; };
        if (movable.fits && isInside(0) && isInside(1) && grid_.isFree(boxOf(movable.tag->box)))
            place(movable, {});
    }

    void move(Movable& movable) {
        const TvPoint start{movable.start[0], movable.start[1]};
        const auto by = nearestFree(grid_, boxOf(moved(movable.tag->box, start)), range_);
        if (!by) return;
        const Pair whole{start.x + (*by)[0], start.y + (*by)[1]};
        if (isNear(movable.tag->tag->offset + TvPoint{whole[0], whole[1]})) place(movable, whole);
    }

    static void report(const Movable& movable, TvTagPlacement& result) {
        const TvTag& tag = *movable.tag->tag;
        const TvTagMove move{movable.tag->id, tag.offset + TvPoint{movable.by[0], movable.by[1]},
                             !movable.placed};
        if (move.offset != tag.offset || move.unplaced != tag.unplaced)
            result.moves.push_back(move);
        if (move.unplaced) result.unplaced.push_back(move.id);
    }

    SearchRange range_;
    std::vector<Movable> movables_;
    PlaceGrid grid_;
};

}  // namespace

TvTagPlacement TvTagLayout::placeFree(const TvTagSurroundings& around) const {
    TvTagPlacement result;
    result.refused = !canHeed(around);
    if (!result.refused) result = Placement(tags_, around).run();
    return result;
}
