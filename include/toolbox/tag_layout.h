// Where the tags of a drawing lie on a page: drawn, found by a point, moved to where there is room.
//
//     TransMatrix2D view;                                   // the drawing onto the page
//     view.scale(20, -20).translate(50, 400);
//     const TvTagLayout layout(labels, view, &keys);        // fetches the values of the tokens
//     layout.draw(canvas);
//     const TvTagHit hit = layout.find(mouse, 3);           // points of the page
//     labels.select(hit.id);
//
//     TvTagSurroundings around;                             // what tags shall not cover
//     around.frame = {0, 0, 595, 842};
//     around.segments = beams;
//     const TvTagPlacement placement = layout.placeFree(around);
//     labels.move(placement.moves);
//
// A layout is made of what the tags are and what the keys are worth at that moment, and does not
// change: a view makes a new one when TvTagSet::changes(), its transform, a value or a key changes.
// It is the same on every device, for texts are measured by the canvas' own widths.
//
// All coordinates here are points of the page, y down; a rectangle's left is not above its right
// and its top not above its bottom.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolbox/canvas.h"
#include "toolbox/canvas_text.h"
#include "toolbox/export.h"
#include "toolbox/keys.h"
#include "toolbox/strings.h"
#include "toolbox/tags.h"
#include "toolbox/transform.h"

/// A tag as it lies on a page.
struct TvTagOnPage {
    TvTagId id = 0;                      ///< its number; 0 for a tag of no set
    std::shared_ptr<const TvTag> tag{};  ///< as it was then
    TvText text{};                       ///< what is shown, with its line breaks and faults
    toolbox::PlaneRect box{};            ///< around the text and its margin
    TvPoint anchor{};                    ///< on the page
    TvPoint leaderStart{};               ///< where the leader leaves the box
    bool hasLeader = false;              ///< false also while the anchor lies in the box
};

/// What lies at a point.
struct TvTagHit {
    /// Parts of a tag.
    enum Part : unsigned char { None, Box, Leader };
    TvTagId id = 0;    ///< 0: no tag
    Part part = None;  ///< of the tag
    bool operator==(const TvTagHit&) const = default;
};

/// A straight line of the drawing that tags shall not cover.
struct TvSegment {
    // Its ends.
    TvPoint from;
    TvPoint to;
    bool operator==(const TvSegment&) const = default;
};

/// What TvTagLayout::placeFree() heeds. The spans are borrowed for the call.
struct TvTagSurroundings {
    toolbox::PlaneRect frame{};                        ///< no tag is moved out of it
    std::span<const toolbox::PlaneRect> rectangles{};  ///< not to be covered
    std::span<const TvSegment> segments{};             ///< not to be covered
    double step = 4;                                   ///< between the lines of search, from 0.5 on
    double reach = 150;                                ///< how far a tag may be moved, to 5000
};

/// What became of a search for free places.
struct TvTagPlacement {
    bool refused = false;             ///< a number was impossible: nothing was searched
    std::vector<TvTagMove> moves{};   ///< tags that change, in the order of their numbers
    std::vector<TvTagId> unplaced{};  ///< tags without a place, by number
};

/// Whose values the tokens of a tag stand for, where tags speak of different things; null: they
/// stand as they are. It is asked for each tag directly before its tokens are expanded, with the
/// tag's number, 0 for one of no set. What it gives may end when a value is fetched (the rest of
/// the tag's tokens then stand as they are) and need not live longer than that tag's turn.
using TvTagKeys = std::function<TokenizerUDManager*(TvTagId id, const TvTag& tag)>;

