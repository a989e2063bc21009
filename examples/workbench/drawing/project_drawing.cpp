// Draws from back to front: the beams, each with its loads and texts, then the labels.
#include "drawing/project_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/drawing_amounts.h"

namespace {

/// A beam shorter than this is drawn without supports and texts, one even shorter without loads.
constexpr int kLegible = 30, kVisible = 10;
/// Pixels a metre from which on there is room for the figures of loads, for dimension lines.
constexpr double kFigureScale = 20, kDimensionScale = 30;

class ProjectDrawing {
  public:
    ProjectDrawing(TvCanvas& canvas, const Scene& scene) : pencil_(canvas), scene_(scene) {}

    void beams();

  private:
    void beam(std::size_t index);
    void body(const BeamPlace& place, const BeamResults* results) const;
    void supports(const BeamPlace& place) const;
    void uniformLoad(const Beam& beam, const BeamPlace& place) const;
    void pointLoads(const Beam& beam, const BeamPlace& place);
    void pointLoad(const PointLoad& load, const Arrow& arrow);
    void beamTexts(const Beam& beam, const BeamPlace& place, const BeamResults* results);
    void dimension(const Beam& beam, const BeamPlace& place);

    Pencil pencil_;
    const Scene& scene_;
    std::vector<PixelRect> taken_;  // by the texts of the beam being drawn
};

void ProjectDrawing::beams() {
    // What is far above or below is not looked at closer: a large project is a long column.
    constexpr int kReach = 1000;
    const toolbox::PlaneRect reach = scene_.layout.plane.shown(scene_.part.grown(kReach));
    const std::vector<Beam>& all = scene_.project().beams();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].y >= reach.bottom && all[i].y <= reach.top && all[i].x <= reach.right &&
            all[i].x + all[i].span >= reach.left)
            beam(i);
}

void ProjectDrawing::beam(std::size_t index) {
    const Beam& beam = scene_.project().beams()[index];
    const BeamPlace place = scene_.layout.place(beam);
    if (!scene_.layout.around(beam, place).meets(scene_.part)) return;
    const BeamResults* const results = scene_.work.results(index);
    const bool isLegible = place.width() >= kLegible;
    taken_.clear();
    uniformLoad(beam, place);
    if (isLegible) supports(place);
    body(place, results);
    if (results && isLegible)
        pencil_.polyline(scene_.layout.deflected(place, results->deflection), paints::kCurve);
    if (isLegible) beamTexts(beam, place, results);
    pointLoads(beam, place);
}

void ProjectDrawing::body(const BeamPlace& place, const BeamResults* results) const {
    constexpr double kNearLimit = 80;  // percent
    const bool isKnown = results && std::isfinite(results->use);
    const auto [inside, edge] = [&]() -> std::pair<const Paint&, const Paint&> {
        if (!isKnown) return {paints::kUnknown, paints::kUnknownEdge};
        if (results->use > 100) return {paints::kBroken, paints::kBrokenEdge};
        if (results->use > kNearLimit) return {paints::kStrained, paints::kStrainedEdge};
        return {paints::kSound, paints::kSoundEdge};
    }();
    const PixelRect all{place.left, place.top, place.right + 1, place.bottom};
    constexpr int kThickEnough = 6;
    if (all.height() < kThickEnough) return pencil_.fill(all, edge);
    pencil_.fill(all, inside);
    const int flange = std::clamp(all.height() / 9, 1, 6);
    pencil_.frame(all, edge);
    pencil_.fill({all.left, all.top, all.right, all.top + flange}, edge);
    pencil_.fill({all.left, all.bottom - flange, all.right, all.bottom}, edge);
}

void ProjectDrawing::supports(const BeamPlace& place) const {
    const int height = std::min(kSupportHeight, place.width() / 4);
    const int half = height * 5 / 8;
    const int wheel = std::max(height / 6, 1);
    const int floor = place.bottom + height;
    const auto triangle = [&](int x, int base) {
        pencil_.polygon({{x, place.bottom}, {x - half, base}, {x + half, base}}, paints::kInk,
                        paints::kPaper);
    };
    triangle(place.left, floor);
    triangle(place.right, floor - 2 * wheel - 1);
    for (const int side : {-1, 1})
        pencil_.circle({place.right + side * (half - wheel), floor - wheel}, wheel, paints::kInk,
                       paints::kPaper);
    for (const int x : {place.left, place.right}) {
        pencil_.line({x - half - 3, floor}, {x + half + 4, floor}, paints::kInk);
        for (int stroke = x - half; stroke <= x + half + 3; stroke += 4)
            pencil_.line({stroke, floor + 1}, {stroke - 4, floor + 5}, paints::kFaint);
    }
}

void ProjectDrawing::uniformLoad(const Beam& beam, const BeamPlace& place) const {
    const std::vector<Arrow> arrows = scene_.layout.comb(place);
    if (arrows.empty()) return;
    const int height = std::abs(arrows[0].tip.y - arrows[0].tail.y);
    const int tip = arrows[0].tip.y;
    pencil_.fill(
        {place.left, std::min(place.comb, tip), place.right + 1, std::max(place.comb, tip)},
        paints::kUniformFill);
    pencil_.line({place.left, place.comb}, {place.right + 1, place.comb}, paints::kUniform);
    constexpr int kRoomForHeads = 6;
    if (height < kRoomForHeads || place.width() < kLegible) return;
    for (const Arrow& arrow : arrows)
        if (arrow.tip.x >= scene_.part.left && arrow.tip.x <= scene_.part.right)
            pencil_.arrow(arrow, 5, paints::kUniform, paints::kUniform);
    if (scene_.layout.plane.scale() < kFigureScale) return;
    const CString figure = amount(beam.uniform, 1, "kN/m");
    pencil_.text({place.right + 8, (place.comb + tip) / 2}, figure, fonts::kSmall,
                 paints::kUniform);
}

