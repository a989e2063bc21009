// Where tags lie on a page: all values are fetched here, and nothing calls back afterwards.
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "canvas/styles.h"
#include "tag/geometry.h"
#include "tag/template_text.h"
#include "toolbox/tag_layout.h"

using namespace toolbox::tag;
using toolbox::PlaneRect;

namespace {

/// Points of the page that a unit of the drawing takes; nothing when the view has no inverse.
std::optional<double> scaleOf(const TransMatrix2D& view) {
    TransMatrix2D unused;
    const double scale = std::sqrt(std::fabs(view[0][0] * view[1][1] - view[0][1] * view[1][0]));
    if (!view.inverse(unused) || !std::isfinite(scale)) return std::nullopt;
    return scale;
}

bool isShownAt(const TvTag& tag, double scale) {
    return scale >= tag.minScale && (tag.maxScale == 0 || scale <= tag.maxScale);
}

/// Where something of a length begins that lies at a point: after, around or before it.
double startAt(double point, double length, bool after, bool around) {
    return after ? point : around ? point - length / 2 : point - length;
}

PlaneRect boxAt(TvPoint point, const TvTag& tag, const TvText& text) {
    const TvTextExtent extent = tag.font.measure(text);
    // A tag without letters is as wide as a letter, so that it is seen and found.
    const double width = (extent.width > 0 ? extent.width : tag.font.size) + 2 * tag.margin;
    const double height = extent.height + 2 * tag.margin;
    const double left =
        startAt(point.x, width, tag.align == TvAlign::left, tag.align == TvAlign::center);
    const double top =
        startAt(point.y, height, tag.level == TvLevel::top, tag.level == TvLevel::middle);
    return {left, top, left + width, top + height};
}

/// The nearest point of the box; of an underlined one the nearest end or point of its line, unless
/// the leader would cross the text.
TvPoint startOfLeader(const PlaneRect& box, TvPoint anchor, TvTagBorder border) {
    const TvPoint nearest = nearestIn(box, anchor);
    const bool isAbove = anchor.y < box.bottom && nearest.x == anchor.x;
    if (border != TvTagBorder::underline || isAbove) return nearest;
    return {nearest.x, box.bottom};
}

TvTagOnPage layOut(TvTagId id, std::shared_ptr<const TvTag> tag, const TransMatrix2D& view,
                   TemplateText& expander) {
    TvTagOnPage result;
    result.id = id;
    result.text = TvText(expander.expand(tag->text));
    if (tag->width > 0) result.text = result.text.wrapped(tag->font, tag->width);
    const auto anchor = view.mapPoint(SmallVector<double, 2>(tag->anchor.x, tag->anchor.y));
    result.anchor = {anchor[0], anchor[1]};
    result.box = boxAt(result.anchor + tag->offset, *tag, result.text);
    result.leaderStart = startOfLeader(result.box, result.anchor, tag->border);
    result.hasLeader = tag->leader && nearestIn(result.box, result.anchor) != result.anchor;
    result.tag = std::move(tag);
    return result;
}

/// What is too far away is on no page.
bool isOnPage(const TvTagOnPage& tag) {
    using toolbox::canvas::isNear;
    return isNear(tag.anchor) && isNear(TvPoint{tag.box.left, tag.box.top}) &&
           isNear(TvPoint{tag.box.right, tag.box.bottom});
}

}  // namespace

TvTagOnPage tvLayOutTag(const TvTag& tag, const TransMatrix2D& view, TokenizerUDManager* keys) {
    TemplateText expander(keys);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a value may end the caller's
    const TransMatrix2D kept = view;
    return layOut(0, std::make_shared<const TvTag>(tag), kept, expander);
}

TvTagLayout::TvTagLayout(const TvTagSet& set, const TransMatrix2D& view, TokenizerUDManager* keys)
    : TvTagLayout(set, view, keysOfAll(keys)) {}

TvTagLayout::TvTagLayout(const TvTagSet& set, const TransMatrix2D& view, const TvTagKeys& keysOf) {
    const std::optional<double> scale = scaleOf(view);
    if (!scale) return;
    // What is asked may end the caller's.
    const TransMatrix2D kept = view;  // NOLINT(performance-unnecessary-copy-initialization)
    const TvTagKeys ask = keysOf;     // NOLINT(performance-unnecessary-copy-initialization)
    std::vector<std::pair<TvTagId, std::shared_ptr<const TvTag>>> shown;
    for (const TvTagId id : set.ids())
        if (auto tag = set.find(id); isShownAt(*tag, *scale))
            shown.emplace_back(id, std::move(tag));
    tags_.reserve(shown.size());
    for (auto& [id, tag] : shown) {
        TemplateText expander(ask ? ask(id, *tag) : nullptr);
        TvTagOnPage laid = layOut(id, std::move(tag), kept, expander);
        if (!isOnPage(laid)) continue;
        places_.emplace(id, tags_.size());
        tags_.push_back(std::move(laid));
    }
}

const TvTagOnPage* TvTagLayout::tag(TvTagId id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? nullptr : &tags_[found->second];
}

TvTagHit TvTagLayout::find(TvPoint point, double tolerance) const {
    // NOLINTNEXTLINE(modernize-loop-convert): the compilers' views differ
    for (auto each = tags_.rbegin(); each != tags_.rend(); ++each) {
        if (distance(point, nearestIn(each->box, point)) <= tolerance)
            return {each->id, TvTagHit::Box};
        if (each->hasLeader && distanceToLine(point, each->leaderStart, each->anchor) <= tolerance)
            return {each->id, TvTagHit::Leader};
    }
    return {};
}

std::vector<TvTagId> TvTagLayout::findIn(const PlaneRect& rect) const {
    std::vector<TvTagId> found;
    for (const TvTagOnPage& each : tags_)
        if (isWithin(each.box, rect)) found.push_back(each.id);
    return found;
}
