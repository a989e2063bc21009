// The model of the list of keys, with ten thousand of them where that matters.
#include "dialog/keys/key_list_model.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <numeric>
#include <string>
#include <unordered_set>
#include <vector>

#include "toolbox/keys.h"

namespace {

using namespace toolbox::keys;

/// Keys 1 to 6, of which 3 and 5 are chosen, 5 first.
class KeyModel : public ::testing::Test {
  protected:
    KeyModel() {
        model_.setKeys({1, 2, 3, 4, 5, 6});
        model_.setChosen({5, 77, 3, 5});
        model_.arrange();
    }
    Ids filtered(const char* typed) {
        model_.setFilter(typed);
        model_.arrange();
        return model_.ids();
    }
    void choose(const Ids& ids) {
        model_.setChosen(ids);
        model_.arrange();
    }

    std::map<UINT, KeyTexts> texts_{{1, {"VOLT", "Tension \340 vide"}},
                                    {2, {"FREQ", "Fr\351quence"}},
                                    {3, {"EFF", "Efficacit\351 du c\234ur"}},
                                    {4, {"TEMP", "TEMP\311RATURE"}},
                                    {5, {"VOLUME", "Volume"}},
                                    {6, {"MASS", "Gro\337e"}}};
    KeyListModel model_{[this](UINT id) { return texts_.at(id); }};
};

TEST_F(KeyModel, HasTheChosenKeysFirst) {
    EXPECT_EQ(model_.ids(), (Ids{5, 3, 1, 2, 4, 6}));
    EXPECT_EQ(model_.chosen(), (Ids{5, 3}));
    EXPECT_EQ(model_.placeOf(3), 2u);
    EXPECT_EQ(model_.placeOf(1), 0u);
    EXPECT_EQ(model_.rowOf(4), 4u);
    EXPECT_EQ(model_.row(0), 5u);
}

TEST_F(KeyModel, IsFilteredByWordsWithoutCaseAndAccents) {
    struct Case {
        const char* typed;
        Ids ids;
    };
    const Case cases[] = {
        {"", {5, 3, 1, 2, 4, 6}},
        {"  \240", {5, 3, 1, 2, 4, 6}},
        {"vol", {5, 1}},
        {"FR\311QUENCE", {2}},
        {"temperature", {4}},
        {"vide  volt", {1}},
        {"coeur", {3}},
        {"grosse", {6}},
        {"volttension", {}},  // not across what is between string and description
        {"$", {}},
    };
    for (const Case& c : cases) EXPECT_EQ(filtered(c.typed), c.ids) << c.typed;
}

TEST_F(KeyModel, ShowsOneGroup) {
    model_.setGroup(std::unordered_set<UINT>{1, 3, 99});
    model_.arrange();
    EXPECT_EQ(model_.ids(), (Ids{3, 1}));
    EXPECT_EQ(filtered("vide"), (Ids{1}));
    model_.setGroup(std::nullopt);
    EXPECT_EQ(filtered(""), (Ids{5, 3, 1, 2, 4, 6}));
}

TEST_F(KeyModel, FindsTheNextKeyThatBeginsWithWhatIsTyped) {
    EXPECT_EQ(model_.find("vol", 0), 0u);
    EXPECT_EQ(model_.find("VOL", 1), 2u);
    EXPECT_EQ(model_.find("vol", 3), 0u);
    EXPECT_EQ(model_.find("tension", 0), std::nullopt);
    EXPECT_EQ(model_.find("volt\ntension", 0), std::nullopt);
    model_.setKeys({});
    EXPECT_EQ(model_.find("v", 0), std::nullopt);
}

TEST_F(KeyModel, KeepsTheSelectionByKey) {
    model_.select({4, 1, 1, 99});
    EXPECT_EQ(model_.selection(), (Ids{1, 4}));
    EXPECT_EQ(filtered("temp"), (Ids{4}));
    EXPECT_EQ(model_.selection(), (Ids{4}));
    texts_[4].key = "HEAT";
    model_.setKeys({4, 3});
    EXPECT_EQ(filtered("heat"), (Ids{4})) << "by its new text";
    EXPECT_EQ(filtered(""), (Ids{3, 4})) << "3 is still chosen";
    EXPECT_EQ(model_.selection(), (Ids{4}));
    EXPECT_FALSE(model_.isSelected(1)) << "it is no key any more";
}

TEST_F(KeyModel, ShiftsTheSelectedKeysAmongTheChosenOnes) {
    struct Case {
        Ids selected;
        int by;
        bool oneAndFourOnly;
        Ids order;  ///< empty: no change
    };
    const Case cases[] = {
        {{2}, -1, false, {2, 1, 3, 4}},
        {{2}, 1, false, {1, 3, 2, 4}},
        {{1}, -1, false, {}},
        {{1, 2}, -1, false, {}},
        {{1, 3}, -1, false, {1, 3, 2, 4}},
        {{2, 4}, 1, false, {1, 3, 2, 4}},
        {{2, 3}, 1, false, {1, 4, 2, 3}},
        {{5, 6}, -1, false, {}},        // not chosen
        {{4}, -1, true, {4, 2, 3, 1}},  // 2 and 3 stay where they are
        {{}, 1, false, {}},
    };
    for (const Case& c : cases) {
        choose({1, 2, 3, 4});
        if (c.oneAndFourOnly) model_.setGroup(std::unordered_set<UINT>{1, 4});
        model_.arrange();
        model_.select(c.selected);
        EXPECT_EQ(model_.shifted(c.by).value_or(Ids()), c.order)
            << ::testing::PrintToString(c.selected) << c.by;
        model_.setGroup(std::nullopt);
    }
}

TEST_F(KeyModel, MovesTheSelectedKeysInFrontOfARow) {
    struct Case {
        Ids selected;
        std::size_t row;
        Ids order;  ///< empty: no change
    };
    const Case cases[] = {
        {{4}, 0, {4, 1, 2, 3}},
        {{1}, 2, {2, 1, 3, 4}},
        {{1}, 1, {}},
        {{1}, 0, {}},
        {{1, 3}, 4, {2, 4, 1, 3}},
        {{2, 3}, 2, {}},
        {{1}, 6, {2, 3, 4, 1}},
        {{5}, 1, {1, 5, 2, 3, 4}},
        {{5}, 4, {1, 2, 3, 4, 5}},
        {{5}, 5, {}},
        {{5, 1}, 5, {2, 3, 4, 1}},
        {{5, 6}, 0, {5, 6, 1, 2, 3, 4}},
        {{1, 2, 3, 4}, 2, {}},
        {{}, 0, {}},
        {{4}, 99, {}},
    };
    for (const Case& c : cases) {
        choose({1, 2, 3, 4});
        model_.select(c.selected);
        EXPECT_EQ(model_.movedBefore(c.row).value_or(Ids()), c.order)
            << ::testing::PrintToString(c.selected) << " before " << c.row;
    }
    choose({});
    model_.select({6});
    EXPECT_EQ(model_.movedBefore(0), (Ids{6})) << "the first one that is chosen";
}

TEST_F(KeyModel, ChoosesKeysAndLeavesThemOut) {
    model_.select({6, 1, 3});
    EXPECT_EQ(model_.toggled(true), (Ids{5, 3, 1, 6}));
    EXPECT_EQ(model_.toggled(false), (Ids{5}));
    model_.select({3});
    EXPECT_EQ(model_.toggled(true), std::nullopt);
}

TEST(KeyModelOfTenThousand, IsArrangedAndOrderedAtOnce) {
    using Clock = std::chrono::steady_clock;
    constexpr UINT kKeys = 10000;
    Ids all(kKeys);
    std::iota(all.begin(), all.end(), 0u);
    const auto begin = Clock::now();
    KeyListModel model([](UINT id) {
        return KeyTexts{"KEY", RWCString("Quantit\351 mesur\351e " + std::to_string(id))};
    });
    model.setKeys(all);
    model.setChosen(all);
    model.arrange();
    model.select(all);
    EXPECT_EQ(model.selection().size(), kKeys);
    EXPECT_EQ(model.toggled(false), Ids());
    EXPECT_EQ(model.movedBefore(kKeys / 2), std::nullopt);
    model.setFilter("mesuree 999");
    model.arrange();
    EXPECT_EQ(model.rowCount(), 19u);  // 999, 1999 to 9999, 9990 to 9998
    model.select({9999, 9990});
    EXPECT_EQ(model.movedBefore(0)->front(), 0u) << "keys out of sight stay where they are";
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(2)) << "takes milliseconds";
}