void ProjectDrawing::pointLoads(const Beam& beam, const BeamPlace& place) {
    if (place.width() < kVisible) return;
    for (const PointLoad& load : beam.loads) {
        const Arrow arrow = scene_.layout.arrow(beam, place, load);
        if (place.width() < kLegible)
            pencil_.line(arrow.tail, arrow.tip, paints::kForce);
        else
            pointLoad(load, arrow);
    }
}

void ProjectDrawing::pointLoad(const PointLoad& load, const Arrow& arrow) {
    drawForce(pencil_, arrow, paints::kForce, paints::kStrongForce);
    if (scene_.layout.plane.scale() < kFigureScale) return;
    const CString figure = amount(load.force, 1, "kN");
    const int width = Pencil::textWidth(figure, fonts::kUsual);
    const int away = arrow.tail.y < arrow.tip.y ? -1 : 1;
    // Beside its neighbours' where there is no room above them.
    constexpr int kLine = 14, kTries = 3;
    PixelRect box{arrow.tail.x - width / 2, 0, arrow.tail.x - width / 2 + width, 0};
    for (int i = 0; i < kTries; ++i) {
        const int middle = arrow.tail.y + away * (9 + i * kLine);
        box.top = middle - kLine / 2;
        box.bottom = middle + kLine / 2;
        if (std::ranges::any_of(taken_, [&](const PixelRect& other) { return other.meets(box); }))
            continue;
        taken_.push_back(box);
        pencil_.fill(box, paints::kPaper);
        pencil_.text({box.left, middle}, figure, fonts::kUsual, paints::kForce);
        return;
    }
}

void ProjectDrawing::beamTexts(const Beam& beam, const BeamPlace& place,
                               const BeamResults* results) {
    constexpr int kApart = 10;
    struct Word {
        CString text;
        TvFont font;
        Paint paint;
    };
    std::vector<Word> words = {{beam.name, fonts::kBold, paints::kInk},
                               {beam.section, fonts::kUsual, paints::kFaint}};
    if (results && std::isfinite(results->use))
        words.push_back({amount(results->use, 0, "%"), fonts::kUsual,
                         results->use > 100 ? paints::kBrokenEdge : paints::kSoundEdge});
    const int room = place.width() + 2 * kSupportHeight;
    const auto widthOf = [&] {
        int width = -kApart;
        for (const Word& word : words) width += kApart + Pencil::textWidth(word.text, word.font);
        return width;
    };
    while (widthOf() > room) {
        words.pop_back();
        if (words.empty()) return;
    }
    Pixel at{place.middle() - widthOf() / 2, scene_.layout.nameLine(place)};
    taken_.push_back({at.x, at.y - 7, at.x + widthOf(), at.y + 7});
    for (const Word& word : words) {
        pencil_.text(at, word.text, word.font, word.paint);
        at.x += Pencil::textWidth(word.text, word.font) + kApart;
    }
    // Rows of beams are closer than these lines where everything is small.
    if (scene_.layout.plane.scale() >= kDimensionScale) dimension(beam, place);
}

void ProjectDrawing::dimension(const Beam& beam, const BeamPlace& place) {
    const CString figure = amount(beam.span, 2, "m");
    const int width = Pencil::textWidth(figure, fonts::kSmall);
    const int y = scene_.layout.dimensionLine(place);
    constexpr int kGap = 6;
    const int textLeft = place.middle() - width / 2;
    if (textLeft - kGap <= place.left) return;
    pencil_.line({place.left, y}, {textLeft - kGap, y}, paints::kFaint);
    pencil_.line({textLeft + width + kGap, y}, {place.right + 1, y}, paints::kFaint);
    for (const int x : {place.left, place.right}) {
        pencil_.line({x, y - 6}, {x, y + 7}, paints::kFaint);
        pencil_.line({x - 3, y + 3}, {x + 4, y - 4}, paints::kInk);
    }
    pencil_.text({textLeft, y}, figure, fonts::kSmall, paints::kRulerText);
    taken_.push_back({place.left, y - 1, place.right, y + 1});
    taken_.push_back({textLeft, y - 7, textLeft + width, y + 7});
}

}  // namespace

void drawProject(TvCanvas& canvas, const Scene& scene, const TvTagLayout& labels) {
    ProjectDrawing(canvas, scene).beams();
    labels.draw(canvas);
}

void drawForce(const Pencil& pencil, const Arrow& arrow, const Paint& head, const Paint& shaft) {
    constexpr int kHead = 9;
    pencil.arrow(arrow, kHead, head, shaft);
}

DrawingLayout::DepthOf depthIn(const OpenProject& work) {
    return [&work](const Beam& beam) {
        const Section* const section = work.sectionOf(beam);
        return section ? section->h : 0;
    };
}
