#include "toolbox/recent_files.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/temp_folder.h"

namespace {

using Names = std::vector<std::string>;

class RecentFiles : public ::testing::Test {
  protected:
    static constexpr unsigned int kFirst = 501;

    RecentFiles() { history_.init(nullptr, kFirst - 1, 0); }

    void record(const Names& names) {
        for (const std::string& name : names) history_.setLogFile(RWCString(name));
    }
    /// What the items of a menu with room for seven stand for.
    static Names listed(const HistoricMenuFile& history) {
        Names names;
        RWCString name;
        for (unsigned int i = 0; i < 7; ++i) {
            history.getLogFile(kFirst + i, name);
            if (!name.empty()) names.push_back(name.str());
        }
        return names;
    }

    TempFolder folder_;
    HistoricMenuFile history_;
};

TEST_F(RecentFiles, KeepsTheFiveNewestOnceEach) {
    record({"a", "", "A", "1", "2", "3", "A", "4"});
    EXPECT_EQ(listed(history_), (Names{"4", "A", "3", "2", "1"}));
}

TEST_F(RecentFiles, ComesBackFromAProfile) {
    const std::string profile = folder_.write("app.ini",
                                              "[Files_opened]\r\nFile_1=old\r\nFile_2=old\r\n"
                                              "File_3=left\r\n[Other]\r\nx=1\r\n");
    record({"C:\\data\\b c.dat", "A"});
    EXPECT_EQ(history_.ecrire(profile.c_str()), 1);
    EXPECT_EQ(folder_.read("app.ini"),
              "[Files_opened]\r\nFile_1=A\r\nFile_2=C:\\data\\b c.dat\r\n"
              "File_3=left\r\n[Other]\r\nx=1\r\n");

    HistoricMenuFile other = history_;  // a copy has the commands too
    other.setLogFile("gone after reading");
    other.lire(profile.c_str());
    EXPECT_EQ(listed(other), (Names{"A", "C:\\data\\b c.dat", "left"}));
    EXPECT_EQ(listed(history_), (Names{"A", "C:\\data\\b c.dat"}));

    other.lire((folder_ / "none.ini").c_str());
    EXPECT_EQ(listed(other), Names{});
    EXPECT_EQ(history_.ecrire((folder_ / "no folder/x.ini").c_str()), 0);
}

}  // namespace
