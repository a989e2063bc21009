// Rows are searched from the middle outwards, each only as far as a nearer place than the best so
// far could lie.
#include "tag/free_place.h"

#include <algorithm>
#include <cmath>

namespace toolbox::tag {
namespace {

Box movedBox(const Box& box, const Pair& by) {
    return {{box.low[0] + by[0], box.low[1] + by[1]}, {box.high[0] + by[0], box.high[1] + by[1]}};
}

class Search {
  public:
    Search(const PlaceGrid& grid, const Box& box, const SearchRange& range)
        : grid_(grid), box_(box), range_(range), least_(range.reach * range.reach) {}

    std::optional<Pair> run() {
        slideColumn();
        bool inFrame = slideRow(0);
        for (double k = 1; inFrame; ++k) {
            const double down = k * range_.step;
            if (down * down > least_) break;
            const bool above = slideRow(-down);
            inFrame = slideRow(down) || above;
        }
        return best_;
    }

  private:
    /// How far the box can go until it leaves the frame.
    [[nodiscard]] Pair room(int axis) const {
        return {box_.low[axis] - range_.frame.low[axis], range_.frame.high[axis] - box_.high[axis]};
    }

    void slideColumn() {
        const Pair within = room(1);
        const double most = std::sqrt(least_);
        const Pair found =
            grid_.slide(box_, 1, {std::min(within[0], most), std::min(within[1], most)});
        if (found[0] >= 0) offer({0, -found[0]});
        if (found[1] >= 0) offer({0, found[1]});
    }

    /// False when the line lies outside the frame.
    bool slideRow(double down) {
        if (down != 0 && std::fabs(down) > room(1)[down < 0 ? 0 : 1]) return false;
        const Pair within = room(0);
        const double most = std::sqrt(std::max(least_ - down * down, 0.0));
        const Pair found = grid_.slide(movedBox(box_, {0, down}), 0,
                                       {std::min(within[0], most), std::min(within[1], most)});
        if (found[0] >= 0) offer({-found[0], down});
        if (found[1] >= 0) offer({found[1], down});
        return true;
    }

    void offer(const Pair& by) {
        const double square = by[0] * by[0] + by[1] * by[1];
        if (square > least_ || (best_ && square == least_ && !precedes(by, *best_))) return;
        least_ = square;
        best_ = by;
    }

    /// Of two places at the same distance.
    static bool precedes(const Pair& a, const Pair& b) {
        const double upA = std::fabs(a[1]);
        const double upB = std::fabs(b[1]);
        if (upA != upB) return upA < upB;
        return a[1] != b[1] ? a[1] < b[1] : a[0] < b[0];
    }

    const PlaceGrid& grid_;
    const Box& box_;
    const SearchRange& range_;
    double least_;  ///< square of the distance of the best place, at first of the reach
    std::optional<Pair> best_;
};

}  // namespace

Pair startInFrame(const Box& box, const Box& frame) {
    Pair by{};
    for (const int axis : {0, 1})
        by[axis] = std::max(std::min(0.0, frame.high[axis] - box.high[axis]),
                            frame.low[axis] - box.low[axis]);
    return by;
}

std::optional<Pair> nearestFree(const PlaceGrid& grid, const Box& box, const SearchRange& range) {
    return Search(grid, box, range).run();
}

}  // namespace toolbox::tag
