#include <gtest/gtest.h>

#include <chrono>
#include <utility>

#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "toolbox/files.h"

using namespace std::chrono_literals;

namespace {

TEST(BackupName, TakesThePlaceOfAShortExtension) {
    for (const auto& [name, backup] : {std::pair{"plan.dat", "plan.bak"},
                                       {"a.", "a.bak"},
                                       {"plan.data", "plan.data.bak"},
                                       {".dat", ".bak"},
                                       {"", ".bak"},
                                       {"d.v\\f", "d.bak"}})
        EXPECT_EQ(APIFile::backupName(name), backup);
}

class Backup : public testing::Test {
  protected:
    unsigned long make() { return APIFile::createBak((folder / "plan.dat").c_str()); }

    TempFolder folder;
    const std::vector<std::string> both{"plan.bak", "plan.dat"};
};

TEST_F(Backup, ReplacesAnOlderOneAndWhatKilledOnesLeft) {
    folder.write("plan.bak", "older and longer");
    folder.write("plan.dat", "bytes");
    const std::string stale = folder.write("plan.bak.~save-0123abcd", "half");
    folder.write("plan.bak.~save-00000000", "");
    toolbox::platform::current().files->setAttributes(stale.c_str(), FILE_ATTRIBUTE_READONLY);
    const auto written = std::filesystem::last_write_time(folder / "plan.dat") - 1h;
    std::filesystem::last_write_time(folder / "plan.dat", written);
    EXPECT_EQ(make(), 0ul);
    EXPECT_EQ(folder.read("plan.bak"), "bytes");
    EXPECT_EQ(folder.read("plan.dat"), "bytes");
    EXPECT_EQ(folder.names(), both);
    EXPECT_EQ(std::filesystem::last_write_time(folder / "plan.bak"), written);
}

TEST_F(Backup, LeavesAloneWhatIsNoLeftover) {
    folder.write("plan.dat", "bytes");
    const std::string busy = "plan.bak.~save-ffffffff";
    const std::string kept[] = {"plan.bak.~save-0123abc", "plan.bak.~save-0123abcx",
                                "plan.bak.saved-0123abcd", busy};
    for (const std::string& name : kept) folder.write(name, "theirs");
    APIFile writer((folder / busy).c_str(), GENERIC_WRITE, 0, OPEN_EXISTING);
    EXPECT_EQ(make(), 0ul);
    for (const std::string& name : kept) EXPECT_TRUE(ExistsFile((folder / name).c_str())) << name;
}

TEST_F(Backup, AFailedOneLeavesTheOlderOne) {
    folder.write("plan.bak", "older");
    EXPECT_EQ(make(), ERROR_FILE_NOT_FOUND);
    folder.write("plan.dat", "bytes");
    for (const FileCall call : {FileCall::createLike, FileCall::read, FileCall::write}) {
        FaultyFiles faults;
        faults.fail(call, 1, ERROR_DISK_FULL);
        EXPECT_EQ(make(), ERROR_DISK_FULL);
        EXPECT_EQ(folder.names(), both);
    }
    FaultyFiles faults;
    faults.shorten(FileCall::write, 1, 3);
    EXPECT_EQ(make(), ERROR_DISK_FULL);
    faults.fail(FileCall::replace, 1, ERROR_WRITE_FAULT);
    EXPECT_EQ(make(), ERROR_WRITE_FAULT);
    EXPECT_EQ(folder.names(), both);
    EXPECT_EQ(folder.read("plan.bak"), "older");
    faults.fail(FileCall::createLike, 1, ERROR_FILE_EXISTS);  // another name does
    faults.fail(FileCall::replace, 1, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(make(), 0ul);
    EXPECT_EQ(APIFile::createBak((folder / "plan.bak").c_str()), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(folder.read("plan.bak"), "bytes");
}

TEST(IsReadOnly, LooksAtTheFileAndTriesItsFolder) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    const std::string root = folder.path() + '\\';
    folder.write("file", "x");
    folder.write("tmp123yz.$$$", "theirs");  // it has the name of the probe
    toolbox::platform::current().files->setAttributes(folder.write("locked", "x").c_str(),
                                                      FILE_ATTRIBUTE_READONLY);
    const std::pair<std::string, int> cases[] = {{root + "file", 0},
                                                 {folder.path() + "/new", 0},
                                                 {root + "locked", 1},
                                                 {root + "sub", 0},
                                                 {root + "none\\new", 1}};
    for (const auto& [name, result] : cases) EXPECT_EQ(APIFile::isReadOnly(name.c_str()), result);
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"file", "locked", "sub", "tmp123yz.$$$"}));
    EXPECT_EQ(folder.read("tmp123yz.$$$"), "theirs");
}

}  // namespace
