// Undo of labels: what is done to the tags of a set (tags.h) as steps of an undo stack (undo.h).
//
//     auto edit = std::make_unique<TvTagEdit>(labels, TvTagEdit::Move);
//     for (const TvTagId id : labels.selection()) {
//         TvTag tag = *labels.find(id);
//         tag.offset.y -= 10;
//         edit->change(id, tag);
//     }
//     stack.perform(std::move(edit), gesture);     // one step; "Undo Move labels"
//
// An edit does and takes back all that it has or nothing, and the listeners of the set are told
// once. Tags come back under their number and at their place in the drawing order; those that an
// edit brings are selected alone.
//
// Steps of one gesture that change the same tags are merged: those of a drag, and adding a tag and
// then giving it its place.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/strings.h"
#include "toolbox/tags.h"
#include "toolbox/undo.h"

/// A change of tags. It is told what to do before it is given to a stack. The set must outlive it.
class TB_API TvTagEdit : public Edit {
  public:
    /// What the user did: the text of the step.
    enum Action : int { Add, Delete, Move, Change, Order, Paste, Cut };

    /// Of the tags of `set`; there is nothing to do yet.
    TvTagEdit(TvTagSet& set, Action action);
    ~TvTagEdit() override;

    // What it shall do. The tag is the one that the set has when the edit is carried out first; of
    // what is said about one tag the last counts.
    /// A new tag on top, under a number that it gets then.
    void add(const TvTag& tag);
    /// Other fields for a tag; its place in the drawing order stays.
    void change(TvTagId id, const TvTag& tag);
    /// A tag leaves.
    void remove(TvTagId id);
    // Tags go on top of the others, or below them; among each other they keep their order.
    void bringToFront(std::span<const TvTagId> ids);
    void sendToBack(std::span<const TvTagId> ids);

    /// 1 when a set takes all the tags that it brings; 0, with a sentence in `why` unless null,
    /// when TvTag::check() refuses one. For what the user is told before the edit fails.
    int check(CString* why) const;

    /// Failed for a tag that the set does not have, one that TvTag::check() refuses, and when the
    /// tags are not as the edit left them.
    Outcome apply() override;
    int revert() override;
    /// "Move label", "Move labels".
    [[nodiscard]] CString text() const override;
    [[nodiscard]] std::size_t size() const override;
    /// Takes in an edit of the same tags.
    Merging merge(Edit& later) override;

  private:
    struct Wish;

    Wish& wish(TvTagId id);
    bool prepare();
    bool isAt(const std::vector<TvTagState>& states) const;

    TvTagSet& set_;
    Action action_;
    std::vector<Wish> wishes_;                         // until it is carried out first
    std::unordered_map<TvTagId, std::size_t> wishOf_;  // where that of a tag is in wishes_
    // The tags that it changes, before and after, in the same order.
    std::vector<TvTagState> before_;
    std::vector<TvTagState> after_;
};
