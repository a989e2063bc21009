// Draws a layout: into a recording first, which plays on any canvas, also on one that is deleted
// meanwhile.
#include <algorithm>
#include <numbers>

#include "tag/geometry.h"
#include "toolbox/tag_layout.h"

using namespace toolbox::tag;
using toolbox::PlaneRect;

namespace {

constexpr TvColor kMarkColor{220, 0, 0};
constexpr double kMarkWidth = 1;     // points, as all of these
constexpr double kMarkDistance = 1;  // from the box
constexpr double kMarkCorner = 5;    // sides of the filled corner

/// A rectangle whose corners are quarters of circles.
TvPath roundedBox(const PlaneRect& box, double radius) {
    constexpr double kControl = 4.0 / 3.0 * (std::numbers::sqrt2 - 1);
    const double r = std::min({radius, (box.right - box.left) / 2, (box.bottom - box.top) / 2});
    TvPath path;
    const auto turn = [&path](TvPoint from, TvPoint corner, TvPoint to) {
        path.lineTo(from);
        const auto control = [corner](TvPoint end) {
            return TvPoint{end.x + (corner.x - end.x) * kControl,
                           end.y + (corner.y - end.y) * kControl};
        };
        path.curveTo(control(from), control(to), to);
    };
    const auto& [left, top, right, bottom] = box;
    turn({left, top + r}, {left, top}, {left + r, top});
    turn({right - r, top}, {right, top}, {right, top + r});
    turn({right, bottom - r}, {right, bottom}, {right - r, bottom});
    turn({left + r, bottom}, {left, bottom}, {left, bottom - r});
    return path.close();
}

/// The box with what fills it and goes around it.
bool drawBox(TvCanvas& canvas, const TvTagOnPage& each) {
    const TvTag& tag = *each.tag;
    const PlaneRect& box = each.box;
    const bool hasFrame = tag.border == TvTagBorder::frame || tag.border == TvTagBorder::rounded;
    bool drawn = canvas.setBrush(tag.fill) && canvas.setPen(hasFrame ? tag.line : TvPen::none());
    if (tag.border == TvTagBorder::rounded)
        drawn = drawn && canvas.path(roundedBox(box, tag.font.size / 2));
    else
        drawn = drawn && canvas.rectangle(box);
    if (tag.border == TvTagBorder::underline)
        drawn = drawn && canvas.setPen(tag.line) &&
                canvas.line({box.left, box.bottom}, {box.right, box.bottom});
    return drawn;
}

bool drawText(TvCanvas& canvas, const TvTagOnPage& each) {
    const TvTag& tag = *each.tag;
    const PlaneRect inner = grown(each.box, -tag.margin);
    const double x = tag.align == TvAlign::left     ? inner.left
                     : tag.align == TvAlign::center ? (inner.left + inner.right) / 2
                                                    : inner.right;
    return canvas.setFont(tag.font) &&
           canvas.text({x, inner.top}, each.text, {tag.align, TvLevel::top});
}

/// Seen without colours too: a dashed frame with a filled corner.
bool drawMark(TvCanvas& canvas, const PlaneRect& box) {
    const PlaneRect frame = grown(box, kMarkDistance);
    return canvas.setBrush({}) && canvas.setPen({kMarkColor, kMarkWidth, {3, 2}}) &&
           canvas.rectangle(frame) && canvas.setPen(TvPen::none()) &&
           canvas.setBrush(kMarkColor) &&
           canvas.polygon({{frame.right - kMarkCorner, frame.top},
                           {frame.right, frame.top},
                           {frame.right, frame.top + kMarkCorner}});
}

bool drawTag(TvCanvas& canvas, const TvTagOnPage& each) {
    bool drawn = true;
    if (each.hasLeader)
        drawn = canvas.setPen(each.tag->line) && canvas.line(each.leaderStart, each.anchor);
    drawn = drawBox(canvas, each) && drawn;
    drawn = drawText(canvas, each) && drawn;
    if (each.tag->unplaced) drawn = drawMark(canvas, each.box) && drawn;
    return drawn;
}

}  // namespace

int TvTagLayout::draw(TvCanvas& canvas) const {
    TvRecording recording(canvas.width(), canvas.height());
    bool drawn = true;
    for (const TvTagOnPage& each : tags_) drawn = drawTag(recording, each) && drawn;
    return recording.play(canvas) && drawn ? 1 : 0;
}
