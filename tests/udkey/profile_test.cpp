#include "toolbox/platform.h"
#include "udkey/keys_fixture.h"

namespace {

using Profile = KeysFixture;

TEST_F(Profile, KeepsChangesForTheNextRun) {
    startWithUsualKeys();
    manager_.setKeyDesc(1, "Tension");
    manager_.setKeyFormat(1, number(9, Left));
    manager_.setKeyDesc(3, "Not saved");
    EXPECT_EQ(manager_.saveKey(1), 1);
    const std::string line = "VOLT=|" + std::string(57, ' ') + "Tension|   9-L";
    EXPECT_NE(folder_.read("keys.ini").find(line), std::string::npos);

    restart();
    EXPECT_EQ(manager_.initUDApp(), 1u);
    EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(9, Left), "Tension"));
    EXPECT_EQ(manager_.getKeyDesc(3), "Name");
    EXPECT_EQ(manager_.resetKey(1), 1);
    EXPECT_EQ(manager_.getKeyDesc(1), "Voltage");
}

TEST_F(Profile, KeepsAllKeysInOneSave) {
    startWithUsualKeys();
    for (UINT id = 1; id <= 4; ++id) manager_.setKeyDesc(id, "new" + std::to_string(id));
    EXPECT_EQ(manager_.saveAllKeys(), 1);
    restart();
    EXPECT_EQ(manager_.initUDApp(), 4u);
    for (UINT id = 1; id <= 4; ++id) EXPECT_EQ(manager_.getKeyDesc(id).view().substr(0, 3), "new");
    EXPECT_EQ(manager_.getHeaderStr(4), "L");
    EXPECT_EQ(manager_.getUnitsStr(4), "mm");
}

TEST_F(Profile, LeavesKeysAsDeclaredUnlessTheirLineIsValid) {
    const std::string longLine(100000, 'x');
    const std::string files[] = {
        "",
        "[UDManager]\nVOLT=\nA=rubbish\nNAME=|x|  12-Q\nLEN=|Longer|  12-R",
        "[Other]\nVOLT=|x|   9-L",
        std::string("[UDManager]\nVOLT=|x\0|   9-L\n\0", 28),
        "[UDManager]\nVOLT=" + longLine + "\nNAME=||||",
        "[UDManager]\nA=|" + longLine + "|   1-   9-L,,,",
        "[[[]]UDManager]\nVOLT=|x|   9-L\n[UDManager",
    };
    for (const std::string& bytes : files) {
        UDManager::destroyStaticVars();
        UDManager::initStaticVars();
        declareUsualKeys();
        // Each under a new name: Windows may remember what a file held.
        manager_.path = folder_.write(std::to_string(&bytes - files) + ".ini", bytes);
        EXPECT_EQ(manager_.initUDApp(), 0u) << bytes.substr(0, 80);
        EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(5), "Voltage"));
        EXPECT_TRUE(manager_.getKeyData(2) == makeKey("A", real(8, 2), "Area"));
    }
}

TEST_F(Profile, ReadsTheStartOfALineOfAnyLength) {
    declareUsualKeys();
    const std::string blanks(3000, ' ');
    folder_.write("keys.ini", "[UDManager]\r\nVOLT=|" + blanks + "Wide|   9-L," + blanks + "\r\n");
    EXPECT_EQ(manager_.initUDApp(), 1u);
    EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(9, Left), "Wide"));
}

TEST_F(Profile, ReportsAFailedSave) {
    declare(1, makeKey("OK", number(5)));
    declare(2, makeKey("", number(5)));
    declare(3, makeKey("X=Y", number(5)));
    manager_.initUDApp();
    EXPECT_EQ(manager_.saveKey(1), 1);
    EXPECT_EQ(manager_.saveKey(2), 0) << "a line needs a name";
    EXPECT_EQ(manager_.saveKey(3), 0) << "the name would not be found again";
    EXPECT_EQ(manager_.saveAllKeys(), 0);
    for (const std::string& path : {folder_.path(), folder_ / "none/keys.ini", std::string()}) {
        manager_.path = path;
        EXPECT_EQ(manager_.saveKey(1), 0) << path;
    }
}

}  // namespace
