// Calls of edits; memory that they do not get is a failure.
#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "undo/history.h"

namespace toolbox::undo {

/// Puts an edit into `made`. False, and the edit is still the caller's, without memory.
inline bool enter(Entries& made, std::unique_ptr<Edit>& edit, unsigned gesture,
                  std::shared_ptr<const CString> label) {
    try {
        made.emplace_back().edit = std::move(edit);
    } catch (const std::bad_alloc&) {
        return false;
    }
    made.front().label = std::move(label);
    made.front().gesture = gesture;
    return true;
}

inline Edit::Outcome applied(Edit& edit) {
    try {
        return edit.apply();
    } catch (const std::bad_alloc&) {
        return Edit::Failed;
    }
}

inline bool reverted(Edit& edit) {
    try {
        return edit.revert() != 0;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

inline Edit::Merging mergedInto(Edit& former, Edit& later) {
    try {
        return former.merge(later);
    } catch (const std::bad_alloc&) {
        return Edit::Apart;
    }
}

/// `former` when it cannot say. No size is so large that sums of them wrap.
inline std::uint64_t sizeOf(const Edit& edit, std::uint64_t former) {
    constexpr std::uint64_t kMost = 1ULL << 40;
    try {
        return std::min<std::uint64_t>(edit.size(), kMost);
    } catch (const std::bad_alloc&) {
        return former;
    }
}

}  // namespace toolbox::undo
