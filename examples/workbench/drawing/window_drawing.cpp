// Draws from back to front: grid, what lies behind the selected beam, the project, the handles of
// what is selected; rulers beside it all.
#include "drawing/window_drawing.h"

#include <algorithm>
#include <cmath>

#include "drawing/drawing_amounts.h"

namespace {

constexpr int kBetweenLines = 16, kBetweenStrongLines = 80;

/// Lines of a grid within a range, by their number.
template <class Draw>
void eachLine(double from, double to, double step, Draw draw) {
    for (double i = std::ceil(from / step); i * step <= to; ++i) draw(i * step);
}

class WindowDrawing {
  public:
    WindowDrawing(TvCanvas& canvas, const Scene& scene, const PixelRect& client,
                  const Selection& selection)
        : pencil_(canvas),
          scene_(scene),
          plane_(scene.layout.plane),
          part_(scene.part),
          client_(client),
          selection_(selection) {}

    void grid() const;
    void rulers() const;
    /// Behind a beam that is selected, or whose label is.
    void halo() const;
    /// What is selected, over the project.
    void marks() const;

  private:
    void figureBelow(double x) const;
    void figureBeside(double y) const;
    void load(const Beam& beam, const BeamPlace& place) const;
    void handle(Pixel at) const;

    Pencil pencil_;
    const Scene& scene_;
    const DrawingPlane& plane_;
    PixelRect part_;
    PixelRect client_;
    Selection selection_;
};

void WindowDrawing::grid() const {
    pencil_.fill(part_, paints::kPaper);
    const toolbox::PlaneRect shown = plane_.shown(part_);
    const auto lines = [&](int apart, const Paint& paint) {
        const double step = gridStep(plane_.scale(), apart);
        eachLine(shown.left, shown.right, step, [&](double x) {
            const int at = plane_.toWindow({x, 0}).x;
            pencil_.line({at, part_.top}, {at, part_.bottom}, paint);
        });
        eachLine(shown.bottom, shown.top, step, [&](double y) {
            const int at = plane_.toWindow({0, y}).y;
            pencil_.line({part_.left, at}, {part_.right, at}, paint);
        });
    };
    lines(kBetweenLines, paints::kGrid);
    lines(kBetweenStrongLines, paints::kStrongGrid);
}

void WindowDrawing::rulers() const {
    pencil_.fill({client_.left, client_.top, part_.left, client_.bottom}, paints::kRuler);
    pencil_.fill({part_.left, part_.bottom, client_.right, client_.bottom}, paints::kRuler);
    pencil_.line({part_.left - 1, part_.top}, {part_.left - 1, part_.bottom}, paints::kStrongGrid);
    pencil_.line({part_.left - 1, part_.bottom}, {part_.right, part_.bottom}, paints::kStrongGrid);
    const toolbox::PlaneRect shown = plane_.shown(part_);
    const double step = gridStep(plane_.scale(), kBetweenStrongLines);
    eachLine(shown.left, shown.right, step, [&](double x) { figureBelow(x); });
    eachLine(shown.bottom, shown.top, step, [&](double y) { figureBeside(y); });
    pencil_.fill({client_.left, part_.bottom + 1, part_.left - 1, client_.bottom}, paints::kRuler);
    pencil_.text({client_.left + 8, part_.bottom + 12}, "m", fonts::kSmall, paints::kRulerText);
}

void WindowDrawing::figureBelow(double x) const {
    const int at = plane_.toWindow({x, 0}).x;
    const CString figure = amount(x, 2);
    const int half = Pencil::textWidth(figure, fonts::kSmall) / 2;
    pencil_.line({at, part_.bottom}, {at, part_.bottom + 5}, paints::kFaint);
    if (at + half < part_.right)
        pencil_.text({at - half, part_.bottom + 13}, figure, fonts::kSmall, paints::kRulerText);
}

void WindowDrawing::figureBeside(double y) const {
    const int at = plane_.toWindow({0, y}).y;
    const CString figure = amount(y, 2);
    const int width = Pencil::textWidth(figure, fonts::kSmall);
    pencil_.line({part_.left - 6, at}, {part_.left - 1, at}, paints::kFaint);
    pencil_.text({part_.left - 9 - width, at}, figure, fonts::kSmall, paints::kRulerText);
}

void WindowDrawing::halo() const {
    const Project& project = scene_.project();
    const Label* const label =
        selection_.kind == Selection::OneLabel ? project.label(selection_.id) : nullptr;
    const Beam* const beam = selection_.kind == Selection::OneBeam ? project.beam(selection_.id)
                             : label                               ? project.beam(label->beam)
                                                                   : nullptr;
    if (!beam) return;
    const BeamPlace place = scene_.layout.place(*beam);
    pencil_.fill({place.left - 8, std::min(place.top, place.comb) - 8, place.right + 9,
                  std::max(place.bottom, place.comb) + 8},
                 paints::kHalo);
}

void WindowDrawing::marks() const {
    if (selection_.kind == Selection::OneLabel) return;
    const Beam* const beam = scene_.project().beam(selection_.id);
    if (!beam) return;
    const BeamPlace place = scene_.layout.place(*beam);
    if (selection_.kind == Selection::OneLoad)
        load(*beam, place);
    else
        for (const int x : {place.left, place.right}) handle({x, place.axis});
}

void WindowDrawing::load(const Beam& beam, const BeamPlace& place) const {
    if (selection_.load >= beam.loads.size()) return;
    const Arrow arrow = scene_.layout.arrow(beam, place, beam.loads[selection_.load]);
    drawForce(pencil_, arrow, paints::kChosen, paints::kStrongChosen);
    handle(arrow.tail);
}

void WindowDrawing::handle(Pixel at) const {
    const PixelRect box{at.x - 3, at.y - 3, at.x + 4, at.y + 4};
    pencil_.fill(box, paints::kPaper);
    pencil_.frame(box, paints::kChosen);
}

}  // namespace

PixelRect drawingPart(const PixelRect& client) {
    return {client.left + kRulerWidth, client.top, client.right, client.bottom - kRulerHeight};
}

void drawWindow(TvCanvas& canvas, const Scene& scene, const PixelRect& client,
                const Selection& selection, const TvTagLayout& labels) {
    const WindowDrawing window(canvas, scene, client, selection);
    window.rulers();
    canvas.save();
    Pencil(canvas).clip(scene.part);
    window.grid();
    window.halo();
    drawProject(canvas, scene, labels);
    window.marks();
    canvas.restore();
}
