// Checks what is drawn, maps it onto the page and hands it to the derived class. A watch tells
// whether the canvas outlived that; the memory of the two paths is lent out meanwhile, so that what
// is called may draw here too.
#include "toolbox/canvas.h"

#include <algorithm>
#include <utility>

#include "canvas/styles.h"

using namespace toolbox::canvas;

namespace {

constexpr std::size_t kFaultsKept = 100;

bool isIdentity(const TransMatrix2D& t) {
    return t[0][0] == 1 && t[0][1] == 0 && t[0][2] == 0 && t[1][0] == 0 && t[1][1] == 1 &&
           t[1][2] == 0;
}

bool keepsDirections(const TransMatrix2D& t) {
    return t[0][1] == 0 && t[1][0] == 0 && t[0][0] == t[1][1] && t[0][0] > 0;
}

TvPoint mapped(const TransMatrix2D& t, TvPoint p) {
    return {t[0][0] * p.x + t[0][1] * p.y + t[0][2], t[1][0] * p.x + t[1][1] * p.y + t[1][2]};
}

/// The direction of a text on the page. A transform that leaves none leaves it as it is.
double mappedAngle(const TransMatrix2D& t, double angle) {
    if (keepsDirections(t)) return angle;
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    const double dx = t[0][0] * x + t[0][1] * y;
    const double dy = t[1][0] * x + t[1][1] * y;
    return dx == 0 && dy == 0 ? angle : std::atan2(dy, dx);
}

bool isNear(const TvPath& path) {
    for (const TvPoint& point : path.points())
        if (!toolbox::canvas::isNear(point)) return false;
    return true;
}

}  // namespace

TvCanvas::TvCanvas(double width, double height)
    : width_(pageSide(width)), height_(pageSide(height)) {}

TvCanvas::~TvCanvas() = default;

void TvCanvas::reset(double width, double height) {
    width_ = width;
    height_ = height;
    saved_.clear();
    state_.clips = 0;
    drawings_ = 0;
    faults_.clear();
    faultCount_ = 0;
}

int TvCanvas::fault(TvCanvasFault fault) {
    ++faultCount_;
    fault.drawing = drawings_;
    if (faults_.size() < kFaultsKept) faults_.push_back(std::move(fault));
    return 0;
}

/// Of what the derived class was called for.
int TvCanvas::outcome() {
    return std::exchange(refused_, false) ? fault({TvCanvasFault::Device}) : 1;
}

int TvCanvas::setPen(const TvPen& pen) {
    if (!isPen(pen)) return fault({TvCanvasFault::Style});
    state_.pen = pen;
    return 1;
}

int TvCanvas::setBrush(const TvBrush& brush) {
    state_.brush = brush;
    return 1;
}

int TvCanvas::setFont(const TvFont& font) {
    if (!isFont(font)) return fault({TvCanvasFault::Style});
    state_.font = font;
    return 1;
}

void TvCanvas::setTransform(const TransMatrix2D& transform) {
    state_.transform = transform;
    plain_ = isIdentity(transform);
}

void TvCanvas::save() {
    saved_.push_back(state_);
}

int TvCanvas::restore() {
    if (saved_.empty()) return fault({TvCanvasFault::Unmatched});
    const State before = std::move(saved_.back());
    saved_.pop_back();
    const toolbox::detail::Watch self(life_);
    int done = 1;
    while (state_.clips > before.clips) {
        --state_.clips;
        onUnclip();
        if (self.gone()) return 0;
        done = outcome() && done;
    }
    state_ = before;
    plain_ = isIdentity(state_.transform);
    return done;
}

int TvCanvas::clip(const TvPath& path) {
    TvPath page;
    page.setMapped(path, state_.transform);
    if (!isNear(page)) return fault({TvCanvasFault::Coordinate});
    ++state_.clips;
    const toolbox::detail::Watch self(life_);
    onClip(page);
    return self.gone() ? 0 : outcome();
}

int TvCanvas::clip(const toolbox::PlaneRect& rect) {
    return clip(TvPath().rectangle(rect));
}

