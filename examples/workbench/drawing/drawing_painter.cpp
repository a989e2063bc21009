// Paints from back to front: grid, beams with loads and texts, labels, what is selected, rulers.
#include "drawing/drawing_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/drawing_amounts.h"

namespace {

constexpr int kBetweenLines = 16, kBetweenStrongLines = 80;
/// A beam shorter than this is drawn without supports and texts, one even shorter without loads.
constexpr int kLegible = 30, kVisible = 10;
/// Pixels a metre from which on there is room for the texts of labels, for the figures of loads,
/// for dimension lines.
constexpr double kLabelScale = 8, kFigureScale = 20, kDimensionScale = 30;

/// Lines of a grid within a range, by their number.
template <class Draw>
void eachLine(double from, double to, double step, Draw draw) {
    for (double i = std::ceil(from / step); i * step <= to; ++i) draw(i * step);
}

}  // namespace

PixelRect drawingPart(const PixelRect& client) {
    return {client.left + kRulerWidth, client.top, client.right, client.bottom - kRulerHeight};
}

DrawingPainter::DrawingPainter(const Canvas& canvas, Document& document,
                               const DrawingLayout& layout, const PixelRect& client)
    : canvas_(canvas),
      tools_(canvas.tools),
      document_(document),
      layout_(layout),
      client_(client),
      part_(drawingPart(client)) {}

std::vector<LabelPlace> DrawingPainter::paint() {
    canvas_.fill(part_, tools_.paper);
    rulers();
    canvas_.clip(part_);
    grid();
    beams();
    labels();
    return std::move(labels_);
}

bool DrawingPainter::isSelected(Selection::Kind kind, std::uint32_t id) const {
    return document_.selection().kind == kind && document_.selection().id == id;
}

void DrawingPainter::grid() const {
    const toolbox::PlaneRect shown = layout_.plane.shown(part_);
    const auto lines = [&](int apart, const Paint& paint) {
        const double step = gridStep(layout_.plane.scale(), apart);
        eachLine(shown.left, shown.right, step, [&](double x) {
            const int at = layout_.plane.toWindow({x, 0}).x;
            canvas_.line({at, part_.top}, {at, part_.bottom}, paint);
        });
        eachLine(shown.bottom, shown.top, step, [&](double y) {
            const int at = layout_.plane.toWindow({0, y}).y;
            canvas_.line({part_.left, at}, {part_.right, at}, paint);
        });
    };
    lines(kBetweenLines, tools_.grid);
    lines(kBetweenStrongLines, tools_.strongGrid);
}

void DrawingPainter::rulers() const {
    canvas_.fill({client_.left, client_.top, part_.left, client_.bottom}, tools_.ruler);
    canvas_.fill({part_.left, part_.bottom, client_.right, client_.bottom}, tools_.ruler);
    canvas_.line({part_.left - 1, part_.top}, {part_.left - 1, part_.bottom}, tools_.strongGrid);
    canvas_.line({part_.left - 1, part_.bottom}, {part_.right, part_.bottom}, tools_.strongGrid);
    const toolbox::PlaneRect shown = layout_.plane.shown(part_);
    const double step = gridStep(layout_.plane.scale(), kBetweenStrongLines);
    eachLine(shown.left, shown.right, step, [&](double x) {
        const int at = layout_.plane.toWindow({x, 0}).x;
        const CString figure = amount(x, 2);
        const int width = canvas_.textWidth(figure, tools_.smallFont);
        canvas_.line({at, part_.bottom}, {at, part_.bottom + 5}, tools_.faint);
        if (at + width / 2 < part_.right)
            canvas_.text({at - width / 2, part_.bottom + 13}, figure, tools_.smallFont,
                         tools_.rulerText);
    });
    eachLine(shown.bottom, shown.top, step, [&](double y) {
        const int at = layout_.plane.toWindow({0, y}).y;
        const CString figure = amount(y, 2);
        const int width = canvas_.textWidth(figure, tools_.smallFont);
        canvas_.line({part_.left - 6, at}, {part_.left - 1, at}, tools_.faint);
        canvas_.text({part_.left - 9 - width, at}, figure, tools_.smallFont, tools_.rulerText);
    });
    canvas_.fill({client_.left, part_.bottom + 1, part_.left - 1, client_.bottom}, tools_.ruler);
    canvas_.text({client_.left + 8, part_.bottom + 12}, "m", tools_.smallFont, tools_.rulerText);
}

void DrawingPainter::beams() {
    // What is far above or below is not looked at closer: a large project is a long column.
    constexpr int kReach = 1000;
    const toolbox::PlaneRect reach = layout_.plane.shown(part_.grown(kReach));
    const std::vector<Beam>& all = document_.project().beams();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].y >= reach.bottom && all[i].y <= reach.top && all[i].x <= reach.right &&
            all[i].x + all[i].span >= reach.left)
            beam(i);
}

