#include <gtest/gtest.h>

#include <cctype>
#include <memory>

#include "support/settings_fixture.h"
#include "toolbox/messages.h"

namespace {

class LogFile : public SettingsFixture {
  protected:
    LogFile() { service_->setErrorReportingOption(GMSG::ReportInList); }

    /// The file's lines, whatever ends them.
    std::string logged(const std::string& file) const {
        std::string text;
        for (const char c : folder_.read(file))
            if (c != '\r') text += c;
        return text;
    }

    std::unique_ptr<GMSG> service_ = std::make_unique<GMSG>();
};

TEST_F(LogFile, HoldsTheErrorsReportedWhileItIsOpen) {
    folder_.write("errors.log", "what a former run left\n");
    ASSERT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "errors.log")), 1);
    GMSG::errorMsg("first %d", 0, 1);
    EXPECT_EQ(logged("errors.log"), "first 1\n");  // also while it is open
    GMSG::errorMsg("second %%", 0);
    for (int twice = 0; twice < 2; ++twice) GMSG::CloseLogFile();
    GMSG::errorMsg("after", 0);
    EXPECT_EQ(logged("errors.log"), "first 1\nsecond %\n");
}

TEST_F(LogFile, WithoutANameIsANewTemporaryFile) {
#if defined(_WIN32)
    char temporary[300];
    GetTempPathA(sizeof temporary, temporary);
    SetEnvironmentVariableA("TMP", folder_.path().c_str());
#else
    ::setenv("TMPDIR", folder_.path().c_str(), 1);
#endif
    ASSERT_EQ(GMSG::OpenLogFile(""), 1);
    GMSG::errorMsg("first", 0);
    ASSERT_EQ(GMSG::OpenLogFile(""), 1);
    GMSG::errorMsg("second", 0);
    GMSG::CloseLogFile();
#if defined(_WIN32)
    SetEnvironmentVariableA("TMP", temporary);
#else
    ::unsetenv("TMPDIR");
#endif

    std::string all;
    for (const std::string& name : folder_.names()) {
        std::string upper;
        for (const char c : name) upper += static_cast<char>(std::toupper(c));
        EXPECT_TRUE(upper.starts_with("ERR") && upper.ends_with(".TMP")) << name;
        EXPECT_EQ(upper.find_first_not_of("0123456789ABCDEF", 3), upper.size() - 4) << name;
        all += logged(name);
    }
    EXPECT_TRUE(all == "first\nsecond\n" || all == "second\nfirst\n") << all;
}

TEST_F(LogFile, ThatCannotBeOpenedLeavesNoLog) {
    ASSERT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "errors.log")), 1);
    EXPECT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "no folder/errors.log")), 0);
    GMSG::errorMsg("kept in the list", 0);
    EXPECT_EQ(logged("errors.log"), "");
    EXPECT_EQ(GMSG::getLastErrorMsg(), "kept in the list");
}

TEST_F(LogFile, EndsWithItsService) {
    ASSERT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "errors.log")), 1);
    service_.reset();
    EXPECT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "other.log")), 0);
    service_ = std::make_unique<GMSG>();
    service_->setErrorReportingOption(GMSG::ReportInList);
    GMSG::errorMsg("of another service", 0);
    EXPECT_EQ(logged("errors.log"), "");
    EXPECT_EQ(folder_.read("other.log"), "<none>");
}

}  // namespace
