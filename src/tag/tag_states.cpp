// Several tags at once: the new order is built beside the old one, so that a refusal changes
// nothing.
#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

#include "toolbox/tags.h"

/// Numbers the states that have none in `numbered`; false for one that a set does not take.
bool TvTagSet::takeNumbers(std::span<const TvTagState> states, std::vector<TvTagState>& numbered,
                           TvTagId& last) {
    std::unordered_set<TvTagId> ids;
    numbered.assign(states.begin(), states.end());
    for (TvTagState& each : numbered) {
        if (each.id == 0) {
            if (!each.tag || last == std::numeric_limits<TvTagId>::max()) return false;
            each.id = ++last;
        }
        last = std::max(last, each.id);
        if (!ids.insert(each.id).second || (each.tag && !each.tag->check(nullptr))) return false;
    }
    return true;
}

int TvTagSet::putStates(std::span<TvTagState> states) {
    TvTagId last = last_;
    std::vector<TvTagState> numbered;
    if (!takeNumbers(states, numbered, last)) return 0;
    std::unordered_set<TvTagId> changed;
    for (const TvTagState& each : numbered) changed.insert(each.id);

    std::vector<Entry> entries;
    bool selected = false;
    for (const Entry& each : entries_)
        if (!changed.contains(each.id)) entries.push_back(each);
    std::vector<TvTagState> sorted = numbered;
    std::ranges::stable_sort(sorted, {}, &TvTagState::place);
    bool arrives = false;
    for (const TvTagState& each : sorted) {
        const bool wasThere = has(each.id);
        const bool wasSelected = isSelected(each.id);
        if (!each.tag) {
            selected = selected || wasSelected;
            continue;
        }
        if (each.place > entries.size()) return 0;
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(each.place),
                       {each.id, each.tag, wasSelected});
        arrives = arrives || !wasThere;
    }
    if (arrives) {
        for (Entry& each : entries) each.selected = changed.contains(each.id) && !has(each.id);
        selected = true;
    }
    std::unordered_map<TvTagId, std::size_t> places;
    for (std::size_t i = 0; i < entries.size(); ++i) places.emplace(entries[i].id, i);
    entries_.swap(entries);
    places_.swap(places);
    last_ = last;
    for (std::size_t i = 0; i < states.size(); ++i) states[i].id = numbered[i].id;
    return tell(true, selected);
}
