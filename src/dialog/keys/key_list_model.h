// What the list of keys shows, without a window: its rows, which follow the group, the filter and
// the order, and what is selected, which follows the keys rather than the rows.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "dialog/keys/folded_text.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox::keys {

using Ids = std::vector<UINT>;

/// What keys are searched by.
struct KeyTexts {
    RWCString key;
    RWCString description;
};

/// The current keys, in the order of their declaration.
[[nodiscard]] Ids currentKeys();

class KeyListModel {
  public:
    /// `texts` gives those of a key that is there; it is asked when something is searched.
    explicit KeyListModel(std::function<KeyTexts(UINT)> texts) : texts_(std::move(texts)) {}

    // What the rows are made of. They change with the next arrange().

    /// Ids that differ; their texts may have changed.
    void setKeys(const Ids& ids);
    /// Keys that come first, in this order; each counts once, and what is no key does not.
    void setChosen(const Ids& ids);
    /// None: all keys.
    void setGroup(std::optional<std::unordered_set<UINT>> members) { group_ = std::move(members); }
    void setFilter(std::string_view typed) { filter_ = Words(typed); }
    void arrange();

    [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }
    /// Of a row that is there.
    [[nodiscard]] UINT row(std::size_t row) const { return keys_[rows_[row]].id; }
    [[nodiscard]] std::optional<std::size_t> rowOf(UINT id) const;
    [[nodiscard]] Ids ids() const;
    [[nodiscard]] bool contains(UINT id) const { return find(id) < keys_.size(); }
    /// The first row at or after `from`, then from the top, whose key begins with the text; case
    /// and accents do not count.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view text, std::size_t from);

    [[nodiscard]] const Ids& chosen() const { return chosen_; }
    /// Among the chosen keys, from 1; 0 for one that is not chosen.
    [[nodiscard]] std::size_t placeOf(UINT id) const;

    // What is selected. Keys that are out of sight stay selected until select() says otherwise, but
    // those that are no key any more do not.

    void select(const Ids& ids);
    [[nodiscard]] bool isSelected(UINT id) const { return selected_.contains(id); }
    /// Those in sight, in the order of the rows.
    [[nodiscard]] Ids selection() const;

    // Orders that the selected keys in sight would have. None when that changes nothing. Keys out
    // of sight keep their places.

    /// The chosen ones one place up (-1) or down (1) among those in sight.
    [[nodiscard]] std::optional<Ids> shifted(int by) const;
    /// In front of a row, which may be the one after the last. A key that is not chosen becomes so,
    /// but not below the chosen ones.
    [[nodiscard]] std::optional<Ids> movedBefore(std::size_t row) const;
    /// Chosen, at the end, or not chosen any more.
    [[nodiscard]] std::optional<Ids> toggled(bool chosen) const;

  private:
    struct Entry {
        UINT id = 0;
        std::size_t place = 0;  ///< among the chosen keys, from 1
        std::size_t row = 0;    ///< from 1; 0: out of sight
    };
    struct Searched {
        std::string text = {};      ///< key and description, folded; empty: not asked for yet
        std::size_t keyLength = 0;  ///< of the folded key, with which it begins
    };
    struct Place {
        UINT id;
        std::size_t at;  ///< in keys_
    };
    /// Where a key is in keys_; their number when it is not there.
    [[nodiscard]] std::size_t find(UINT id) const;
    [[nodiscard]] const Entry* entryOf(UINT id) const;
    /// What the key at a place is searched by.
    const Searched& searched(std::size_t place);
    [[nodiscard]] bool isInSight(std::size_t place);
    void addRow(std::size_t place);
    /// Rows that chosen keys have; they are the first ones.
    [[nodiscard]] std::size_t chosenRows() const;

    std::function<KeyTexts(UINT)> texts_;
    std::vector<Entry> keys_;
    std::vector<Place> places_;       ///< by id
    std::vector<Searched> searched_;  ///< beside keys_, or empty while nothing was searched
    Ids chosen_;
    std::optional<std::unordered_set<UINT>> group_;
    Words filter_;
    std::vector<std::size_t> rows_;  ///< places in keys_
    std::unordered_set<UINT> selected_;
};

}  // namespace toolbox::keys
