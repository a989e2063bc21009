#include <algorithm>

#include "toolbox/platform.h"
#include "udkey/keys_fixture.h"

namespace {

class Selection : public KeysFixture {
  protected:
    Selection() { startWithUsualKeys(); }
};
using Matching = Selection;

TEST_F(Selection, IsWalkedFromNowhereToItsLastId) {
    EXPECT_EQ(manager_.setNextSelection(), 0);
    EXPECT_EQ(manager_.setSelection(Ids{3, 1, 2}), 1);
    EXPECT_EQ(manager_.getSelectionId(), kNone);
    std::string walked;
    while (manager_.setNextSelection()) walked += std::to_string(manager_.getSelectionId());
    EXPECT_EQ(walked, "312");
    EXPECT_EQ(manager_.getSelectionId(), 2u) << "the cursor stays at the end";
    EXPECT_EQ(manager_.setFirstSelection(), 1);
    EXPECT_EQ(manager_.setSelectionId(4), 0);
}

TEST_F(Selection, GoesToTheClipboardAsAToken) {
    auto& clipboard = toolbox::platform::current().clipboard;
    clipboard->setText("before");
    EXPECT_EQ(manager_.setSelTokenToClip(), 0);
    EXPECT_EQ(clipboard->text(), "before");
    manager_.setSelection(1);
    EXPECT_EQ(manager_.setSelTokenToClip(), 1);
    EXPECT_EQ(clipboard->text(), "$VOLT$");
}

TEST_F(Selection, EndsWithTheKeysAndEveryManagerMatchesTheNewOnes) {
    TestManager second(manager_);
    EXPECT_EQ(second.setSelection(1), 1);
    EXPECT_EQ(second.setMatching(Ids{1}), 1);
    EXPECT_TRUE(manager_.getSelection().isEmpty()) << "each has its own";
    EXPECT_EQ(manager_.isMatching(2), 1);
    restart();
    EXPECT_EQ(second.getSelectionId(), kNone) << "not before the start";
    manager_.initUDApp();
    TestManager third;
    for (TestManager* manager : {&second, &third}) {
        EXPECT_TRUE(manager->getSelection().isEmpty());
        EXPECT_EQ(manager->getMatching(), (Ids{1, 2, 3, 4}));
        manager->values[1] = "7";
        EXPECT_EQ(manager->getParseString("$VOLT$", 1), "7");
    }
    manager_.freeUDApp();
    declare(8, makeKey("NEW", number(5)));
    manager_.initUDApp();
    EXPECT_EQ(second.getMatching(), Ids{8});
}

TEST_F(Matching, TakesIdsOutAndInAsAPlainListDoes) {
    manager_.freeUDApp();
    std::vector<UINT> expected;
    for (UINT id = 0; id < 64; ++id) {
        declare(id * 7919, makeKey(std::to_string(id).c_str(), number(1)));
        expected.push_back(id * 7919);
    }
    manager_.initUDApp();
    for (int round = 0; round < 5000; ++round) {
        const UINT id = pick(64) * 7919;
        const bool there = std::ranges::count(expected, id) != 0;
        ASSERT_EQ(manager_.isMatching(id), there);
        if (round % 3 == 0) {
            ASSERT_EQ(manager_.addMatchingId(id), !there);
            if (!there) expected.push_back(id);
        } else {
            ASSERT_EQ(manager_.removeMatchingId(id), there);
            std::erase(expected, id);
        }
        ASSERT_EQ(manager_.getMatching(), Ids(expected)) << round;
    }
}

}  // namespace
