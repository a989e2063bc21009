// Tags with the values of their beams, and what they shall not cover.
#include "drawing/label_drawing.h"

#include <algorithm>

#include "project/label_keys.h"
#include "toolbox/tag_layout.h"

namespace {

/// Farther away than any text reaches.
constexpr int kFar = 100000000;

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
    TvTagSet shown;
    for (const Label* const label : scene.project().labelsInOrder())
        shown.insert(shown.count(), label->id, label->tag);
    LabelKeys keys(scene.work);
    return {shown, scene.layout.plane.matrix(),
            [&](TvTagId id, const TvTag&) { return keys.of(scene.project().label(id)->beam); }};
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
    const TvTagLayout labels = layOutLabels(scene);
    Surroundings found;
    for (const Beam& beam : scene.project().beams()) found.add(beam, scene.layout);
    TvTagSurroundings around;
    around.frame = planeRect(drawnPart(scene, labels));
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
