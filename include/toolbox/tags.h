// Tags: the labels of a drawing, and the set that owns them.
//
//     TvTag tag;
//     tag.text = "q = $LOAD$ kN/m";             // $LOAD$ stands for a key's value (keys.h)
//     tag.anchor = {4.5, 0};                    // what it speaks of, in the drawing's coordinates
//     tag.offset = {0, -20};                    // from there, in points of the page: above it
//     tag.border = TvTagBorder::rounded;
//     tag.leader = true;                        // a line from the box to the anchor
//     TvTagSet labels;
//     const TvTagId id = labels.add(tag, &why); // 0 when it is refused
//
// A tag has an anchor in the drawing and an offset, a width and a font in points of the page: it
// keeps its size and its distance from its anchor at every scale. Where tags lie on a page, what
// they show there, which one is under the mouse and where there is room for them is a TvTagLayout
// (tag_layout.h).
//
// Operations return 1; 0 for what is refused, which changes nothing. Results that are a tag's
// number are 0 for none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "toolbox/canvas.h"
#include "toolbox/canvas_text.h"
#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/records.h"
#include "toolbox/sets.h"
#include "toolbox/strings.h"

class TvTagSet;

/// What is drawn around a tag's text.
enum class TvTagBorder : unsigned char { none, frame, rounded, underline };

/// A label. A plain value: whatever is changed in it counts once it is added to a set or given to
/// TvTagSet::change(), which refuse what check() refuses.
struct TB_API TvTag {
    /// The template, in Windows-1252, with tokens such as "$VOLT$". "\n" and "\r\n" break lines.
    std::string text{};
    TvPoint anchor{};  ///< what it speaks of, in coordinates of the drawing
    TvPoint offset{};  ///< from the anchor to the tag's point, in points of the page, y down

    // Where the box lies from the tag's point: at its right, around it or at its left; below it,
    // around it or above it. Lines of text are aligned likewise. TvLevel::baseline is refused.
    TvAlign align = TvAlign::left;
    TvLevel level = TvLevel::top;

    /// Points at which lines of text are broken at blanks; 0: they are as written. The box is as
    /// wide as its text.
    double width = 0;
    TvFont font{};                           ///< with the text's colour
    TvTagBorder border = TvTagBorder::none;  ///< what is drawn around it
    TvPen line{};                            ///< of border and leader
    TvBrush fill{};                          ///< of the box, also without a border
    double margin = 2;    ///< points between text and border, whatever the border
    bool leader = false;  ///< a line from the box to the anchor

    // It is shown while a unit of the drawing takes this many points of the page, both included; a
    // greatest scale of 0 is no limit.
    double minScale = 0;
    double maxScale = 0;

    bool locked = false;    ///< neither the mouse nor the search for free places moves it
    bool unplaced = false;  ///< the search found no place for it: it is drawn marked

    /// 1 when a set takes it. 0, with a sentence in `why` unless null, for a coordinate that is not
    /// finite, an offset farther than kTvCanvasFar from 0, a width or margin that is negative or
    /// above kMaxSide, a font or pen that a canvas refuses, a scale that is negative or not finite,
    /// a range of scales that is empty, and a value that no enumerator has.
    int check(CString* why) const;
    bool operator==(const TvTag&) const = default;

    /// The largest width and margin, in points.
    static constexpr double kMaxSide = 100000;
};

/// A tag's number in its set: 1 and up, never given twice. 0 is none.
using TvTagId = std::uint32_t;

/// A tag's new place, for TvTagSet::move().
struct TvTagMove {
    TvTagId id = 0;         ///< which one
    TvPoint offset{};       ///< as TvTag::offset
    bool unplaced = false;  ///< as TvTag::unplaced
    bool operator==(const TvTagMove&) const = default;
};

/// A tag as it is or shall be, for TvTagSet::putStates().
struct TvTagState {
    TvTagId id = 0;                      ///< 0: a new one, which gets a number
    std::shared_ptr<const TvTag> tag{};  ///< null: the set does not have it
    std::size_t place = 0;               ///< in the drawing order
};

/// Is told when the tags of a set, their order or the selection have changed.
class TB_API TvTagListener {
  public:
    TvTagListener(const TvTagListener&) = delete;
    TvTagListener& operator=(const TvTagListener&) = delete;
    virtual ~TvTagListener();

    /// Listens to `set` instead of the one before; null: to none. 0 when there is no memory, and
    /// for a set that is being destroyed; it then listens to the one before.
    int listenTo(TvTagSet* set);
    /// Null when it listens to none, or that was destroyed.
    [[nodiscard]] TvTagSet* tagSet() const { return set_; }

  protected:
    TvTagListener() = default;

  private:
    friend class TvTagSet;

    /// tagSet() has changed, or was destroyed. It may do anything, change and delete the set
    /// included; the operation that tells it touches nothing afterwards.
    virtual void tagsChanged() = 0;

    TvTagSet* set_ = nullptr;
};

