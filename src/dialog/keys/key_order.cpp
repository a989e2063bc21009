// How the order of the chosen keys changes. What is in sight exchanges places among itself, so that
// keys out of sight stay where they are.
#include <algorithm>
#include <utility>

#include "dialog/keys/key_list_model.h"

namespace toolbox::keys {

std::optional<Ids> KeyListModel::shifted(int by) const {
    Ids inSight;
    for (std::size_t at = 0, end = chosenRows(); at < end; ++at) inSight.push_back(row(at));
    const Ids before = inSight;
    const auto shift = [&](auto begin, auto end) {
        for (auto at = begin; at != end; ++at)
            if (at != begin && isSelected(*at) && !isSelected(*std::prev(at)))
                std::iter_swap(at, std::prev(at));
    };
    if (by < 0)
        shift(inSight.begin(), inSight.end());
    else
        shift(inSight.rbegin(), inSight.rend());
    if (inSight == before) return std::nullopt;
    Ids order = chosen_;
    for (std::size_t i = 0; i < before.size(); ++i) order[placeOf(before[i]) - 1] = inSight[i];
    return order;
}

std::optional<Ids> KeyListModel::movedBefore(std::size_t row) const {
    const std::size_t rows = chosenRows();
    Ids moved = selection();
    if (row > rows) std::erase_if(moved, [&](UINT id) { return placeOf(id) == 0; });
    if (moved.empty()) return std::nullopt;
    row = std::min(row, rows);

    const auto stays = [&](std::size_t at) { return !isSelected(this->row(at)); };
    Ids order = chosen_;
    std::erase_if(order, [&](UINT id) { return isSelected(id) && rowOf(id); });
    // In front of the next one in sight that stays; behind the last one where there is none.
    auto place = order.end();
    std::size_t anchor = row;
    while (anchor < rows && !stays(anchor)) ++anchor;
    if (anchor < rows) {
        place = std::ranges::find(order, this->row(anchor));
    } else {
        anchor = row;
        while (anchor > 0 && !stays(anchor - 1)) --anchor;
        if (anchor > 0) place = std::ranges::find(order, this->row(anchor - 1)) + 1;
    }
    order.insert(place, moved.begin(), moved.end());
    return order == chosen_ ? std::nullopt : std::optional(std::move(order));
}

std::optional<Ids> KeyListModel::toggled(bool chosen) const {
    Ids order = chosen_;
    if (chosen) {
        for (const UINT id : selection())
            if (placeOf(id) == 0) order.push_back(id);
    } else {
        std::erase_if(order, [&](UINT id) { return isSelected(id) && rowOf(id); });
    }
    return order == chosen_ ? std::nullopt : std::optional(std::move(order));
}

}  // namespace toolbox::keys
