// Settings through the message service, in the registry and in profile files.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
    struct Case {
        const char* entry;
        unsigned long type;
        std::string data;
    };
    const Case cases[] = {{"Width", REG_DWORD, "\x80\x02\0\0"s},
                          {"Color", REG_DWORD, "\xFE\xFF\xFF\xFF"},
                          {"Ratio", REG_BINARY, "\0\0\0\0\0\0\xF8\x3F"s},
                          {"Small", REG_BINARY, "\0\0\xC0\x3F"s},
                          {"Title", REG_SZ, "text\0"s},
                          {"Bytes", REG_BINARY, "\x01\0\x03"s}};
    const unsigned char bytes[] = {1, 0, 3};
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Color", 0xFFFFFFFEul), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Ratio", 1.5, 2), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Small", 1.5f, 2), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Title", "text"), 1);
    EXPECT_EQ(GMSG::writeProfile("View", "Bytes", bytes, 3ul), 1);
    for (const Case& c : cases) {
        std::string data(100, '#');
        std::uint32_t type = 0;
        std::uint32_t size = 100;
        EXPECT_EQ(registry().read(HKEY_CURRENT_USER, (kKey + "\\View"s).c_str(), c.entry, type,
                                  data.data(), size),
                  0u);
        EXPECT_EQ(type, c.type) << c.entry;
        EXPECT_EQ(data.substr(0, size), c.data) << c.entry;
    }
}

TEST_F(Settings, GiveTheDefaultWhereThereIsNone) {
    inBothModes([] {
        EXPECT_EQ(readNumber<int>("absent"), (Read<int>{0, -1}));
        EXPECT_EQ(readNumber<unsigned long>("absent"),
                  (Read<unsigned long>{0, static_cast<unsigned long>(-1)}));
        EXPECT_EQ(readNumber<double>("absent"), (Read<double>{0, -1}));
        EXPECT_EQ(readNumber<float>("absent"), (Read<float>{0, -1}));
        double third = 0;
        EXPECT_EQ(GMSG::getProfile("View", "absent", third, 1.0 / 3), 0);
        EXPECT_EQ(third, 1.0 / 3);
        RWCString text;
        EXPECT_EQ(GMSG::getProfile("View", "absent", text, " \"default\" "), 0);
        EXPECT_EQ(text, " \"default\" ");
        unsigned char bytes[] = {1, 2};
        EXPECT_EQ(GMSG::getProfile("View", "absent", bytes, 2ul, bytes + 0), 0);
        EXPECT_EQ(bytes[1], 2);
        EXPECT_EQ(GMSG::getProfile("View", "absent", bytes, 2ul, nullptr), 0);
        EXPECT_EQ(bytes[1], 0);
    });
}

TEST_F(Settings, GiveTheDefaultForAnotherTypeOrSize) {
    const auto store = [](unsigned long type, const std::string& data) {
        registry().write(HKEY_CURRENT_USER, (kKey + "\\View"s).c_str(), "x",
                         static_cast<std::uint32_t>(type), data.data(),
                         static_cast<std::uint32_t>(data.size()));
    };
    struct Case {
        unsigned long type;
        std::string data;
    };
    const Case cases[] = {{REG_SZ, "7\0"s},  {REG_SZ, "abc\0"s},      {REG_SZ, "8 bytes\0"s},
                          {REG_DWORD, "12"}, {REG_BINARY, "12"},      {REG_DWORD, ""},
                          {77, "1234"},      {REG_BINARY, "12345"},   {REG_BINARY, "123456789"},
                          {77, "12345678"},  {REG_DWORD, "12345678"}, {REG_BINARY, ""}};
    for (const Case& c : cases) {
        store(c.type, c.data);
        EXPECT_EQ(readNumber<int>("x"), (Read<int>{0, -1})) << c.data;
        EXPECT_EQ(readNumber<unsigned long>("x").result, 0) << c.data;
        EXPECT_EQ(readNumber<double>("x"), (Read<double>{0, -1})) << c.data;
        EXPECT_EQ(readNumber<float>("x"), (Read<float>{0, -1})) << c.data;
        RWCString text;
        EXPECT_EQ(GMSG::getProfile("View", "x", text, "default"), c.type == REG_SZ) << c.data;
        EXPECT_EQ(text, c.type == REG_SZ ? c.data.c_str() : "default");
        unsigned char bytes[4] = {};
        const unsigned char byDefault[] = {9, 9, 9, 9};
        EXPECT_EQ(GMSG::getProfile("View", "x", bytes, 4ul, byDefault), 0) << c.data;
        EXPECT_EQ(bytes[0], 9) << c.data;
    }
    store(REG_SZ, "no end");
    RWCString text;
    EXPECT_EQ(GMSG::getProfile("View", "x", text, "default"), 1);
    EXPECT_EQ(text, "no end");
}