void DrawingPainter::beam(std::size_t index) {
    const Beam& beam = document_.project().beams()[index];
    const BeamPlace place = layout_.place(beam);
    if (!layout_.around(beam, place).meets(part_)) return;
    const BeamResults* const results = document_.work().results(index);
    const bool isLegible = place.width() >= kLegible;
    taken_.clear();
    if (isSelected(Selection::OneBeam, beam.id)) selectionOf(place);
    uniformLoad(beam, place);
    if (isLegible) supports(place);
    body(place, results);
    if (results && isLegible)
        canvas_.polyline(layout_.deflected(place, results->deflection), tools_.curve);
    if (isLegible) beamTexts(beam, place, results);
    pointLoads(beam, place);
    if (isSelected(Selection::OneBeam, beam.id))
        for (const int x : {place.left, place.right}) handle({x, place.axis});
}

void DrawingPainter::body(const BeamPlace& place, const BeamResults* results) const {
    constexpr double kNearLimit = 80;  // percent
    const bool isKnown = results && std::isfinite(results->use);
    const auto [inside, edge] = [&]() -> std::pair<const Paint&, const Paint&> {
        if (!isKnown) return {tools_.unknown, tools_.unknownEdge};
        if (results->use > 100) return {tools_.broken, tools_.brokenEdge};
        if (results->use > kNearLimit) return {tools_.strained, tools_.strainedEdge};
        return {tools_.sound, tools_.soundEdge};
    }();
    const PixelRect all{place.left, place.top, place.right + 1, place.bottom};
    constexpr int kThickEnough = 6;
    if (all.height() < kThickEnough) return canvas_.fill(all, edge);
    canvas_.fill(all, inside);
    const int flange = std::clamp(all.height() / 9, 1, 6);
    canvas_.frame(all, edge);
    canvas_.fill({all.left, all.top, all.right, all.top + flange}, edge);
    canvas_.fill({all.left, all.bottom - flange, all.right, all.bottom}, edge);
}

void DrawingPainter::supports(const BeamPlace& place) const {
    const int height = std::min(kSupportHeight, place.width() / 4);
    const int half = height * 5 / 8;
    const int wheel = std::max(height / 6, 1);
    const int floor = place.bottom + height;
    const auto triangle = [&](int x, int base) {
        canvas_.polygon({{x, place.bottom}, {x - half, base}, {x + half, base}}, tools_.ink,
                        tools_.paper);
    };
    triangle(place.left, floor);
    triangle(place.right, floor - 2 * wheel - 1);
    for (const int side : {-1, 1})
        canvas_.circle({place.right + side * (half - wheel), floor - wheel}, wheel, tools_.ink,
                       tools_.paper);
    for (const int x : {place.left, place.right}) {
        canvas_.line({x - half - 3, floor}, {x + half + 4, floor}, tools_.ink);
        for (int stroke = x - half; stroke <= x + half + 3; stroke += 4)
            canvas_.line({stroke, floor + 1}, {stroke - 4, floor + 5}, tools_.faint);
    }
}

void DrawingPainter::uniformLoad(const Beam& beam, const BeamPlace& place) {
    const std::vector<Arrow> arrows = layout_.comb(place);
    if (arrows.empty()) return;
    const int height = std::abs(arrows[0].tip.y - arrows[0].tail.y);
    const int tip = arrows[0].tip.y;
    canvas_.fill(
        {place.left, std::min(place.comb, tip), place.right + 1, std::max(place.comb, tip)},
        tools_.uniformFill);
    canvas_.line({place.left, place.comb}, {place.right + 1, place.comb}, tools_.uniform);
    constexpr int kRoomForHeads = 6;
    if (height < kRoomForHeads || place.width() < kLegible) return;
    for (const Arrow& arrow : arrows)
        if (arrow.tip.x >= part_.left && arrow.tip.x <= part_.right)
            canvas_.arrow(arrow, 5, tools_.uniform, tools_.uniform);
    if (layout_.plane.scale() < kFigureScale) return;
    const CString figure = amount(beam.uniform, 1, "kN/m");
    canvas_.text({place.right + 8, (place.comb + tip) / 2}, figure, tools_.smallFont,
                 tools_.uniform);
}

void DrawingPainter::pointLoads(const Beam& beam, const BeamPlace& place) {
    for (std::size_t i = 0; i < beam.loads.size(); ++i) {
        const Arrow arrow = layout_.arrow(beam, place, beam.loads[i]);
        const bool isChosen =
            isSelected(Selection::OneLoad, beam.id) && document_.selection().load == i;
        if (place.width() < kVisible && !isChosen) continue;
        if (place.width() < kLegible && !isChosen)
            canvas_.line(arrow.tail, arrow.tip, tools_.force);
        else
            pointLoad(beam.loads[i], arrow, isChosen);
    }
}

