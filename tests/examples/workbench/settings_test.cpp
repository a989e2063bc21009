// Where the program keeps its settings.
#include "settings/settings.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "support/temp_folder.h"

namespace {

TEST(SettingsFolder, IsMadeWithThoseAboveIt) {
    const TempFolder folder;
    const std::string place = folder / "one\\two\\three";
    for (int i = 0; i < 2; ++i) {
        const Settings settings = settingsIn(CString(place + "\\"));
        EXPECT_TRUE(settings.isWritable);
        EXPECT_EQ(settings.file, CString(place + "\\workbench.ini"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(place));
    folder.write("file", "in the way");
    EXPECT_FALSE(settingsIn(CString(folder / "file\\one")).isWritable);
}

}  // namespace
