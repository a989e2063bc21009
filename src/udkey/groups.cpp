// Groups know their members and the groups they are in, so that both are found from either end.
#include "udkey/groups.h"

#include <algorithm>

namespace toolbox::udkey {

namespace {

bool removeFirst(std::vector<UINT>& ids, UINT id) {
    const auto at = std::find(ids.begin(), ids.end(), id);
    if (at == ids.end()) return false;
    ids.erase(at);
    return true;
}

}  // namespace

/// Visits every group that links lead to from one, a step at a time.
class GroupTable::Walk {
  public:
    Walk(const GroupTable& table, UINT from, Links links)
        : table_(table), links_(links), waiting_{from}, seen_{from} {}

    [[nodiscard]] bool done() const { return waiting_.empty(); }

    /// Looks at one more group; true when it is `target`.
    bool step(UINT target) {
        const UINT gid = waiting_.back();
        waiting_.pop_back();
        if (gid == target) return true;
        for (const UINT id : table_.groups_.at(gid).*links_) {
            if (table_.isGroup(id) && seen_.insert(id).second) waiting_.push_back(id);
        }
        return false;
    }

  private:
    const GroupTable& table_;
    Links links_;
    std::vector<UINT> waiting_;
    std::unordered_set<UINT> seen_;
};

void GroupTable::append(UINT id, UINT gid) {
    groups_.at(gid).members.push_back(id);
    const auto child = groups_.find(id);
    if (child != groups_.end()) child->second.parents.push_back(gid);
}

bool GroupTable::remove(UINT id, UINT gid) {
    const auto group = groups_.find(gid);
    if (group == groups_.end() || !removeFirst(group->second.members, id)) return false;
    const auto child = groups_.find(id);
    if (child != groups_.end()) removeFirst(child->second.parents, gid);
    return true;
}

bool GroupTable::erase(UINT gid) {
    const auto group = groups_.find(gid);
    if (group == groups_.end()) return false;
    for (const UINT parent : group->second.parents) {
        std::erase(groups_.at(parent).members, gid);
    }
    for (const UINT member : group->second.members) {
        const auto child = groups_.find(member);
        if (child != groups_.end()) removeFirst(child->second.parents, gid);
    }
    groups_.erase(group);
    return true;
}

bool GroupTable::contains(UINT gid, UINT id) const {
    const auto group = groups_.find(gid);
    if (group == groups_.end()) return false;
    const std::vector<UINT>& members = group->second.members;
    return std::find(members.begin(), members.end(), id) != members.end();
}

bool GroupTable::isBelow(UINT id, UINT gid) const {
    if (id == gid) return true;
    const auto below = groups_.find(id);
    const auto above = groups_.find(gid);
    if (below == groups_.end() || above == groups_.end()) return false;
    if (below->second.parents.empty() || above->second.members.empty()) return false;
    // From both ends in turn, so that it costs little where either has little beyond it: a chain
    // can be built from its top or from its bottom in linear time.
    Walk down(*this, gid, &Group::members);
    Walk up(*this, id, &Group::parents);
    for (;;) {
        if (up.step(gid)) return true;
        if (up.done()) return false;
        if (down.step(id)) return true;
        if (down.done()) return false;
    }
}

void Descent::enter(UINT gid) {
    const auto group = table_.groups_.find(gid);
    if (group != table_.groups_.end()) path_.push_back({gid, &group->second.members});
}

void Descent::addBelow(UINT gid) {
    enter(gid);
    while (!path_.empty()) {
        Level& level = path_.back();
        if (level.next == level.members->size()) {
            if (groupsToo_ && path_.size() > 1) list_.append(level.gid);
            path_.pop_back();
            continue;
        }
        const UINT member = (*level.members)[level.next++];
        // What is below a group that was seen is listed already, or is being listed further down.
        if (!seen_.insert(member).second) continue;
        if (table_.isGroup(member)) {
            enter(member);
        } else {
            list_.append(member);
        }
    }
}

}  // namespace toolbox::udkey