void DrawingPainter::pointLoad(const PointLoad& load, const Arrow& arrow, bool isChosen) {
    const Paint& paint = isChosen ? tools_.chosen : tools_.force;
    canvas_.arrow(arrow, 9, paint, isChosen ? tools_.strongChosen : tools_.strongForce);
    if (isChosen) handle(arrow.tail);
    if (layout_.plane.scale() < kFigureScale) return;
    const CString figure = amount(load.force, 1, "kN");
    const int width = canvas_.textWidth(figure, tools_.font);
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
        canvas_.fill(box, tools_.paper);
        canvas_.text({box.left, middle}, figure, tools_.font, paint);
        return;
    }
}

void DrawingPainter::beamTexts(const Beam& beam, const BeamPlace& place,
                               const BeamResults* results) {
    constexpr int kApart = 10;
    struct Word {
        CString text;
        HFONT font;
        const Paint& paint;
    };
    std::vector<Word> words = {{beam.name, tools_.boldFont, tools_.ink},
                               {beam.section, tools_.font, tools_.faint}};
    if (results && std::isfinite(results->use))
        words.push_back({amount(results->use, 0, "%"), tools_.font,
                         results->use > 100 ? tools_.brokenEdge : tools_.soundEdge});
    const int room = place.width() + 2 * kSupportHeight;
    const auto widthOf = [&] {
        int width = -kApart;
        for (const Word& word : words) width += kApart + canvas_.textWidth(word.text, word.font);
        return width;
    };
    while (widthOf() > room) {
        words.pop_back();
        if (words.empty()) return;
    }
    Pixel at{place.middle() - widthOf() / 2, layout_.nameLine(place)};
    taken_.push_back({at.x, at.y - 7, at.x + widthOf(), at.y + 7});
    for (const Word& word : words) {
        canvas_.text(at, word.text, word.font, word.paint);
        at.x += canvas_.textWidth(word.text, word.font) + kApart;
    }
    // Rows of beams are closer than these lines where everything is small.
    if (layout_.plane.scale() >= kDimensionScale) dimension(beam, place);
}

void DrawingPainter::dimension(const Beam& beam, const BeamPlace& place) const {
    const CString figure = amount(beam.span, 2, "m");
    const int width = canvas_.textWidth(figure, tools_.smallFont);
    const int y = layout_.dimensionLine(place);
    constexpr int kGap = 6;
    const int textLeft = place.middle() - width / 2;
    if (textLeft - kGap <= place.left) return;
    canvas_.line({place.left, y}, {textLeft - kGap, y}, tools_.faint);
    canvas_.line({textLeft + width + kGap, y}, {place.right + 1, y}, tools_.faint);
    for (const int x : {place.left, place.right}) {
        canvas_.line({x, y - 6}, {x, y + 7}, tools_.faint);
        canvas_.line({x - 3, y + 3}, {x + 4, y - 4}, tools_.ink);
    }
    canvas_.text({textLeft, y}, figure, tools_.smallFont, tools_.rulerText);
}

void DrawingPainter::labels() {
    for (const Label& each : document_.project().labels()) label(each);
}

void DrawingPainter::label(const Label& label) {
    // As wide as a text may become; the widths of those far away are not measured.
    constexpr int kWidest = 4000, kHighest = 40;
    const Pixel at = layout_.plane.toWindow({label.x, label.y});
    if (at.y < part_.top - kHighest || at.y > part_.bottom || at.x < part_.left - kWidest ||
        at.x > part_.right + kWidest)
        return;
    const bool isLegible = layout_.plane.scale() >= kLabelScale;
    const CString text = isLegible ? document_.textOf(label) : CString();
    const PixelRect box = isLegible ? layout_.box(label, canvas_.textWidth(text, tools_.font),
                                                  canvas_.textHeight(tools_.font))
                                    : PixelRect{at.x - 2, at.y, at.x + 3, at.y + 5};
    if (!box.meets(part_)) return;
    labels_.push_back({label.id, box});
    const bool isChosen = isSelected(Selection::OneLabel, label.id);
    if (const Beam* beam = isChosen ? document_.project().beam(label.beam) : nullptr) {
        const BeamPlace place = layout_.place(*beam);
        canvas_.line({(box.left + box.right) / 2, (box.top + box.bottom) / 2},
                     {place.middle(), place.axis}, tools_.chosen);
    }
    const bool hasBorder = label.border || isChosen || !isLegible;
    canvas_.fill(box, isChosen ? tools_.halo : hasBorder ? tools_.label : tools_.paper);
    if (hasBorder) canvas_.frame(box, isChosen ? tools_.chosen : tools_.labelBorder);
    canvas_.text({box.left + (box.width() - canvas_.textWidth(text, tools_.font)) / 2,
                  (box.top + box.bottom) / 2},
                 text, tools_.font, tools_.ink);
}

void DrawingPainter::selectionOf(const BeamPlace& place) const {
    canvas_.fill({place.left - 8, std::min(place.top, place.comb) - 8, place.right + 9,
                  std::max(place.bottom, place.comb) + 8},
                 tools_.halo);
}

void DrawingPainter::handle(Pixel at) const {
    const PixelRect box{at.x - 3, at.y - 3, at.x + 4, at.y + 4};
    canvas_.fill(box, tools_.paper);
    canvas_.frame(box, tools_.chosen);
}
