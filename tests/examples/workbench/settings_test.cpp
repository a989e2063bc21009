// Where the program keeps its settings.
#include "settings/settings.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "settings/full_path.h"
#include "support/temp_folder.h"

namespace {

TEST(SettingsFolder, IsMadeWithThoseAboveIt) {
    const TempFolder folder;
    const std::string place = folder / "one\\two\\three";
    const Settings settings = settingsIn(CString(place + "\\"));
    EXPECT_TRUE(settings.isWritable);
    EXPECT_EQ(settings.file, CString(place + "\\workbench.ini"));
    EXPECT_EQ(settings.log, CString(place + "\\workbench.log"));
    EXPECT_TRUE(std::filesystem::is_directory(place));
    EXPECT_TRUE(std::filesystem::is_empty(place));
    EXPECT_TRUE(settingsIn(CString(place)).isWritable) << "it is there already";
}

TEST(SettingsFolder, TellsWhenItCannotBeMade) {
    const TempFolder folder;
    folder.write("file", "in the way");
    const Settings settings = settingsIn(CString(folder / "file\\one\\two"));
    EXPECT_FALSE(settings.isWritable);
    EXPECT_EQ(settings.file, CString(folder / "file\\one\\two\\workbench.ini"));
}

TEST(SettingsFolder, StaysWhereItIsWhateverItsLength) {
    const TempFolder folder;
    std::string name = folder / "long";
    while (name.size() <= 2 * MAX_PATH) name += "\\a folder of a long name";
    EXPECT_EQ(settingsIn(CString(name)).file, CString(name + "\\workbench.ini"));
    EXPECT_EQ(fullPath(CString(name + "\\..\\file")),
              CString(name.substr(0, name.rfind('\\')) + "\\file"));
}

TEST(FullPath, ComparesWithoutCase) {
    EXPECT_TRUE(isSamePath("C:\\B\342timent\\a.tbf", "c:\\b\302TIMENT\\A.tbf"));
    EXPECT_FALSE(isSamePath("C:\\a", "C:\\a.tbf"));
}

}  // namespace
