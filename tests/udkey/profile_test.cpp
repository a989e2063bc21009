#include "udkey/keys_fixture.h"

namespace {

using Profile = KeysFixture;

TEST_F(Profile, KeepsChangesForTheNextRun) {
    startWithUsualKeys();
    manager_.setKeyDesc(1, "Tension");
    manager_.setKeyFormat(1, number(9, Left));
    EXPECT_EQ(manager_.saveKey(1), 1);
    const std::string line = "VOLT=|" + std::string(57, ' ') + "Tension|   9-L";
    EXPECT_NE(folder_.read("keys.ini").find(line), std::string::npos);

    restart();
    EXPECT_EQ(manager_.initUDApp(), 1u);
    EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(9, Left), "Tension"));

    manager_.setKeyDesc(4, "new");
    EXPECT_EQ(manager_.saveAllKeys(), 1);
    restart();
    EXPECT_EQ(manager_.initUDApp(), 4u);
    EXPECT_EQ(manager_.getKeyDesc(4), "new");
}

TEST_F(Profile, LeavesKeysAsDeclaredUnlessTheirLineIsValid) {
    const std::string longLine(100000, 'x');
    const std::string files[] = {
        "[UDManager]\nVOLT=\nA=rubbish\nNAME=|x|  12-Q\nLEN=|Longer|  12-R",
        std::string("[UDManager]\nVOLT=|x\0|   9-L\n\0", 28),
        "[UDManager]\nVOLT=" + longLine + "\nNAME=||||\nA=|" + longLine + "|   1-   9-L,,,",
        "[[[]]UDManager]\nVOLT=|x|   9-L\n[UDManager",
    };
    for (const std::string& bytes : files) {
        restart();
        // Each under a new name: Windows may remember what a file held.
        manager_.path = folder_.write(std::to_string(&bytes - files) + ".ini", bytes);
        EXPECT_EQ(manager_.initUDApp(), 0u) << bytes.substr(0, 80);
        EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(5), "Voltage"));
        EXPECT_TRUE(manager_.getKeyData(2) == makeKey("A", real(8, 2), "Area"));
    }
    restart();
    const std::string blanks(3000, ' ');
    manager_.path =
        folder_.write("long", "[UDManager]\r\nVOLT=|" + blanks + "Wide|   9-L," + blanks + "\r\n");
    EXPECT_EQ(manager_.initUDApp(), 1u);
    EXPECT_TRUE(manager_.getKeyData(1) == makeKey("VOLT", number(9, Left), "Wide"));
}

TEST_F(Profile, SavesWhatCanBeSavedAndTellsTheRest) {
    const RWCString names[] = {"", "OK", "A=B", "last", RWCString("OK\0X", 4)};
    for (UINT id = 0; id < std::size(names); ++id) {
        UDKeyData data(names[id]);
        data.setFormat(number(5));
        declare(id, data);
    }
    const Ids refused{0, 2, 4};
    EXPECT_EQ(manager_.getUnsavableKeys(), refused);
    manager_.initUDApp();
    EXPECT_EQ(manager_.saveAllKeys(), 0);
    const std::string file = folder_.read("keys.ini");
    EXPECT_NE(file.find("OK=|"), std::string::npos);
    EXPECT_NE(file.find("last=|"), std::string::npos);
    for (const UINT id : refused) EXPECT_EQ(manager_.saveKey(id), 0) << id;
}

}  // namespace