int TvCanvas::drawPath(const TvPath& path, const TvPen& pen, const TvBrush& brush) {
    if (path.empty()) return 1;
    const toolbox::detail::Watch self(life_);
    TvPath page = std::move(page_);
    if (!plain_) page.setMapped(path, state_.transform);
    const TvPath& onPage = plain_ ? path : page;
    int drawn = 1;
    if (!isNear(onPage)) {
        drawn = fault({TvCanvasFault::Coordinate});
    } else if (pen.width > 0 || brush.filled) {
        const TvPen usedPen = pen;  // the canvas may change its own meanwhile
        const TvBrush usedBrush = brush;
        onPath(onPage, pen.width > 0 ? &usedPen : nullptr, brush.filled ? &usedBrush : nullptr);
        if (self.gone()) return 0;
        drawn = outcome();
        if (drawn) ++drawings_;
    }
    page_ = std::move(page);
    return drawn;
}

int TvCanvas::drawScratch(bool fill) {
    const toolbox::detail::Watch self(life_);
    TvPath path = std::move(scratch_);
    const int drawn = drawPath(path, state_.pen, fill ? state_.brush : TvBrush());
    if (self.gone()) return 0;
    scratch_ = std::move(path);
    scratch_.clear();
    return drawn;
}

int TvCanvas::line(TvPoint from, TvPoint to) {
    scratch_.moveTo(from).lineTo(to);
    return drawScratch(false);
}

int TvCanvas::polyline(std::span<const TvPoint> points) {
    scratch_.polyline(points);
    return drawScratch(false);
}

int TvCanvas::polyline(std::initializer_list<TvPoint> points) {
    return polyline(std::span<const TvPoint>(points.begin(), points.size()));
}

int TvCanvas::arc(TvPoint center, double radiusX, double radiusY, double start, double sweep) {
    scratch_.arc(center, radiusX, radiusY, start, sweep);
    return drawScratch(false);
}

int TvCanvas::polygon(std::span<const TvPoint> points) {
    scratch_.polygon(points);
    return drawScratch(true);
}

int TvCanvas::polygon(std::initializer_list<TvPoint> points) {
    return polygon(std::span<const TvPoint>(points.begin(), points.size()));
}

int TvCanvas::rectangle(const toolbox::PlaneRect& rect) {
    scratch_.rectangle(rect);
    return drawScratch(true);
}

int TvCanvas::ellipse(TvPoint center, double radiusX, double radiusY) {
    scratch_.ellipse(center, radiusX, radiusY);
    return drawScratch(true);
}

int TvCanvas::path(const TvPath& path) {
    return drawPath(path, state_.pen, state_.brush);
}

int TvCanvas::text(TvPoint at, const TvText& text, const TvTextPlace& place) {
    return drawText(at, text, state_.font, place);
}

int TvCanvas::drawText(TvPoint at, const TvText& text, const TvFont& font,
                       const TvTextPlace& place) {
    const TvPoint onPage = mapped(state_.transform, at);
    if (!toolbox::canvas::isNear(onPage) || !isPlace(place))
        return fault({TvCanvasFault::Coordinate});
    // A text may have any number of them.
    const std::size_t room = kFaultsKept - faults_.size();
    for (const TvTextFault& character :
         std::span(text.faults()).first(std::min(room, text.faults().size())))
        fault({TvCanvasFault::Character, 0, character, text.windows1252()});
    if (text.faults().size() > room) faultCount_ += text.faults().size() - room;
    if (text.runs().empty()) return 1;
    TvTextPlace placed = place;
    placed.angle = mappedAngle(state_.transform, place.angle);
    const TvFont usedFont = font;
    const toolbox::detail::Watch self(life_);
    onText(onPage, text, usedFont, placed);
    if (self.gone() || !outcome()) return 0;
    ++drawings_;
    return 1;
}

TvTextExtent TvCanvas::measure(const TvText& text) const {
    return state_.font.measure(text);
}
