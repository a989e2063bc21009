#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "support/text_fakes.h"
#include "toolbox/files.h"

namespace {

TEST(KillFile, DeletesByBareNameInTheCurrentFolder) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    folder.write("sub/a.tmp", "");
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
    EXPECT_TRUE(ExistsFile("sub\\a.tmp"));
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
    EXPECT_EQ(folder.read("to"), "<none>");
    auto& files = *toolbox::platform::current().files;
    files.setAttributes(from.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(copy("from"), 5);
    EXPECT_EQ(folder.read("to"), "xyxyx");
    EXPECT_FALSE(files.isReadableAndWritable((folder / "to").c_str()));
    EXPECT_EQ(copy("from"), 0);  // an existing file is never touched
    EXPECT_EQ(folder.read("to"), "xyxyx");
}

}  // namespace
