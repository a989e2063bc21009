// Each label has values of its own: tags are laid out with their tokens replaced.
#include "drawing/label_drawing.h"

#include <algorithm>
#include <cmath>

#include "toolbox/tag_layout.h"

namespace {

/// Farther away than any text reaches.
constexpr int kFar = 100000000;
constexpr PixelRect kEverywhere{-kFar, -kFar, kFar, kFar};

/// What labels shall not cover.
struct Surroundings {
    std::vector<toolbox::PlaneRect> rectangles;
    std::vector<TvSegment> segments;

    void add(const Beam& beam, const DrawingLayout& layout) {
        constexpr int kLine = 8, kFigure = 22;
        const BeamPlace place = layout.place(beam);
        rectangles.push_back(
            planeRect({place.left - kSupportHeight, std::min(place.top, place.comb),
                       place.right + kSupportHeight, layout.dimensionLine(place) + kLine}));
        for (const PointLoad& load : beam.loads) {
            const Arrow arrow = layout.arrow(beam, place, load);
            segments.push_back({pointOf(arrow.tail), pointOf(arrow.tip)});
            const int away = arrow.tail.y < arrow.tip.y ? -2 * kLine : 0;
            rectangles.push_back(
                planeRect({arrow.tail.x - kFigure, arrow.tail.y + away, arrow.tail.x + kFigure,
                           arrow.tail.y + away + 2 * kLine}));
        }
    }
};

}  // namespace

TvTagLayout layOutLabels(const Scene& scene) {
    // As wide as a text may become; those far away are not measured.
    constexpr int kReach = 4000;
    const PixelRect reach = scene.part.grown(kReach);
    const DrawingPlane& plane = scene.layout.plane;
    TvTagSet shown;
    for (const Label& label : scene.project().labels()) {
        const Pixel at = plane.toWindow({label.tag.anchor.x, label.tag.anchor.y});
        if (!reach.contains({at.x + static_cast<int>(std::clamp(label.tag.offset.x, -1e6, 1e6)),
                             at.y + static_cast<int>(std::clamp(label.tag.offset.y, -1e6, 1e6))}))
            continue;
        TvTag tag = label.tag;
        tag.text = scene.work.textOf(scene.keys, label).str();
        shown.insert(shown.count(), label.id, tag);
    }
    return {shown, plane.matrix(), nullptr};
}

PixelRect drawnPart(const Scene& scene, const TvTagLayout& labels) {
    constexpr int kBeside = 50, kAround = 12;
    PixelRect all{kFar, kFar, -kFar, -kFar};
    const auto include = [&all](const PixelRect& rect) {
        all = {std::min(all.left, rect.left), std::min(all.top, rect.top),
               std::max(all.right, rect.right), std::max(all.bottom, rect.bottom)};
    };
    for (const Beam& beam : scene.project().beams()) {
        PixelRect around = scene.layout.around(beam, scene.layout.place(beam));
        around.left -= kBeside;
        around.right += kBeside;
        include(around);
    }
    for (const TvTagOnPage& label : labels.tags()) include(pixelsOf(label.box).grown(kAround));
    return all.width() > 0 ? all : PixelRect();
}

std::vector<Label> arrangedLabels(const Scene& scene) {
    const Scene everywhere{scene.work, scene.keys, scene.layout, kEverywhere};
    const TvTagLayout labels = layOutLabels(everywhere);
    Surroundings found;
    for (const Beam& beam : scene.project().beams()) found.add(beam, scene.layout);
    TvTagSurroundings around;
    around.frame = planeRect(drawnPart(everywhere, labels));
    around.rectangles = found.rectangles;
    around.segments = found.segments;
    std::vector<Label> moved;
    for (const TvTagMove& move : labels.placeFree(around).moves) {
        Label label = *scene.project().label(move.id);
        label.tag.offset = move.offset;
        label.tag.unplaced = move.unplaced;
        moved.push_back(std::move(label));
    }
    return moved;
}