/// Owns tags in the order in which they are drawn: the last one is on top. Each operation that
/// changes something tells the listeners once, at its end.
class TB_API TvTagSet {
  public:
    /// Without tags.
    TvTagSet();
    /// Tells the listeners, whose tagSet() is null by then.
    ~TvTagSet();
    TvTagSet(const TvTagSet&) = delete;
    TvTagSet& operator=(const TvTagSet&) = delete;

    /// Adds a tag on top and returns its number; 0 with a sentence in `why`, unless null, for a tag
    /// that check() refuses.
    TvTagId add(const TvTag& tag, CString* why = nullptr);
    /// Puts a tag at a place of the drawing order, under a number that no tag has: as it was before
    /// remove(). 0 for the number 0, one that is taken, a place above count(), a tag that check()
    /// refuses.
    int insert(std::size_t place, TvTagId id, const TvTag& tag);
    /// 0 when there is no such tag.
    int remove(TvTagId id);
    /// Removes them all at once; 0, and all stay, when one of the numbers is no tag's.
    int remove(std::span<const TvTagId> ids);
    /// Gives a tag new fields; its number, its place and whether it is selected stay. The same
    /// fields are no change, and the result is 1.
    int change(TvTagId id, const TvTag& tag, CString* why = nullptr);
    /// Moves several at once; 0, and all stay, for a number that is no tag's or an offset that
    /// check() refuses.
    int move(std::span<const TvTagMove> moves);
    /// Puts several tags into other states at once, all or, with 0, none: each leaves, comes or is
    /// as it says, and stands at its place when all is done; the others keep their order. States
    /// without a number get one. Tags that come are selected alone. 0 for a number twice, a tag
    /// that check() refuses, and a place that is too high.
    int putStates(std::span<TvTagState> states);
    /// Removes all.
    void clear();

    // Drawing order, from 0 at the bottom.
    int moveTo(TvTagId id, std::size_t place);  ///< a place above the last one is the last
    int bringToFront(TvTagId id);               ///< on top
    int sendToBack(TvTagId id);                 ///< below all
    /// Numbers of all tags, in drawing order.
    [[nodiscard]] std::vector<TvTagId> ids() const;
    /// Place of a tag; count() when there is no such tag.
    [[nodiscard]] std::size_t place(TvTagId id) const;

    /// How many there are.
    [[nodiscard]] std::size_t count() const { return entries_.size(); }
    /// The tag; null when there is none. It stays as it is, whatever becomes of the set.
    [[nodiscard]] std::shared_ptr<const TvTag> find(TvTagId id) const;

    // Selection: belongs to the set and is not stored.
    int select(TvTagId id);
    int deselect(TvTagId id);
    /// Exactly these; numbers that are no tag's are left out. None: nothing is selected.
    void setSelection(std::span<const TvTagId> ids);
    /// False also for a number that is no tag's.
    [[nodiscard]] bool isSelected(TvTagId id) const;
    /// In drawing order.
    [[nodiscard]] std::vector<TvTagId> selection() const;

    /// Grows with every change of tags and their order; the same number, the same tags.
    [[nodiscard]] std::uint64_t changes() const { return changes_; }
    /// Grows with every change of the selection, that of tags which leave included.
    [[nodiscard]] std::uint64_t selectionChanges() const { return selectionChanges_; }

    /// Appends all tags with their numbers to a record: a signature, a version of its own, a length
    /// and a check sum. Throws VarRecordException as records do.
    void store(VarRecord& record) const;
    /// Reads at the record's cursor what store() appended, in place of these tags. Nothing is
    /// selected then. 0 when the bytes are damaged or no tags, or a newer version stored them: set
    /// and cursor are then as before, and `why`, unless null, has a sentence.
    int load(VarRecord& record, CString* why);

    /// These tags, in drawing order, as bytes for the clipboard; numbers that are no tag's are left
    /// out.
    [[nodiscard]] std::string copyTags(std::span<const TvTagId> ids) const;
    /// Adds the tags of such bytes on top, under numbers of their own, with `shift` added to their
    /// anchors, and selects them alone. All or, with a sentence in `why` unless null, none.
    int pasteTags(std::string_view bytes, TvPoint shift, CString* why);

  private:
    friend class TvTagListener;

    struct Entry {
        TvTagId id = 0;
        std::shared_ptr<const TvTag> tag;
        bool selected = false;
    };

    [[nodiscard]] bool has(TvTagId id) const { return places_.contains(id); }
    void put(std::size_t place, Entry entry);
    static bool takeNumbers(std::span<const TvTagState> states, std::vector<TvTagState>& numbered,
                            TvTagId& last);
    void number(std::size_t from, std::size_t to);
    int setSelected(TvTagId id, bool selected);
    int tell(bool tags, bool selection);
    static void tellOne(TvTagListener* listener);

    std::vector<Entry> entries_;
    std::unordered_map<TvTagId, std::size_t> places_;
    TvTagId last_ = 0;  ///< the greatest number that was given
    std::uint64_t changes_ = 0;
    std::uint64_t selectionChanges_ = 0;
    bool ending_ = false;
    SetPointer<TvTagListener> listeners_;
    toolbox::detail::Watched<> life_;
};
