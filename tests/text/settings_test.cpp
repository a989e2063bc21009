// What the message service keeps on disk: settings in the registry and in profile files, the log.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <tuple>
#include <utility>

#include "support/settings_fixture.h"
#include "support/text_fakes.h"
#include "toolbox/messages.h"

namespace {

using namespace std::string_literals;

class Settings : public SettingsFixture {
  protected:
    Settings() {
        GMSG::initStaticVars();
        GMSG::setDestName(RWCString(kKey));
    }
    ~Settings() override {
        GMSG::setUseRegistry(1);
        GMSG::destroyStaticVars();
#if defined(_WIN32)
        RegDeleteTreeA(HKEY_CURRENT_USER, kKey);
#endif
    }

    void useProfile() {
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(profile_));
    }
    /// Runs the same expectations in both modes.
    void inBothModes(void (*check)()) {
        SCOPED_TRACE("registry");
        check();
        SCOPED_TRACE("profile");
        useProfile();
        check();
    }

    static constexpr const char* kKey = "Software\\ToolboxSettingsTest";
    static constexpr const char* kView = "Software\\ToolboxSettingsTest\\View";
    std::string profile_ = folder_ / "app.ini";
    std::unique_ptr<GMSG> service_ = std::make_unique<GMSG>();
};

/// A setting of section "View" is there and reads as `expected`.
template <class T>
void expectReads(const char* entry, T expected) {
    T value{};
    EXPECT_EQ(GMSG::getProfile("View", entry, value, T()), 1) << entry;
    EXPECT_EQ(value, expected) << entry;
}

TEST_F(Settings, ComeBackAsTheyWereStored) {
    inBothModes([] {
        for (const int value : {0, -1, std::numeric_limits<int>::min()}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Width", value), 1);
            expectReads("Width", value);
        }
        EXPECT_EQ(GMSG::writeProfile("View", "Color", 0xFFFFFFFEul), 1);
        expectReads("Color", 0xFFFFFFFEul);
        for (const double value : {-123456.25, 1e300}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Scale", value, 2), 1);
            expectReads("Scale", value);
        }
        EXPECT_EQ(GMSG::writeProfile("View", "Ratio", 0.1f, 40), 1);
        expectReads("Ratio", 0.1f);
        for (const char* value : {"", "C:\\\xE9t\xE9.dat", "a;b=c [d]"}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Title", RWCString(value)), 1);
            expectReads("Title", RWCString(value));
        }
    });
}

template <class T>
void expectDefault(const char* entry, T byDefault) {
    T value{};
    EXPECT_EQ(GMSG::getProfile("View", entry, value, byDefault), 0) << entry;
    EXPECT_EQ(value, byDefault) << entry;
}
void expectDefaults(const char* entry) {
    expectDefault(entry, 0xFFFFFFFEul);
    expectDefault(entry, 1.0 / 3);
    unsigned char bytes[] = {1, 2, 3, 4};
    EXPECT_EQ(GMSG::getProfile("View", entry, bytes, 4ul, nullptr), 0) << entry;
    EXPECT_EQ(bytes[1], 0) << entry;
}

TEST_F(Settings, GiveTheDefaultForNoneAndForAnotherTypeOrSize) {
    for (const auto& [type, data] : {std::pair<unsigned long, std::string>{REG_DWORD, "12"},
                                     {REG_BINARY, "12345"},
                                     {77, "1234"},
                                     {REG_SZ, "no end"}}) {
        registry().write(HKEY_CURRENT_USER, kView, data.c_str(), static_cast<std::uint32_t>(type),
                         data.data(), static_cast<std::uint32_t>(data.size()));
        expectDefaults(data.c_str());
        if (type != REG_SZ) expectDefault(data.c_str(), RWCString("default"));
    }
    expectReads("no end", RWCString("no end"));
    inBothModes([] {
        expectDefaults("absent");
        expectDefault("absent", RWCString(" \"default\" "));
    });
}

TEST_F(Settings, ReadNumbersFromAnyProfileText) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::tuple<std::string, int, unsigned long, double> cases[] = {
        {"12abc", 12, 12, 12},
        {"", 0, 0, 0},
        {"1.5e2x", 1, 1, 150},
        {"4000000000", 2147483647, 4000000000ul, 4e9},
        {"99999999999999999999", 2147483647, 0xFFFFFFFF, 1e20},
        {"-1e999", -1, 0xFFFFFFFF, -kInfinity},
        {"1" + std::string(400, '0'), 2147483647, 0xFFFFFFFF, kInfinity}};
    useProfile();
    for (const auto& [text, number, bits, real] : cases) {
        ASSERT_EQ(GMSG::writeProfile("View", "x", text.c_str()), 1);
        SCOPED_TRACE(text);
        expectReads("x", number);
        expectReads("x", bits);
        expectReads("x", real);
    }
    GMSG::writeProfile("View", "x", std::string(2000, 'x').c_str());
    expectReads("x", RWCString(std::string(1023, 'x')));
}

TEST_F(Settings, AreNamedByTextOrByResourceAndGoWhereTheCallerSays) {
    toolbox::testing::FakedTexts texts;
    texts.strings.put(7, "View");
    texts.strings.put(8, "Width");
    inBothModes([] {
        EXPECT_EQ(GMSG::writeProfile(7, 8, 640), 1);
        expectReads("Width", 640);
        EXPECT_EQ(GMSG::writeProfile(7, 999, 1), 0);
    });
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640, (folder_ / "other.ini").c_str()), 1);
    EXPECT_EQ(folder_.read("other.ini"), "[View]\r\nWidth=640\r\n");

    GMSG::setUseRegistry(1);
    GMSG::writeProfile("View", "Ratio", 1.5, 2, kKey);
    std::string data(100, '#');
    std::uint32_t type = 0, size = 100;
    registry().read(HKEY_CURRENT_USER, kView, "Ratio", type, data.data(), size);
    EXPECT_EQ(type, std::uint32_t{REG_BINARY});
    EXPECT_EQ(data.substr(0, size), "\0\0\0\0\0\0\xF8\x3F"s);
}

class LogFile : public Settings {
  protected:
    LogFile() { service_->setErrorReportingOption(GMSG::ReportInList); }

    /// The file's lines, whatever ends them.
    std::string logged(const std::string& file) const {
        std::string text = folder_.read(file);
        std::erase(text, '\r');
        return text;
    }

    RWCString log_{folder_ / "errors.log"};
};

TEST_F(LogFile, HoldsTheErrorsReportedWhileItIsOpen) {
    folder_.write("errors.log", "what a former run left\n");
    ASSERT_EQ(GMSG::OpenLogFile(log_), 1);
    GMSG::errorMsg("first %d", 0, 1);
    EXPECT_EQ(logged("errors.log"), "first 1\n");  // also while it is open
    GMSG::errorMsg("second %%", 0);
    GMSG::CloseLogFile();
    GMSG::errorMsg("after", 0);
    EXPECT_EQ(logged("errors.log"), "first 1\nsecond %\n");
}

TEST_F(LogFile, EndsWithItsService) {
    ASSERT_EQ(GMSG::OpenLogFile(log_), 1);
    service_.reset();
    EXPECT_EQ(GMSG::OpenLogFile(RWCString(folder_ / "other.log")), 0);
    service_ = std::make_unique<GMSG>();
    service_->setErrorReportingOption(GMSG::ReportInList);
    GMSG::errorMsg("of another service", 0);
    EXPECT_EQ(logged("errors.log"), "");
    EXPECT_EQ(folder_.read("other.log"), "<none>");
}

}  // namespace
