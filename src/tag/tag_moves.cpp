// The rules of gestures. Steps of 0 change nothing, to the last bit.
#include "tag/tag_moves.h"

#include <algorithm>
#include <cmath>

namespace toolbox::tag {
namespace {

/// Without a negative zero, which is equal to zero but not stored alike.
TvPoint sum(TvPoint a, TvPoint b) {
    return {a.x + b.x + 0.0, a.y + b.y + 0.0};
}

/// The tag's point on the page, from which its box lies by its alignment.
TvPoint pointOf(const TvTagOnPage& place) {
    return sum(place.anchor, place.tag->offset);
}

}  // namespace

PageView::PageView(const TransMatrix2D& toPage) {
    toPage.inverse(fromPage_);
}

TvPoint PageView::inDrawing(TvPoint point) const {
    const auto mapped = fromPage_.mapPoint(SmallVector<double, 2>(point.x, point.y));
    return {mapped[0] + 0.0, mapped[1] + 0.0};
}

TvPoint PageView::stepInDrawing(TvPoint step) const {
    return {fromPage_[0][0] * step.x + fromPage_[0][1] * step.y,
            fromPage_[1][0] * step.x + fromPage_[1][1] * step.y};
}

TvTag moved(const TvTag& tag, TvPoint step, bool whole, const PageView& view) {
    TvTag result = tag;
    result.unplaced = false;
    if (tag.leader && !whole)
        result.offset = sum(tag.offset, step);
    else
        result.anchor = sum(tag.anchor, view.stepInDrawing(step));
    return result;
}

TvTag anchorMoved(const TvTag& tag, TvPoint step, const PageView& view) {
    TvTag result = tag;
    result.anchor = sum(tag.anchor, view.stepInDrawing(step));
    result.offset = sum(tag.offset, {-step.x, -step.y});
    return result;
}

double widthAt(const TvTagOnPage& place, double x) {
    const TvTag& tag = *place.tag;
    const double point = pointOf(place).x;
    const double side = tag.align == TvAlign::center ? 2 * std::abs(x - point)
                        : tag.align == TvAlign::left ? x - point
                                                     : point - x;
    return std::clamp(side - 2 * tag.margin, kLeastWidth, TvTag::kMaxSide);
}

std::vector<Handle> handlesOf(const TvTagOnPage& place) {
    if (place.tag->locked) return {};
    const double middle = (place.box.top + place.box.bottom) / 2;
    std::vector<Handle> handles;
    if (place.tag->align != TvAlign::right)
        handles.push_back({Grip::width, {place.box.right, middle}});
    if (place.tag->align != TvAlign::left)
        handles.push_back({Grip::width, {place.box.left, middle}});
    handles.push_back({Grip::anchor, place.anchor});
    return handles;
}

}  // namespace toolbox::tag
