#include <gtest/gtest.h>

#include <utility>

#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "toolbox/files.h"

namespace {

TEST(BackupName, TakesThePlaceOfAShortExtension) {
    for (const auto& [name, backup] : {std::pair{"plan.dat", "plan.bak"},
                                       {"a.b", "a.bak"},
                                       {"a.", "a.bak"},
                                       {"x", "x.bak"},
                                       {"plan.data", "plan.data.bak"},
                                       {".dat", ".bak"},
                                       {"", ".bak"},
                                       {"dir.v2\\file", "dir.v2\\file.bak"},
                                       {"d.v\\f", "d.bak"}})
        EXPECT_EQ(APIFile::backupName(name), backup);
}

class Backup : public testing::Test {
  protected:
    unsigned long make() { return APIFile::createBak((folder / "plan.dat").c_str()); }

    TempFolder folder;
    const std::vector<std::string> both{"plan.bak", "plan.dat"};
};

TEST_F(Backup, ReplacesAnOlderOne) {
    folder.write("plan.bak", "older and longer");
    folder.write("plan.dat", "bytes");
    // Left by a backup that was killed, with the attribute of its source.
    const std::string stale = folder.write("plan.bak.~new", "half");
    toolbox::platform::current().files->setAttributes(stale.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(make(), 0ul);
    EXPECT_EQ(folder.read("plan.bak"), "bytes");
    EXPECT_EQ(folder.read("plan.dat"), "bytes");
    EXPECT_EQ(folder.names(), both);
}

TEST_F(Backup, AFailedOneLeavesTheOlderOne) {
    folder.write("plan.bak", "older");
    EXPECT_EQ(make(), ERROR_FILE_NOT_FOUND);
    folder.write("plan.dat", "bytes");
    FaultyFiles faults;
    faults.fail(FileCall::copy, 1, ERROR_DISK_FULL);
    EXPECT_EQ(make(), ERROR_DISK_FULL);
    EXPECT_EQ(folder.names(), both);
    faults.fail(FileCall::replace, 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(make(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder.names(), both);
    EXPECT_EQ(folder.read("plan.bak"), "older");
}

TEST_F(Backup, ABackupHasNone) {
    const std::string name = folder.write("plan.bak", "bytes");
    EXPECT_EQ(APIFile::createBak(name.c_str()), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(folder.read("plan.bak"), "bytes");
}

TEST(IsReadOnly, LooksAtTheFileAndTriesItsFolder) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    const std::string root = folder.path() + '\\';
    folder.write("file", "x");
    toolbox::platform::current().files->setAttributes(folder.write("locked", "x").c_str(),
                                                      FILE_ATTRIBUTE_READONLY);
    const std::pair<std::string, int> cases[] = {{root + "file", 0}, {folder.path() + "/file", 0},
                                                 {root + "new", 0},  {root + "locked", 1},
                                                 {root + "sub", 0},  {root + "none\\new", 1}};
    for (const auto& [name, result] : cases) EXPECT_EQ(APIFile::isReadOnly(name.c_str()), result);

    // Without a separator the name is taken for the folder.
    char before[260];
    ASSERT_EQ(GetCurDir(before), 1);
    ASSERT_EQ(SelectDir(folder.path().c_str(), nullptr), 1);
    EXPECT_EQ(APIFile::isReadOnly("file"), 1);
    EXPECT_EQ(APIFile::isReadOnly("new"), 1);
    EXPECT_EQ(APIFile::isReadOnly("sub"), 0);
    ASSERT_EQ(SelectDir(before, nullptr), 1);

    EXPECT_EQ(folder.names(), (std::vector<std::string>{"file", "locked", "sub"}));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "sub"));
}

}  // namespace
