// Settings through the message service, in the registry and in profile files.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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
    template <class Check>
    void inBothModes(Check check) {
        SCOPED_TRACE("registry");
        check();
        SCOPED_TRACE("profile");
        useProfile();
        check();
    }

    static constexpr const char* kKey = "Software\\ToolboxSettingsTest";
    std::string profile_ = folder_ / "app.ini";
    GMSG service_;
};

template <class T>
struct Read {
    int result;
    T value;
    bool operator==(const Read&) const = default;
};

/// What a setting of section "View" reads as; -1 is the default.
template <class T>
Read<T> readNumber(const char* entry) {
    Read<T> read{};
    read.result = GMSG::getProfile("View", entry, read.value, static_cast<T>(-1));
    return read;
}

TEST_F(Settings, ComeBackAsTheyWereStored) {
    inBothModes([] {
        for (const int value : {0, 640, -1, std::numeric_limits<int>::min()}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Width", value), 1);
            EXPECT_EQ(readNumber<int>("Width"), (Read<int>{1, value}));
        }
        for (const unsigned long value : {0ul, 0x7FFFFFFFul, 0x80000000ul, 0xFFFFFFFEul}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Color", value), 1);
            EXPECT_EQ(readNumber<unsigned long>("Color"), (Read<unsigned long>{1, value}));
        }
        for (const double value : {0.0, 1.5, -123456.25, 1e300}) {
            EXPECT_EQ(GMSG::writeProfile("View", "Scale", value, 2), 1);
            EXPECT_EQ(readNumber<double>("Scale"), (Read<double>{1, value}));
            const float small = static_cast<float>(std::fmod(value, 1000.0));
            EXPECT_EQ(GMSG::writeProfile("View", "Ratio", small, 40), 1);
            EXPECT_EQ(readNumber<float>("Ratio"), (Read<float>{1, small}));
        }
        for (const char* value : {"", "C:\\data\\\xE9t\xE9.dat", "a;b=c [d]"}) {
            RWCString text;
            EXPECT_EQ(GMSG::writeProfile("View", "Title", RWCString(value)), 1);
            EXPECT_EQ(GMSG::getProfile("View", "Title", text, "default"), 1);
            EXPECT_EQ(text, value);
        }
    });
}

TEST_F(Settings, AreTextInAProfile) {
    useProfile();
    GMSG::writeProfile("View", "Width", 640);
    GMSG::writeProfile("View", "Ratio", 1.5, 2);
    GMSG::writeProfile("View", "Plain", 0.1f, 0);
    GMSG::writeProfile("View", "Six", 0.125, -1);
    GMSG::writeProfile("View", "Color", 0xFFFFFFFEul);
    GMSG::writeProfile("View", "Title", "text");
    EXPECT_EQ(folder_.read("app.ini"),
              "[View]\r\nWidth=640\r\nRatio=1.50\r\nPlain=0\r\nSix=0.125000\r\nColor=-2\r\n"
              "Title=text\r\n");
    const unsigned char bytes[] = {1, 2, 3};
    EXPECT_EQ(GMSG::writeProfile("View", "Bytes", bytes, 3ul), 0);
    EXPECT_EQ(read(profile_, "View", "Bytes"), "<none>");
}

TEST_F(Settings, HaveTheirTypesInTheRegistry) {
    const unsigned char bytes[] = {1, 0, 3};
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Color", 0xFFFFFFFEul), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Ratio", 1.5, 2), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Small", 1.5f, 2), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Title", "text"), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Bytes", bytes, 3ul), 1);
    const struct {
        const char* entry;
        unsigned long type;
        std::string data;
    } cases[] = {{"Width", REG_DWORD, "\x80\x02\0\0"s},
                 {"Color", REG_DWORD, "\xFE\xFF\xFF\xFF"},
                 {"Ratio", REG_BINARY, "\0\0\0\0\0\0\xF8\x3F"s},
                 {"Small", REG_BINARY, "\0\0\xC0\x3F"s},
                 {"Title", REG_SZ, "text\0"s},
                 {"Bytes", REG_BINARY, "\x01\0\x03"s}};
    for (const auto& c : cases) {
        std::string data(100, '#');
        std::uint32_t type = 0, size = 100;
        registry().read(HKEY_CURRENT_USER, (kKey + "\\View"s).c_str(), c.entry, type, data.data(),
                        size);
        EXPECT_EQ(type, c.type) << c.entry;
        EXPECT_EQ(data.substr(0, size), c.data) << c.entry;
    }
}

template <class T>
void expectDefault(const char* entry, T byDefault) {
    T value{};
    EXPECT_EQ(GMSG::getProfile("View", entry, value, byDefault), 0) << entry;
    EXPECT_EQ(value, byDefault) << entry;
}
void expectDefaults(const char* entry) {
    expectDefault(entry, -1);
    expectDefault(entry, 0xFFFFFFFEul);
    expectDefault(entry, 1.0 / 3);
    expectDefault(entry, 1.0f / 3);
    unsigned char bytes[] = {1, 2, 3, 4};
    EXPECT_EQ(GMSG::getProfile("View", entry, bytes, 4ul, bytes + 0), 0) << entry;
    EXPECT_EQ(bytes[1], 2) << entry;
    EXPECT_EQ(GMSG::getProfile("View", entry, bytes, 4ul, nullptr), 0) << entry;
    EXPECT_EQ(bytes[1], 0) << entry;
}