TEST_F(Settings, ReadNumbersFromAnyProfileText) {
    struct Case {
        const char* text;
        int number;
        unsigned long bits;
        double real;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {"12abc", 12, 12, 12},
        {"abc", 0, 0, 0},
        {"", 0, 0, 0},
        {"+7", 7, 7, 7},
        {"+-7", 0, 0, 0},
        {"- 7", 0, 0, 0},
        {"1.5e2x", 1, 1, 150},
        {"1,5", 1, 1, 1},
        {"0x10", 0, 0, 0},
        {"4000000000", 2147483647, 4000000000ul, 4e9},
        {"99999999999999999999", 2147483647, 0xFFFFFFFF, 1e20},
        {"-99999999999999999999", -2147483647 - 1, 0x80000000, -1e20},
        {"1e999", 1, 1, infinity},
        {"-1e999", -1, 0xFFFFFFFF, -infinity},
        {"1e-999", 1, 1, 0},
    };
    useProfile();
    for (const Case& c : cases) {
        ASSERT_EQ(GMSG::writeProfile("View", "x", c.text), 1);
        EXPECT_EQ(readNumber<int>("x"), (Read<int>{1, c.number})) << c.text;
        EXPECT_EQ(readNumber<unsigned long>("x"), (Read<unsigned long>{1, c.bits})) << c.text;
        EXPECT_EQ(readNumber<double>("x"), (Read<double>{1, c.real})) << c.text;
    }
    const std::string zeros = "0." + std::string(400, '0') + "1";
    GMSG::writeProfile("View", "x", zeros.c_str());
    EXPECT_EQ(readNumber<double>("x"), (Read<double>{1, 0.0}));
    GMSG::writeProfile("View", "x", std::string(400, '9').c_str());
    EXPECT_EQ(readNumber<double>("x"), (Read<double>{1, infinity}));

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
        EXPECT_EQ(readNumber<int>("Width"), (Read<int>{1, 640}));
        int value = 0;
        EXPECT_EQ(GMSG::getProfile(RWCString("View"), 8, value, -1), 1);
        EXPECT_EQ(GMSG::getProfile(7, "Width", value, -1), 1);
        EXPECT_EQ(value, 640);

        EXPECT_EQ(GMSG::writeProfile(7, 999, 1), 0);
        EXPECT_EQ(GMSG::writeProfile("", "Width", 1), 0);
        EXPECT_EQ(GMSG::writeProfile("View", RWCString(), 1), 0);
        EXPECT_EQ(GMSG::getProfile("View", "", value, -1), 0);
        EXPECT_EQ(value, -1);
        GMSG::setDestName("");
        EXPECT_EQ(GMSG::writeProfile("View", "Width", 1), 0);
    });
}

TEST_F(Settings, GoWhereTheCallerSays) {
    useProfile();
    const std::string other = folder_ / "other.ini";
    EXPECT_EQ(GMSG::writeProfile("View", "Width", 640, other.c_str()), 1);
    EXPECT_EQ(folder_.read("other.ini"), "[View]\r\nWidth=640\r\n");
    EXPECT_EQ(readNumber<int>("Width"), (Read<int>{0, -1}));
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
