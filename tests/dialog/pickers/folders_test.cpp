// Names of folders, and names in 16-bit characters.
#include "dialog/pickers/folders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialog/pickers/wide_names.h"
#include "support/temp_folder.h"

namespace {

using namespace toolbox::pickers;

TEST(PickerFolders, KnowWhatLiesAboveThem) {
    struct Case {
        const char *path, *parent, *name;
    };
    const Case cases[] = {
        {"C:\\a\\b\\\\", "C:\\a", ""},
        {"C:\\a", "C:\\", "a"},
        {"C:\\", "", ""},
        {"C:plan", "C:", "plan"},
        {"\\\\server\\share\\a", "\\\\server\\share", "a"},
        {"\\\\server\\share\\", "", ""},
        {"\\\\server", "", "server"},
        {"/a/b", "/a", "b"},
        {"/a", "/", "a"},
        {"", "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(parentOf(c.path), c.parent) << c.path;
        EXPECT_EQ(fileNameOf(c.path), c.name) << c.path;
    }
}

TEST(PickerFolders, LeadToTheNearestOneThatIsThere) {
    const TempFolder folder;
    folder.write("file", "");
    const std::string here = folder.path();
    EXPECT_EQ(nearestFolder(here + "/gone/deeper/"), here);
    EXPECT_EQ(nearestFolder(here + "/file"), here);
    EXPECT_EQ(nearestFolder(here + "/" + std::string(5000, 'x') + "/y"), here);
    EXPECT_EQ(nearestFolder("no such folder/deeper"), "");
}

TEST(WideNames, AreReadBackToTheByteOrRefused) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    EXPECT_EQ(exact1252(wideOf(all)), all);
    EXPECT_EQ(exact1252(u"Straße €.tbf"), "Stra\337e \200.tbf");
    for (const char16_t* const name : {u"план.tbf", u"a\u0302.tbf", u"\u2215", u"\U0001F600"})
        EXPECT_EQ(exact1252(name), std::nullopt);
    EXPECT_EQ(shown1252(u"план \U0001F600.tbf"), "???? ?.tbf");
}

TEST(WideNames, OfSeveralFilesShareTheirFolder) {
    using Names = std::vector<std::u16string>;
    using namespace std::string_view_literals;
    EXPECT_EQ(severalNames(u"C:\\a\0b\0c d\0\0rest\0"sv), (Names{u"C:\\a\\b", u"C:\\a\\c d"}));
    EXPECT_EQ(severalNames(u"C:\\a\\one\0\0"sv), (Names{u"C:\\a\\one"}));
    EXPECT_EQ(severalNames(u"C:\\a\0D:\\b\0\\\\s\\c\0\0"sv), (Names{u"D:\\b", u"\\\\s\\c"}));
    EXPECT_EQ(severalNames(u"C:\\a\0unfinished"sv), (Names{u"C:\\a\\unfinished"}));
    EXPECT_EQ(severalNames(u"\0\0"sv), Names());
}

}  // namespace