/// The tags of a set that are shown on a page. A plain value; it keeps the tags it was made of and
/// borrows nothing.
class TB_API TvTagLayout {
  public:
    /// Without tags.
    TvTagLayout() = default;
    /// The tags of `set` that are visible at the scale of `view`, which maps the drawing onto the
    /// page: a scale is the square root of its determinant's amount. Without an invertible view
    /// there are none. Tokens are expanded by `keys`; null: they stand as they are. Fetching values
    /// may delete `keys` (tokens stand as they are from there on) and the set.
    TvTagLayout(const TvTagSet& set, const TransMatrix2D& view, TokenizerUDManager* keys);
    /// As above, with keys for each tag. `keysOf` may do what fetching values may; an empty one has
    /// no keys.
    TvTagLayout(const TvTagSet& set, const TransMatrix2D& view, const TvTagKeys& keysOf);

    /// All of them, in drawing order.
    [[nodiscard]] std::span<const TvTagOnPage> tags() const { return tags_; }
    /// Null for a tag that is not shown.
    [[nodiscard]] const TvTagOnPage* tag(TvTagId id) const;

    /// The topmost tag whose box or leader is at most `tolerance` away from the point.
    [[nodiscard]] TvTagHit find(TvPoint point, double tolerance) const;
    /// The tags whose box lies in the rectangle, in drawing order.
    [[nodiscard]] std::vector<TvTagId> findIn(const toolbox::PlaneRect& rect) const;

    /// Draws the tags, one after the other: leader, fill, border, text, and a red dashed frame with
    /// a corner around what is unplaced. The canvas' transform, if it has one, maps the page. Its
    /// styles are as before afterwards. 1; 0 when something was refused or the canvas deleted.
    int draw(TvCanvas& canvas) const;

    /// Finds places where tags cover neither each other nor what surrounds them. It moves nothing:
    /// TvTagSet::move() does.
    ///
    /// A tag's place is free when its box lies in the frame and no inner point of it lies in a
    /// rectangle, on a segment or in the box of another tag that stays or was placed before; what
    /// goes less than a thousandth of a point into it only touches it. Leaders may be crossed.
    ///
    /// Locked tags stay. The others are taken in one order, whatever that of the set: by their
    /// anchors on the page from the top down, then from the left, then by their boxes, then by
    /// their fields. A tag stays when its place is free, the boxes of tags that have not been taken
    /// yet aside. After that each of the others, in the same order, gets its nearest free place:
    /// that of the least distance among all those within `reach` that lie, as seen from its own
    /// place (or, when that is not in the frame, from the nearest one that is), straight above or
    /// below, or at any distance sideways on a line k * `step` above or below it, k = 0, 1, 2, ...;
    /// of equal ones the one least far up or down, then the upper one, then the left one. So tags
    /// come to touch what is beside them. A tag without such a place stays where it is, is
    /// reported, and holds no room against others.
    ///
    /// What was placed so stays when it is placed again. A coordinate of frame, rectangle or
    /// segment that is not finite or farther than kTvCanvasFar from 0, an empty frame, a step
    /// outside 0.5 to 5000 and a reach outside 0 to 5000 are refused.
    [[nodiscard]] TvTagPlacement placeFree(const TvTagSurroundings& around) const;

  private:
    std::vector<TvTagOnPage> tags_;
    std::unordered_map<TvTagId, std::size_t> places_;
};

/// One tag as it lies on a page, whatever the scale, as for the preview of an editor. Fetching
/// values may delete anything.
[[nodiscard]] TB_API TvTagOnPage tvLayOutTag(const TvTag& tag, const TransMatrix2D& view,
                                             TokenizerUDManager* keys);

/// The text of a tag as it is shown, without line breaks of its width, in Windows-1252: what a copy
/// as text is made of. Wrong tokens stand as they are. Without keys the text as written.
[[nodiscard]] TB_API std::string tvTagText(const TvTag& tag, TokenizerUDManager* keys);

/// What is wrong with a token, as a sentence in the language of GMSG: the token and its place,
/// counted from 1. TokenizerUDManager::checkTemplate() lists what is wrong with a tag's text.
[[nodiscard]] TB_API CString tvTagSentence(const toolbox::TemplateProblem& problem);
