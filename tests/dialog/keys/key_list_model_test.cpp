// The model of the list of keys, and who watches keys.
#include "dialog/keys/key_list_model.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
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

TEST_F(KeyModel, HasTheChosenKeysFirstAndIsFilteredByWordsWithoutCaseAndAccents) {
    const std::pair<const char*, Ids>
        cases[] = {{"", {5, 3, 1, 2, 4, 6}}, {"vol", {5, 1}}, {"FR\311QUENCE", {2}},
                   {"vide  volt", {1}},      {"coeur", {3}},  {"grosse", {6}},
                   {"volttension", {}}};  // not across what is between string and description
    for (const auto& [typed, ids] : cases) EXPECT_EQ(filtered(typed), ids) << typed;
    EXPECT_EQ(model_.chosen(), (Ids{5, 3}));
    filtered("");
    model_.setGroup(std::unordered_set<UINT>{1, 3, 99});
    model_.arrange();
    EXPECT_EQ(model_.ids(), (Ids{3, 1}));
}

TEST_F(KeyModel, KeepsTheSelectionByKey) {
    model_.select({4, 1, 1, 99});
    EXPECT_EQ(model_.selection(), (Ids{1, 4}));
    EXPECT_EQ(filtered("temp"), (Ids{4}));
    texts_[4].key = "HEAT";
    model_.setKeys({4, 3});
    EXPECT_EQ(filtered("heat"), (Ids{4})) << "by its new text";
    EXPECT_EQ(filtered(""), (Ids{3, 4})) << "3 is still chosen";
    EXPECT_EQ(model_.selection(), (Ids{4}));
    EXPECT_FALSE(model_.isSelected(1)) << "it is no key any more";
    model_.select({4, 3});
    EXPECT_EQ(model_.toggled(true), (Ids{3, 4}));
    EXPECT_EQ(model_.toggled(false), Ids());
}

TEST_F(KeyModel, ShiftsTheSelectedKeysAmongTheChosenOnes) {
    const struct {
        Ids selected;
        int by;
        Ids order;  ///< empty: no change
    } cases[] = {
        {{2}, 1, {1, 3, 2, 4}},
        {{1, 2}, -1, {}},
        {{2, 4}, 1, {1, 3, 2, 4}},
        {{2, 3}, 1, {1, 4, 2, 3}},
        {{5, 6}, -1, {}}  // not chosen
    };
    choose({1, 2, 3, 4});
    for (const auto& c : cases) {
        model_.select(c.selected);
        EXPECT_EQ(model_.shifted(c.by).value_or(Ids()), c.order)
            << ::testing::PrintToString(c.selected) << c.by;
    }
    model_.setGroup(std::unordered_set<UINT>{1, 4});
    model_.arrange();
    model_.select({4});
    EXPECT_EQ(model_.shifted(-1), (Ids{4, 2, 3, 1})) << "2 and 3 stay where they are";
}

TEST_F(KeyModel, MovesTheSelectedKeysInFrontOfARow) {
    const struct {
        Ids selected;
        std::size_t row;
        Ids order;  ///< empty: no change
    } cases[] = {{{4}, 0, {4, 1, 2, 3}},
                 {{1}, 1, {}},
                 {{1, 3}, 4, {2, 4, 1, 3}},
                 {{1}, 6, {2, 3, 4, 1}},
                 {{5}, 1, {1, 5, 2, 3, 4}},
                 {{5}, 5, {}},
                 {{5, 1}, 5, {2, 3, 4, 1}},
                 {{1, 2, 3, 4}, 2, {}},
                 {{4}, 99, {}}};
    for (const auto& c : cases) {
        choose({1, 2, 3, 4});
        model_.select(c.selected);
        EXPECT_EQ(model_.movedBefore(c.row).value_or(Ids()), c.order)
            << ::testing::PrintToString(c.selected) << " before " << c.row;
    }
    choose({});
    model_.select({6});
    EXPECT_EQ(model_.movedBefore(0), (Ids{6})) << "the first one that is chosen";
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
    manager->addKey(1, volt);
    EXPECT_EQ(watcher.calls, 1) << "the second is refused";
    manager->initUDApp();
    manager->setKeyDesc(1, "Voltage");
    manager->setKeyFormat(1, NumberFormat());
    manager->setKeyFormat(1, RealFormat());
    manager->resetKey(1);
    manager->addIdToGroup(1, 10);
    manager->setSelection(1);
    EXPECT_EQ(watcher.calls, 7);
    EXPECT_EQ(other->calls, 7);
    watcher.victim = &other;
    manager->deleteGroup(10);
    EXPECT_EQ(other, nullptr);
    UDManager::destroyStaticVars();
    EXPECT_EQ(watcher.calls, 9);
}

}  // namespace
