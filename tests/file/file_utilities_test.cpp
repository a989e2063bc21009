#include <gtest/gtest.h>

#include <cstring>

#include "support/faulty_files.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"
#include "toolbox/files.h"

namespace {

TEST(SepDirFile, SplitsAtTheLastSeparator) {
    const char* cases[][3] = {{"c:\\data\\plan.dat", "c:\\data", "plan.dat"},
                              {"data/sub\\plan.dat", "data/sub", "plan.dat"},
                              {"data\\sub/plan.dat", "data\\sub", "plan.dat"},
                              {"\\plan.dat", "", "plan.dat"},
                              {"data\\", "data", ""},
                              {"plan.dat", "", "plan.dat"}};
    for (const auto& [whole, folder, name] : cases) {
        char path[32];
        char file[32];
        SepDirFile(std::strcpy(path, whole), path, file);
        EXPECT_STREQ(path, folder);
        EXPECT_STREQ(file, name);
    }
}

TEST(GetFileSize, AddsTheWordsOfAllThatMatch) {
    TempFolder folder;
    folder.write("a.dat", "12345");
    folder.write("b.dat", "123");
    folder.write("other", "1");
    const std::string all = folder.path() + "\\*.dat";
    // The high word counts as a number of its own.
    std::filesystem::resize_file(folder / "a.dat", 0x200000007ull);
    EXPECT_EQ(GetFileSize(all.c_str()), 2ul + 7 + 3);
    EXPECT_EQ(GetFileSize((folder / "z*").c_str()), 0ul);
}

TEST(KillFile, DeletesByBareNameInTheCurrentFolder) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    folder.write("sub/a.tmp", "");
    folder.write("sub/only.tmp", "");
    folder.write("a.tmp", "");
    folder.write("b.tmp", "");
    char before[260];
    ASSERT_EQ(GetCurDir(before), 1);
    ASSERT_EQ(SelectDir(folder.path().c_str(), nullptr), 1);
    toolbox::testing::RecordingPrompt prompt;
    KillFile("sub\\*.tmp");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"b.tmp", "sub"}));
    KillFile("*.tmp");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"sub"}));
    EXPECT_TRUE(ExistsFile("sub\\a.tmp") && ExistsFile("sub/only.tmp"));
    EXPECT_EQ(prompt.cursor, "wait arrow wait arrow ");
    ASSERT_EQ(SelectDir(before, nullptr), 1);
}

TEST(FileCopy, ExpandsToANewFileWithTheAttributesOrLeavesNone) {
    TempFolder folder;
    const auto copy = [&](const char* from) {
        return FileCopy((folder / from).c_str(), (folder / "to").c_str());
    };
    const std::string packed("SZDD\x88\xF0'3A\0\x05\0\0\0\x03xy\xF0\xF0", 19);
    const std::string from = folder.write("from", packed);
    folder.write("cut", packed.substr(0, 18));
    EXPECT_EQ(copy("cut"), -3);
    EXPECT_EQ(copy("none"), -1);
    EXPECT_EQ(folder.read("to"), "<none>");
    auto& files = *toolbox::platform::current().files;
    files.setAttributes(from.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(copy("from"), 5);
    EXPECT_EQ(folder.read("to"), "xyxyx");
    std::uint32_t attributes = 0;
    EXPECT_EQ(files.attributes((folder / "to").c_str(), attributes), 0u);
    EXPECT_TRUE(attributes & FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(copy("from"), 0);  // an existing file is never touched
    EXPECT_EQ(folder.read("to"), "xyxyx");
}

TEST(GetDiskFree, WrapsAt4GiB) {
    FaultyFiles files;
    files.disk = {8, 512, 0xFFFFF};
    EXPECT_EQ(GetDiskFree('C'), 0xFFFFF000ul);
    files.disk = {8, 512, 0x100001};
    EXPECT_EQ(GetDiskFree('C'), 0x1000ul);
    files.disk = {};
    EXPECT_EQ(GetDiskFree('1'), 0ul);
}

}  // namespace
