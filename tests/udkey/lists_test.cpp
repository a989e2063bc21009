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

}  // namespace