struct CountingWatcher : toolbox::KeyWatcher {
    int calls = 0;
    std::unique_ptr<CountingWatcher>* victim = nullptr;
    void keysChanged() override {
        ++calls;
        if (victim) victim->reset();
    }
};

struct Manager : UDManager {
    RWCString getProfilePath() override { return "no such folder/keys.ini"; }
    int getKeyValue(UINT, FormatedValue*) override { return 0; }
};

TEST(KeyWatcher, HearsOfEveryChangeThatIsOne) {
    UDManager::initStaticVars();
    CountingWatcher watcher;
    auto other = std::make_unique<CountingWatcher>();
    auto manager = std::make_unique<Manager>();
    UDKeyData volt("VOLT");
    volt.setFormat(NumberFormat());
    manager->addKey(1, volt);
    EXPECT_EQ(watcher.calls, 1);
    manager->addKey(1, volt);
    EXPECT_EQ(watcher.calls, 1) << "refused";
    manager->initUDApp();
    manager->setKeyDesc(1, "Voltage");
    manager->setKeyFormat(1, NumberFormat());
    manager->setKeyFormat(1, RealFormat());
    manager->resetKey(1);
    manager->addIdToGroup(1, 10);
    manager->setSelection(1);
    EXPECT_EQ(watcher.calls, 7);
    EXPECT_EQ(other->calls, 7);
    EXPECT_EQ(manager->getSelection().entries(), 1u);

    watcher.victim = &other;
    manager->deleteGroup(10);
    EXPECT_EQ(other, nullptr);
    UDManager::destroyStaticVars();
    EXPECT_EQ(watcher.calls, 9);
}

}  // namespace
