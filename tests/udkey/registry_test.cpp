#include <utility>

#include "udkey/keys_fixture.h"

namespace {

using Registry = KeysFixture;

TEST_F(Registry, RefusesKeysThatItCannotHold) {
    EXPECT_EQ(declare(1, makeKey("VOLT", number(5))), 1);
    EXPECT_EQ(declare(1, makeKey("OTHER", number(5))), 0) << "same id";
    EXPECT_EQ(declare(2, makeKey("VOLT", number(5))), 0) << "same key string";
    EXPECT_EQ(manager_.getId("VOLT"), kNone) << "not before the start";
    manager_.initUDApp();
    EXPECT_EQ(declare(3, makeKey("LATE", number(5))), 0);
}

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

TEST_F(Registry, ChangesAndResetsTheCurrentRecord) {
    startWithUsualKeys();
    EXPECT_EQ(manager_.setKeyDesc(1, "Tension"), 1);
    EXPECT_EQ(manager_.setKeyFormat(1, number(9)), 1);
    EXPECT_EQ(manager_.setKeyFormat(1, real(9, 1)), 0) << "another kind";
    EXPECT_EQ(manager_.setKeyFormat(1, NumberFormatedValue()), 0) << "another class";
    EXPECT_TRUE(manager_.getKeyData("VOLT") == makeKey("VOLT", number(9), "Tension"));
    EXPECT_EQ(manager_.resetKey(1), 1);
    EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(5), "Voltage"));
    EXPECT_TRUE(manager_.getKeyData(99) == UDKeyData());
    EXPECT_EQ(manager_.saveKey(99), 0);

    NumberFormat other;
    EXPECT_EQ(manager_.getKeyFormat(2, other), 1) << "also when the kind is another";
    EXPECT_EQ(other.getWidth(), 0);
}

TEST_F(Registry, PrintsValuesUnderTheKeysFormats) {
    startWithUsualKeys();
    manager_.values[1] = "230";
    manager_.values[2] = "1.5";
    manager_.values[3] = "ab";
    const char* texts[] = {"", "  230", "    1.50", "ab    ", ""};  // the application has no fourth
    for (UINT id = 0; id < 5; ++id) EXPECT_EQ(manager_.getFormatedString(id, 0), texts[id]);
    NumberFormatedValue own;
    own = 7;
    EXPECT_EQ(manager_.getFormatedString(2, own, 0), "") << "another kind";
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
