// The registry: the system's and the library's own file give the same answers.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "support/settings_fixture.h"

namespace {

using namespace std::string_literals;

class RegistryStoreContract : public SettingsFixture {
  protected:
    ~RegistryStoreContract() override {
#if defined(_WIN32)
        RegDeleteTreeA(HKEY_CURRENT_USER, kRoot);
#endif
    }

    static constexpr const char* kRoot = "Software\\ToolboxContract";

    static std::string under(const char* path) {
        return kRoot + std::string(path);
    }

    static toolbox::platform::ErrorCode write(const std::string& key, const char* name,
                                              unsigned long type, const std::string& data) {
        return registry().write(HKEY_CURRENT_USER, key.c_str(), name,
                                static_cast<std::uint32_t>(type), data.data(),
                                static_cast<std::uint32_t>(data.size()));
    }

    struct Value {
        toolbox::platform::ErrorCode error;
        unsigned long type;
        std::string data;
        bool operator==(const Value&) const = default;
    };
    static Value read(const std::string& key, const char* name) {
        std::string data(1000, '#');
        auto size = static_cast<std::uint32_t>(data.size());
        std::uint32_t type = 0;
        const auto error =
            registry().read(HKEY_CURRENT_USER, key.c_str(), name, type, data.data(), size);
        return {error, type, data.substr(0, size)};
    }
};

TEST_F(RegistryStoreContract, GivesBackTypeAndBytes) {
    const std::tuple<const char*, unsigned long, std::string> cases[] = {
        {"accents", REG_SZ, "\xE9\x80\xFF\0"s},
        {"marks", REG_SZ, "a\"b\\c\\\\\"\0"s},
        {"lines", REG_SZ, "one\r\n[HKEY_CURRENT_USER\\x]\r\n\"y\"=\"z\"\t\0"s},
        {"number", REG_DWORD, "\x80\x02\0\0"s},
        {"no data", REG_BINARY, ""},
        {"odd type", 77, "xy"},
        {"", REG_SZ, "the default value\0"s},
        {"\"q\\u\"=;[x]@", REG_SZ, "hostile name\0"s},
    };
    for (const auto& [name, type, data] : cases)
        EXPECT_EQ(write(under("\\A"), name, type, data), 0u);
    for (const auto& [name, type, data] : cases)
        EXPECT_EQ(read(under("\\A"), name), (Value{0, type, data})) << name;
}

TEST_F(RegistryStoreContract, ComparesNamesWithoutCaseAndPathsWithoutDoubledSeparators) {
    const Value expected{0, REG_SZ, "v\0"s};
    ASSERT_EQ(write(under("\\Deep\\\xC9t\xE9\\"), "Nom\xE9", REG_SZ, "v\0"s), 0u);
    EXPECT_EQ(read(under("\\\\dEEP\\\\\xE9T\xC9"), "nOM\xC9"), expected);
    ASSERT_EQ(write(under("\\deep\\\xE9t\xE9"), "NOM\xE9", REG_DWORD, "1234"), 0u);
    EXPECT_EQ(read(under("\\Deep\\\xC9t\xE9"), "Nom\xE9"), (Value{0, REG_DWORD, "1234"}));
}

#if !defined(_WIN32)
TEST_F(RegistryStoreContract, ReadsAFileThatAPersonWrote) {
    ASSERT_EQ(write("Software\\App", "n", REG_DWORD, "1234"), 0u);  // makes the folder
    const std::string file = folder_ / "toolbox/registry.reg";
    const std::string text =
        "REGEDIT4\n; a remark\n[hkey_current_user\\SOFTWARE\\app]\n"
        "\"n\" = \"x\\\\y\"  \n\"wrapped\"=hex:01,\\\n  02,\\\r\n  03\n"
        "\"bad hex\"=hex:1,zz\n\"bad type\"=hex(:00\n\"no end\"=\"abc\n\"bad number\"=dword:1g\n"
        "\"other\"=qword:1\n\"gone\"=-\nnonsense\n[broken\n\"n\"=\"y\"\n";
    folder_.write(file, text);
    EXPECT_EQ(read("Software\\App", "n"), (Value{0, REG_SZ, "x\\y\0"s}));
    EXPECT_EQ(read("Software\\App", "wrapped"), (Value{0, REG_BINARY, "\x01\x02\x03"}));
    for (const char* name : {"bad hex", "bad type", "no end", "bad number", "other", "gone"})
        EXPECT_EQ(read("Software\\App", name).error, ERROR_FILE_NOT_FOUND) << name;

    ASSERT_EQ(write("Software\\App", "new", REG_SZ, "v\0"s), 0u);
    EXPECT_EQ(folder_.read(file), text + "\"new\"=\"v\"\n");
}
#endif

}  // namespace
