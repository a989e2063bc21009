#include <algorithm>

#include "udkey/keys_fixture.h"

namespace {

class Groups : public KeysFixture {
  protected:
    Groups() { startWithUsualKeys(); }
};

constexpr UINT G = 50;
constexpr UINT H = 51;

using Members = std::map<UINT, std::vector<UINT>>;

/// The list as its rule says it, group by group.
Ids literalChildren(const Members& groups, UINT gid, bool all) {
    Ids list;
    if (!groups.contains(gid)) return list;
    const auto add = [&](UINT id) {
        if (!list.contains(id) && (all || !groups.contains(id))) list.append(id);
    };
    for (const UINT member : groups.at(gid)) {
        for (const UINT id : literalChildren(groups, member, true)) add(id);
        add(member);
    }
    return list;
}

TEST_F(Groups, GrowShrinkAndListAsTheRuleSaysWhateverTheirShape) {
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        manager_.resetGroup();
        Members groups;
        for (int i = 0; i < 20; ++i) {
            const UINT gid = G + pick(6);
            const UINT id = pick(2) ? 1 + pick(4) : G + pick(6);
            const bool known = id < G || groups.contains(id);
            const bool loop = id == gid || literalChildren(groups, id, true).contains(gid);
            ASSERT_EQ(manager_.addIdToGroup(id, gid), known && !loop);
            if (known && !loop) groups[gid].push_back(id);
            if (pick(4) == 0 && groups.contains(gid)) {
                const auto first = std::ranges::find(groups[gid], id);
                ASSERT_EQ(manager_.deleteIdFromGroup(id, gid), first != groups[gid].end());
                if (first != groups[gid].end()) groups[gid].erase(first);
            }
            if (pick(16) == 0) {
                ASSERT_EQ(manager_.deleteGroup(gid), groups.erase(gid));
                for (auto& [_, members] : groups) std::erase(members, gid);
            }
        }
        for (const auto& [gid, members] : groups) {
            for (UINT id = 1; id < G + 6; ++id)
                ASSERT_EQ(manager_.contains(gid, id), std::ranges::count(members, id) != 0);
            for (const int all : {0, 1})
                ASSERT_EQ(manager_.getChildList(gid, all), literalChildren(groups, gid, all != 0));
        }
    }
}

TEST_F(Groups, MayBeNestedDeeplyAndShared) {
    constexpr UINT kDepth = 100000;
    for (const bool fromTheTop : {true, false}) {
        manager_.resetGroup();
        for (UINT i = 100; i < 100 + kDepth; ++i) manager_.createGroup(i);
        for (UINT i = 100; i < 99 + kDepth; ++i)
            ASSERT_EQ(manager_.addIdToGroup(i + fromTheTop, i + !fromTheTop), 1);
        const UINT top = fromTheTop ? 100 : 99 + kDepth;
        const UINT bottom = 199 + kDepth - top;
        EXPECT_EQ(manager_.addIdToGroup(top, bottom), 0);
        EXPECT_EQ(manager_.addIdToGroup(1, bottom), 1);
        EXPECT_EQ(manager_.getChildList(top, 0), Ids{1});
        EXPECT_EQ(manager_.getChildList(top, 1).entries(), std::size_t{kDepth});
    }
    // Every group twice in the one above: 2 to the power of 60 ways down.
    manager_.resetGroup();
    manager_.addIdToGroup(1, 100);
    for (UINT i = 100; i < 159; ++i)
        for (int twice = 0; twice < 2; ++twice) EXPECT_EQ(manager_.addIdToGroup(i, i + 1), 1);
    EXPECT_EQ(manager_.getChildList(159, 0), Ids{1});
    EXPECT_EQ(manager_.getChildList(159, 1).entries(), 60u);
}

}  // namespace
