#include <utility>

#include "udkey/keys_fixture.h"

namespace {

using Registry = KeysFixture;

TEST_F(Registry, StartsOnceAndOnlyWithAProfile) {
    declareUsualKeys();
    const std::string path = std::exchange(manager_.path, "");
    EXPECT_EQ(manager_.initUDApp(), 0u);
    EXPECT_EQ(manager_.freeUDApp(), 0);
    EXPECT_EQ(manager_.setKeyDesc(1, "Tension"), 0);
    manager_.path = path;
    manager_.initUDApp();
    EXPECT_EQ(manager_.initUDApp(), 0u);
    EXPECT_EQ(manager_.createGroup(50), 1);
    EXPECT_EQ(manager_.freeUDApp(), 1);
    EXPECT_EQ(declare(1, makeKey("VOLT", number(5))), 1) << "declared anew";
    manager_.initUDApp();
    EXPECT_EQ(manager_.createGroup(50), 1) << "groups are gone too";
}

TEST_F(Registry, RefusesEverythingWithoutStaticVars) {
    UDManager::destroyStaticVars();
    UDManager::destroyStaticVars();
    EXPECT_EQ(declare(1, makeKey("VOLT", number(5))), 0);
    EXPECT_EQ(manager_.saveAllKeys(), 0);
    EXPECT_EQ(manager_.createGroup(1), 0);
    EXPECT_EQ(manager_.getParseString("$VOLT$", 0), "$VOLT$");
    EXPECT_EQ(UDManager::getKeywordIterator()(), 0);
}

TEST_F(Registry, IteratesInTheOrderOfDeclaration) {
    const auto declareAll = [this](std::initializer_list<UINT> ids) {
        for (const UINT id : ids) declare(id, makeKey(std::to_string(id).c_str(), number(1)));
    };
    declareAll({7, 3, 900});
    std::string seen;
    auto it = UDManager::getKeywordIterator();
    while (it()) seen += std::to_string(it.key()) + "=" + it.value().getKeyStr().str() + " ";
    EXPECT_EQ(seen, "7=7 3=3 900=900 ");
    manager_.initUDApp();
    manager_.freeUDApp();
    for (int twice = 0; twice < 2; ++twice) {  // first without keys, then with others
        EXPECT_EQ(it(), 0);
        EXPECT_EQ(it.key(), kNone);
        declareAll({10, 11});
    }
}

}  // namespace
