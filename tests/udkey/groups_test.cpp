#include "udkey/keys_fixture.h"

namespace {

class Groups : public KeysFixture {
  protected:
    Groups() { startWithUsualKeys(); }
};

constexpr UINT G = 50;
constexpr UINT H = 51;

TEST_F(Groups, RefuseWhatIsNeitherKeyNorGroup) {
    EXPECT_EQ(manager_.createGroup(1), 0) << "a key's id";
    EXPECT_EQ(manager_.createGroup(G), 1);
    EXPECT_EQ(manager_.createGroup(G), 0);
    EXPECT_EQ(manager_.addIdToGroup(99, G), 0);
    EXPECT_EQ(manager_.addIdToGroup(1, 2), 0) << "a key cannot hold others";
    EXPECT_TRUE(manager_.getChildList(2, 1).isEmpty());
    EXPECT_EQ(manager_.addIdToGroup(99, H), 0);
    EXPECT_EQ(manager_.createGroup(H), 1) << "the refused member made no group";
}

TEST_F(Groups, NeverContainThemselves) {
    for (UINT gid = G; gid <= G + 4; ++gid) manager_.createGroup(gid);
    EXPECT_EQ(manager_.addIdToGroup(G, G), 0);
    for (UINT gid = G; gid < G + 4; ++gid) EXPECT_EQ(manager_.addIdToGroup(gid + 1, gid), 1);
    for (UINT gid = G; gid < G + 4; ++gid) EXPECT_EQ(manager_.addIdToGroup(gid, G + 4), 0);
    EXPECT_EQ(manager_.addIdToGroup(G + 4, G), 1) << "a second way down is no loop";
    EXPECT_EQ(manager_.deleteIdFromGroup(G + 4, G + 3), 1);
    EXPECT_EQ(manager_.addIdToGroup(G + 1, G + 4), 1) << "the way back is open now";
    EXPECT_EQ(manager_.addIdToGroup(G + 4, G + 1), 0);
}

TEST_F(Groups, LoseMembersOneByOneAndGroupsAltogether) {
    for (const UINT id : {1u, 2u, 1u}) EXPECT_EQ(manager_.addIdToGroup(id, H), 1);
    EXPECT_EQ(manager_.deleteIdFromGroup(1, H), 1);
    EXPECT_EQ(manager_.getChildList(H, 0), (Ids{2, 1}));
    EXPECT_EQ(manager_.deleteIdFromGroup(3, H) + manager_.deleteIdFromGroup(1, 99), 0);

    for (const UINT id : {H, 3u, H}) manager_.addIdToGroup(id, G);
    manager_.setMatching(Ids{H, 3});
    EXPECT_EQ(manager_.getMatching(), (Ids{2, 1, 3}));
    EXPECT_EQ(manager_.deleteGroup(H), 1);
    EXPECT_EQ(manager_.deleteGroup(H), 0);
    EXPECT_EQ(manager_.contains(G, H), 0);
    EXPECT_EQ(manager_.getChildList(G, 1), Ids{3});
    EXPECT_EQ(manager_.getMatching(), Ids{3});
    manager_.resetGroup();
    EXPECT_EQ(manager_.deleteGroup(G), 0);
}

/// The list as its rule says it, group by group.
Ids literalChildren(const TestManager& manager, const std::map<UINT, std::vector<UINT>>& groups,
                    UINT gid, bool all) {
    Ids list;
    if (!groups.contains(gid)) return list;
    const auto add = [&](UINT id) {
        if (!list.contains(id) && (all || !groups.contains(id))) list.append(id);
    };
    for (const UINT member : groups.at(gid)) {
        for (const UINT id : literalChildren(manager, groups, member, true)) add(id);
        add(member);
    }
    return list;
}

TEST_F(Groups, ListAsTheRuleSaysWhateverTheirShape) {
    unsigned chance = 1;
    const auto pick = [&](unsigned n) {
        return (chance = chance * 1103515245 + 12345) / 65536 % n;
    };
    for (int round = 0; round < 200; ++round) {
        manager_.resetGroup();
        std::map<UINT, std::vector<UINT>> groups;
        for (int i = 0; i < 14; ++i) {
            const UINT gid = G + pick(6);
            const UINT id = pick(2) ? 1 + pick(4) : G + pick(6);
            if (!manager_.addIdToGroup(id, gid)) continue;
            groups[gid].push_back(id);
        }
        for (const auto& [gid, members] : groups) {
            for (const int all : {0, 1}) {
                const Ids expected = literalChildren(manager_, groups, gid, all != 0);
                ASSERT_EQ(manager_.getChildList(gid, all), expected) << round;
            }
        }
    }
}

TEST_F(Groups, MayBeNestedDeeplyAndShared) {
    constexpr UINT kDepth = 100000;
    // From the top down, then from the bottom up.
    EXPECT_EQ(manager_.createGroup(100), 1);
    for (UINT i = 1; i < kDepth; ++i) {
        ASSERT_EQ(manager_.createGroup(100 + i), 1);
        ASSERT_EQ(manager_.addIdToGroup(100 + i, 99 + i), 1);
    }
    manager_.addIdToGroup(1, 99 + kDepth);
    EXPECT_EQ(manager_.getChildList(100, 0), Ids{1});
    EXPECT_EQ(manager_.getChildList(100, 1).entries(), std::size_t{kDepth});
    EXPECT_EQ(manager_.addIdToGroup(100, 99 + kDepth), 0);
    manager_.resetGroup();
    manager_.createGroup(100);
    for (UINT i = 1; i < kDepth; ++i) ASSERT_EQ(manager_.addIdToGroup(99 + i, 100 + i), 1);
    EXPECT_EQ(manager_.addIdToGroup(99 + kDepth, 100), 0);

    // Every group twice in the one above: 2 to the power of 60 ways down.
    manager_.resetGroup();
    manager_.createGroup(100);
    manager_.addIdToGroup(1, 100);
    for (UINT i = 1; i < 60; ++i) {
        manager_.addIdToGroup(99 + i, 100 + i);
        manager_.addIdToGroup(99 + i, 100 + i);
    }
    EXPECT_EQ(manager_.getChildList(159, 0), Ids{1});
    EXPECT_EQ(manager_.getChildList(159, 1).entries(), 60u);
}

}  // namespace
