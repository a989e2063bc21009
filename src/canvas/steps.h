// Going through the steps of a path.
#pragma once

#include "toolbox/canvas.h"

namespace toolbox::canvas {

/// Points that a step takes.
[[nodiscard]] constexpr int pointsOf(TvPath::Step step) {
    constexpr int kPoints[] = {1, 1, 3, 0};
    return kPoints[step];
}

/// Calls `visit(step, points)` for each step in order; `points` are its own.
template <class Visit>
void eachStep(const TvPath& path, Visit visit) {
    const TvPoint* points = path.points().data();
    for (const TvPath::Step step : path.steps()) {
        visit(step, points);
        points += pointsOf(step);
    }
}

}  // namespace toolbox::canvas
