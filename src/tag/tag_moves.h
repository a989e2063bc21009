// What gestures make of a tag: pure rules, without windows.
#pragma once

#include <optional>
#include <vector>

#include "toolbox/tag_layout.h"
#include "toolbox/tags.h"
#include "toolbox/transform.h"

namespace toolbox::tag {

/// How a drawing lies on a page, both ways.
class PageView {
  public:
    PageView() = default;
    /// Of a transform of the drawing onto the page; one without inverse is no view.
    explicit PageView(const TransMatrix2D& toPage);

    /// A step on the page as one of the drawing.
    [[nodiscard]] TvPoint stepInDrawing(TvPoint step) const;
    /// A point of the page as one of the drawing.
    [[nodiscard]] TvPoint inDrawing(TvPoint point) const;

  private:
    TransMatrix2D fromPage_;
};

/// The tag moved by a step on the page. One with a leader keeps its anchor unless it is moved
/// `whole`; one without takes it along. It counts as placed.
[[nodiscard]] TvTag moved(const TvTag& tag, TvPoint step, bool whole, const PageView& view);

/// The anchor moved by a step on the page, while the box stays where it is.
[[nodiscard]] TvTag anchorMoved(const TvTag& tag, TvPoint step, const PageView& view);

/// The width of text for which the box has its free side at `x`, at least kLeastWidth.
[[nodiscard]] double widthAt(const TvTagOnPage& place, double x);
inline constexpr double kLeastWidth = 5;

/// What of a tag can be dragged.
enum class Grip : unsigned char { none, box, leader, anchor, width };

/// A part of a tag that is drawn for the mouse when the tag is selected.
struct Handle {
    Grip grip = Grip::none;
    TvPoint at{};
    bool operator==(const Handle&) const = default;
};

/// Where the handles of a selected tag are; a locked one has none. Of the box the sides that move
/// with the width have one.
[[nodiscard]] std::vector<Handle> handlesOf(const TvTagOnPage& place);

}  // namespace toolbox::tag
