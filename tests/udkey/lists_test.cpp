#include <algorithm>

#include "toolbox/platform.h"
#include "udkey/keys_fixture.h"

namespace {

using Selection = KeysFixture;
using Matching = KeysFixture;

TEST_F(Selection, IsWalkedFromNowhereToItsLastId) {
    startWithUsualKeys();
    EXPECT_EQ(manager_.setFirstSelection() + manager_.setNextSelection(), 0);
    EXPECT_EQ(manager_.setSelection(Ids{3, 1, 2}), 1);
    EXPECT_EQ(manager_.getSelectionId(), kNone);
    std::string walked;
    while (manager_.setNextSelection()) walked += std::to_string(manager_.getSelectionId());
    EXPECT_EQ(walked, "312");
    EXPECT_EQ(manager_.getSelectionId(), 2u) << "the cursor stays at the end";
    EXPECT_EQ(manager_.setFirstSelection(), 1);
    EXPECT_EQ(manager_.getSelectionId(), 3u);
    EXPECT_EQ(manager_.setSelectionId(1), 1);
    EXPECT_EQ(manager_.setSelectionId(4), 0);
    EXPECT_EQ(manager_.getSelectionId(), 1u);
}

TEST_F(Selection, TakesOnlyKeysAndEachOnce) {
    startWithUsualKeys();
    manager_.createGroup(50);
    EXPECT_EQ(manager_.addSelectionId(2), 1);
    EXPECT_EQ(manager_.addSelectionId(3), 1);
    EXPECT_EQ(manager_.addSelectionId(2), 0);
    EXPECT_EQ(manager_.addSelectionId(50), 0) << "a group";
    EXPECT_EQ(manager_.getSelectionId(), 3u);
    for (const Ids& refused : {Ids{}, Ids{1, 99}}) {
        manager_.setFirstSelection();
        EXPECT_EQ(manager_.setSelection(refused), 0);
        EXPECT_EQ(manager_.getSelection(), (Ids{2, 3}));
        EXPECT_EQ(manager_.getSelectionId(), kNone) << "the cursor is lost";
    }
    EXPECT_EQ(manager_.setSelection(Ids{4, 4}), 1);
    EXPECT_EQ(manager_.getSelection(), Ids{4});
    EXPECT_EQ(manager_.getSelectionId(), 4u) << "a single id is current at once";
    EXPECT_EQ(manager_.setSelection(99), 0);
    EXPECT_TRUE(manager_.getSelection().isEmpty());
}

TEST_F(Selection, IsEachManagersOwn) {
    startWithUsualKeys();
    manager_.setSelection(1);
    TestManager copy(manager_);
    copy.addSelectionId(2);
    copy.removeMatchingId(1);
    EXPECT_EQ(manager_.getSelection(), Ids{1});
    EXPECT_EQ(manager_.isMatching(1), 1);
    copy = manager_;
    EXPECT_EQ(copy.getSelection(), Ids{1});
    manager_.freeUDApp();
    EXPECT_TRUE(copy.getSelection().isEmpty()) << "nothing without the keys";
    EXPECT_EQ(copy.getSelectionId(), kNone);
}

TEST_F(Selection, GoesToTheClipboardAsAToken) {
    class Refusing final : public toolbox::platform::Clipboard {
      public:
        toolbox::platform::ErrorCode setText(const char*) override { return ERROR_ACCESS_DENIED; }
        std::string text() override { return {}; }
    };
    auto& services = toolbox::platform::current();
    services.clipboard->setText("before");
    startWithUsualKeys();
    EXPECT_EQ(manager_.setSelTokenToClip(), 0);
    EXPECT_EQ(services.clipboard->text(), "before");
    manager_.setSelection(1);
    EXPECT_EQ(manager_.setSelTokenToClip(), 1);
    EXPECT_EQ(services.clipboard->text(), "$VOLT$");
    Refusing refusing;
    toolbox::platform::Replaced<toolbox::platform::Clipboard> guard(services.clipboard, refusing);
    EXPECT_EQ(manager_.setSelTokenToClip(), 0);
}

TEST_F(Selection, EndsWithTheKeysAndEveryManagerMatchesTheNewOnes) {
    startWithUsualKeys();
    toolbox::platform::current().clipboard->setText("before");
    TestManager second(manager_);
    EXPECT_EQ(second.setSelection(1), 1);
    EXPECT_EQ(second.setMatching(Ids{1}), 1);
    restart();
    EXPECT_EQ(second.getSelectionId(), kNone) << "not before the start";
    manager_.initUDApp();
    TestManager third;
    for (TestManager* manager : {&second, &third}) {
        EXPECT_EQ(manager->getSelectionId(), kNone);
        EXPECT_TRUE(manager->getSelection().isEmpty());
        EXPECT_EQ(manager->setSelTokenToClip(), 0);
        EXPECT_EQ(manager->getMatching(), (Ids{1, 2, 3, 4}));
        manager->numbers[1] = 7;
        EXPECT_EQ(manager->getParseString("$VOLT$", 1), "7");
    }
    EXPECT_EQ(toolbox::platform::current().clipboard->text(), "before");
    manager_.freeUDApp();
    declare(8, makeKey("NEW", number(5)));
    manager_.initUDApp();
    EXPECT_EQ(second.getMatching(), Ids{8});
}

TEST_F(Matching, HoldsKeysAndGroupsEachOnce) {
    startWithUsualKeys();
    EXPECT_EQ(manager_.getMatching(), (Ids{1, 2, 3, 4})) << "all keys at the start";
    manager_.addIdToGroup(2, 50);
    EXPECT_EQ(manager_.setMatching(Ids{50, 3, 50}), 1);
    EXPECT_EQ(manager_.isMatching(50), 1);
    EXPECT_EQ(manager_.isMatching(2), 0) << "only through its group";
    EXPECT_EQ(manager_.addMatchingId(3), 0);
    EXPECT_EQ(manager_.addMatchingId(99), 0);
    EXPECT_EQ(manager_.addMatchingId(2), 1);
    EXPECT_EQ(manager_.getMatching(), (Ids{2, 3}));
    EXPECT_EQ(manager_.removeMatchingId(3), 1);
    EXPECT_EQ(manager_.removeMatchingId(3), 0);
    EXPECT_EQ(manager_.setMatching(Ids{}), 0);
    EXPECT_EQ(manager_.getMatching(), Ids{2}) << "an empty list changes nothing";
    EXPECT_EQ(manager_.setMatching(Ids{1, 99}), 0);
    EXPECT_EQ(manager_.getMatching(), (Ids{1, 2, 3, 4})) << "an unknown id resets the set";
    manager_.freeMatchingKey();
    EXPECT_TRUE(manager_.getMatching().isEmpty());
}

TEST_F(Matching, TakesIdsOutAndInAsAPlainListDoes) {
    std::vector<UINT> expected;
    for (UINT id = 0; id < 64; ++id) {
        declare(id * 7919, makeKey(std::to_string(id).c_str(), number(1)));
        expected.push_back(id * 7919);
    }
    manager_.initUDApp();
    unsigned chance = 3;
    for (int round = 0; round < 5000; ++round) {
        const UINT id = (chance = chance * 1103515245 + 12345) / 65536 % 64 * 7919;
        const auto at = std::find(expected.begin(), expected.end(), id);
        const bool there = at != expected.end();
        ASSERT_EQ(manager_.isMatching(id), there);
        if (round % 3 == 0) {
            ASSERT_EQ(manager_.addMatchingId(id), !there);
            if (!there) expected.push_back(id);
        } else {
            ASSERT_EQ(manager_.removeMatchingId(id), there);
            if (there) expected.erase(at);
        }
        if (round % 7 == 0) {
            ASSERT_EQ(manager_.getMatching(), Ids(expected)) << round;
        }
    }
}

}  // namespace
