// Groups of ids and what lies below them. Which ids are keys is the caller's business: an id that
// is no group is a leaf.
#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "toolbox/containers.h"
#include "toolbox/win_types.h"

namespace toolbox::udkey {

class GroupTable {
  public:
    [[nodiscard]] bool isGroup(UINT id) const { return groups_.contains(id); }

    /// False when it is there already.
    bool create(UINT gid) { return groups_.try_emplace(gid).second; }
    /// Appends to a group that exists.
    void append(UINT id, UINT gid);
    /// Removes the first occurrence.
    bool remove(UINT id, UINT gid);
    /// Removes a group and all its occurrences in others.
    bool erase(UINT gid);
    void clear() { groups_.clear(); }

    [[nodiscard]] bool contains(UINT gid, UINT id) const;
    /// True when `id` is `gid` or lies below it.
    [[nodiscard]] bool isBelow(UINT id, UINT gid) const;

  private:
    friend class Descent;

    struct Group {
        std::vector<UINT> members;
        std::vector<UINT> parents;  ///< one for each occurrence
    };
    using Links = std::vector<UINT> Group::*;
    class Walk;

    std::unordered_map<UINT, Group> groups_;
};

/// Lists what lies below groups, each id once: a subgroup after what is below it. Takes one step
/// for each membership, and no recursion, whatever the groups' shape.
class Descent {
  public:
    Descent(const GroupTable& table, bool groupsToo) : table_(table), groupsToo_(groupsToo) {}

    /// Lists what is below a group and is not listed yet.
    void addBelow(UINT gid);
    void addLeaf(UINT id) {
        if (seen_.insert(id).second) list_.append(id);
    }

    [[nodiscard]] RWTValOrderedVector<UINT> take() { return std::move(list_); }

  private:
    struct Level {
        UINT gid;
        const std::vector<UINT>* members;
        std::size_t next = 0;
    };
    void enter(UINT gid);

    const GroupTable& table_;
    bool groupsToo_;
    std::unordered_set<UINT> seen_;
    std::vector<Level> path_;
    RWTValOrderedVector<UINT> list_;
};

}  // namespace toolbox::udkey