TEST_F(Settings, GiveTheDefaultWhereThereIsNone) {
    inBothModes([] {
        expectDefaults("absent");
        expectDefault("absent", RWCString(" \"default\" "));
    });
}

TEST_F(Settings, GiveTheDefaultForAnotherTypeOrSize) {
    const auto store = [](const char* entry, unsigned long type, const std::string& data) {
        registry().write(HKEY_CURRENT_USER, (kKey + "\\View"s).c_str(), entry,
                         static_cast<std::uint32_t>(type), data.data(),
                         static_cast<std::uint32_t>(data.size()));
    };
    const std::pair<unsigned long, std::string> values[] = {
        {REG_DWORD, "12"}, {REG_BINARY, "12"},     {REG_DWORD, ""},        {77, "1234"},
        {77, "12345678"},  {REG_BINARY, "12345"},  {REG_DWORD, "1234567"}, {REG_BINARY, ""},
        {REG_SZ, "7\0"s},  {REG_SZ, "8 bytes\0"s}, {REG_SZ, "no end"}};
    for (const auto& [type, data] : values) {
        store(data.c_str(), type, data);
        expectDefaults(data.c_str());
        if (type != REG_SZ) expectDefault(data.c_str(), RWCString("default"));
    }
    RWCString text;
    EXPECT_EQ(GMSG::getProfile("View", "no end", text, "default"), 1);
    EXPECT_EQ(text, "no end");
}

TEST_F(Settings, ReadNumbersFromAnyProfileText) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const struct {
        std::string text;
        int number;
        unsigned long bits;
        double real;
    } cases[] = {{"12abc", 12, 12, 12},
                 {"abc", 0, 0, 0},
                 {"", 0, 0, 0},
                 {"+7", 7, 7, 7},
                 {"+-7", 0, 0, 0},
                 {"1.5e2x", 1, 1, 150},
                 {"1,5", 1, 1, 1},
                 {"0x10", 0, 0, 0},
                 {"4000000000", 2147483647, 4000000000ul, 4e9},
                 {"99999999999999999999", 2147483647, 0xFFFFFFFF, 1e20},
                 {"-99999999999999999999", -2147483647 - 1, 0x80000000, -1e20},
                 {"-1e999", -1, 0xFFFFFFFF, -kInfinity},
                 {"1e-999", 1, 1, 0},
                 {"0." + std::string(400, '0') + "1", 0, 0, 0},
                 {std::string(400, '9'), 2147483647, 0xFFFFFFFF, kInfinity}};
    useProfile();
    for (const auto& c : cases) {
        ASSERT_EQ(GMSG::writeProfile("View", "x", c.text.c_str()), 1);
        EXPECT_EQ(readNumber<int>("x"), (Read<int>{1, c.number})) << c.text;
        EXPECT_EQ(readNumber<unsigned long>("x"), (Read<unsigned long>{1, c.bits})) << c.text;
        EXPECT_EQ(readNumber<double>("x"), (Read<double>{1, c.real})) << c.text;
    }
    GMSG::writeProfile("View", "x", std::string(2000, 'x').c_str());
    RWCString text;
    GMSG::getProfile("View", "x", text, "");
    EXPECT_EQ(text.length(), 1023u);
}

TEST_F(Settings, AreNamedByTextOrByResource) {
    toolbox::testing::FakedTexts texts;
    texts.strings.put(7, "View");
    texts.strings.put(8, "Width");
    inBothModes([] {
        EXPECT_EQ(GMSG::writeProfile(7, 8, 640), 1);
        int value = 0;
        EXPECT_EQ(GMSG::getProfile(RWCString("View"), "Width", value, -1), 1);
        EXPECT_EQ(value, 640);
        EXPECT_EQ(GMSG::writeProfile(7, 999, 1), 0);
        EXPECT_EQ(GMSG::writeProfile("", "Width", 1), 0);
        EXPECT_EQ(GMSG::writeProfile("View", RWCString(), 1), 0);
        GMSG::setDestName("");
        EXPECT_EQ(GMSG::writeProfile("View", "Width", 1), 0);
    });
}

TEST_F(Settings, GoWhereTheCallerSays) {
    useProfile();
    const std::string other = folder_ / "other.ini";
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640, other.c_str()), 1);
    EXPECT_EQ(folder_.read("other.ini"), "[View]\r\nWidth=640\r\n");
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 1, (folder_ / "no folder/x").c_str()), 0);

    GMSG::setUseRegistry(1);
    GMSG::setKey(nullptr);
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640, kKey), 0);
    GMSG::setKey(HKEY_CURRENT_USER);
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640, kKey), 1);
    if (sizeof(long) > 4) {
        EXPECT_EQ(GMSG::writeProfile("View", "Width", ~0ul, kKey), 0);
    }
}

}  // namespace
