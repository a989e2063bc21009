// The entries of an index by place and by identifier.
#include "file/walk/index_places.h"

#include <algorithm>

namespace toolbox {

IndexPlaces::IndexPlaces(const BlockFileMap& map) : entries_(&sorted_) {
    if (map.checksums && map.checksums->proves()) {
        for (const BlockSum& row : map.checksums->rows) sorted_.push_back({row.id, row.offset});
    } else if (map.index) {
        entries_ = &map.index->entries;
        if (std::ranges::is_sorted(*entries_, {}, &BlocItem::offset)) return;
        sorted_ = *entries_;
    }
    std::ranges::stable_sort(sorted_, {}, &BlocItem::offset);
    entries_ = &sorted_;
}

const BlocItem* IndexPlaces::from(std::uint64_t offset) {
    const auto& entries = *entries_;
    constexpr std::size_t kSteps = 8;
    if (cursor_ > 0 && entries[cursor_ - 1].offset >= offset) cursor_ = 0;
    for (std::size_t i = 0; i < kSteps; ++i) {
        if (cursor_ == entries.size()) return nullptr;
        if (entries[cursor_].offset >= offset) return &entries[cursor_];
        ++cursor_;
    }
    const auto rest = std::ranges::lower_bound(
        entries.begin() + static_cast<std::ptrdiff_t>(cursor_), entries.end(), offset, {},
        [](const BlocItem& entry) { return std::uint64_t{entry.offset}; });
    cursor_ = static_cast<std::size_t>(rest - entries.begin());
    return rest == entries.end() ? nullptr : &*rest;
}

const BlocItem* IndexPlaces::at(std::uint64_t offset) {
    const BlocItem* entry = from(offset);
    return entry && entry->offset == offset ? entry : nullptr;
}

const BlocItem* IndexPlaces::after(std::uint64_t offset) {
    return from(offset + 1);
}

const BlocItem* IndexPlaces::of(std::uint32_t id) {
    const auto found = lookup_.find(*entries_, id);
    return found ? &(*entries_)[*found] : nullptr;
}

}  // namespace toolbox
