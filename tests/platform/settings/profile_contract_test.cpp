// What a profile file means and how it changes: the system's calls and the library's own code give
// the same answers.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "support/settings_fixture.h"

namespace {

using namespace std::string_literals;
using toolbox::platform::ProfileEntry;

class ProfileStoreContract : public SettingsFixture {};

TEST_F(ProfileStoreContract, FindsTheTextOfAnEntry) {
    const std::tuple<std::string, const char*, const char*, const char*> cases[] = {
        // Blanks and quotes around a value.
        {"[s]\r\n  k =  v x  \r\n", "s", "k", "v x"},
        {"[s]\r\nk=\v v\f\x1A\r\n", "s", "k", "v"},
        {"[s]\r\nk=  \" a \"  \r\n", "s", "k", " a "},
        {"[s]\r\nk='a b'\r\n", "s", "k", "a b"},
        {"[s]\r\nk=\"\r\n", "s", "k", "\""},
        {"[s]\r\nk=a=b ; c\r\n", "s", "k", "a=b ; c"},
        // An empty entry is there, a line without '=' is not but hides what follows.
        {"[s]\r\nk=   \r\n", "s", "k", ""},
        {"[s]\r\nk\r\nk=v\r\n", "s", "k", "<none>"},
        // Names.
        {"[SecTion]\r\nK k=v\r\n", " sECtION ", " k K ", "v"},
        {"  [s] ; remark\r\nk=v\r\n", "s", "k", "v"},
        {"[s]t]\r\nk=v\r\n", "s]t", "k", "v"},
        {"k=v\r\n[s]\r\n", "s", "k", "<none>"},
        // The first of equal names.
        {"[s]\r\nk=1\r\nk=2\r\n", "s", "k", "1"},
        {"[s]\r\na=1\r\n[t]\r\n[s]\r\nk=2\r\n", "s", "k", "<none>"},
        // Line ends, NULs, encodings.
        {"[s]\r\n\0k=a\r\n"s, "s", "k", "<none>"},
        {"[s]\r\nj=" + std::string(1 << 20, 'x') + "\r\nk=v\r\n", "s", "k", "v"},
        {"\xEF\xBB\xBF[s]\r\nk=v\xC3\xA9\r\n", "s", "k", "v\xE9"},
        {"\xFF\xFE[\0s\0]\0\n\0k\0=\0\xAC\x20\xE9\0\n\0"s, "s", "k", "\x80\xE9"},
        {"\xFE\xFF\0[\0s\0]\0\n\0k\0=\0v\0\n"s, "s", "k", "v"},
    };
    for (const auto& [file, section, entry, expected] : cases) {
        SCOPED_TRACE(file.substr(0, 60));
        const std::string name = profileHolding(file);
        EXPECT_EQ(read(name, section, entry), expected);
        const char* entries[] = {"a=b", entry};
        const auto values = profiles().readMany(name.c_str(), section, entries);
        EXPECT_FALSE(values.at(0));
        EXPECT_EQ(values.at(1).value_or("<none>"), expected);
    }
    EXPECT_EQ(read(folder_ / "no such folder/x.ini", "s", "k"), "<none>");
}

TEST_F(ProfileStoreContract, GivesTheDefaultAndCutsAtTheBuffer) {
    const std::tuple<const char*, const char*, int, bool, const char*> cases[] = {
        {"absent", "  d   ", 20, false, "  d"},
        {"absent", nullptr, 20, false, ""},
        {"absent", "   ", 20, false, " "},
        {"absent", "default", 4, false, "def"},
        {"k", "d", 5, true, "abcd"},
        {"empty", "d", 20, true, ""},
        {nullptr, "d", 20, false, "d"},
    };
    const std::string file = profileHolding("[s]\r\nk=abcdef\r\nempty=\r\n");
    for (const auto& [entry, fallback, size, found, expected] : cases) {
        std::string text(static_cast<std::size_t>(size) + 1, '#');
        EXPECT_EQ(profiles().read(file.c_str(), "s", entry, fallback, text.data(), size), found);
        EXPECT_STREQ(text.c_str(), expected);
        EXPECT_EQ(text.back(), '#');
    }
    char untouched = '#';
    EXPECT_TRUE(profiles().read(file.c_str(), "s", "k", "d", &untouched, 0));
    EXPECT_EQ(untouched, '#');
}

/// The lines of a profile as both systems agree on them: no blank lines, no blanks around names.
std::string essence(std::string bytes) {
    std::erase_if(bytes, [](char c) { return c == '\r' || c == ' '; });
    std::ranges::replace(bytes, '\n', '|');
    const auto blank = [](char a, char b) { return a == '|' && b == '|'; };
    bytes.erase(std::ranges::unique(bytes, blank).begin(), bytes.end());
    return bytes;
}

TEST_F(ProfileStoreContract, ChangesOneEntryAndKeepsAllOtherLines) {
    const std::tuple<const char*, const char*, const char*, const char*, const char*> cases[] = {
        {"", "s", "k", "v", "[s]|k=v|"},
        {"; top\r\n\r\n[s]\r\n; c\r\na=1\r\njunk\r\n[bad\r\n=x\r\n", "s", "k", "v",
         ";top|[s]|;c|a=1|junk|[bad|=x|k=v|"},
        {"[s]\r\n  K  =  1  \r\nm=2\r\n", "s", "k", "v", "[s]|K=v|m=2|"},
        {"[s]\r\nk\r\n", "S", "k", "v", "[s]|k=v|"},
        {"[t]\r\nb=2", "s", "k", "v", "[t]|b=2|[s]|k=v|"},
        {"[s]\r\na=1\r\n[t]\r\n[s]\r\nk=2\r\n", "s", "k", "v", "[s]|a=1|k=v|[t]|[s]|k=2|"},
        {"\xEF\xBB\xBF[s]\r\nb=2\r\n", "s", "k", "\xE9", "\xEF\xBB\xBF[s]|b=2|k=\xC3\xA9|"},
        {"[s]\r\nm=1\r\n", "s", "k", "v\r\nm=2", "[s]|m=1|k=v|"},
        // Removing.
        {"[s]\r\nk=1\r\nm=2\r\n", "s", "K", nullptr, "[s]|m=2|"},
        {"[s]\r\nk=1\r\nk=2\r\n", "s", "k", nullptr, "[s]|k=2|"},
        {"[s]\r\nk=1\r\n", "s", "absent", nullptr, "[s]|k=1|"},
    };
    for (const auto& [before, section, entry, value, after] : cases) {
        const std::string file = profileHolding(before);
        EXPECT_EQ(profiles().write(file.c_str(), section, entry, value), 0u) << before;
        EXPECT_EQ(essence(folder_.read(file)), after) << before;
    }
}

TEST_F(ProfileStoreContract, StoresSeveralEntriesInOneCall) {
    const std::string file = folder_ / "new.ini";
    const ProfileEntry entries[] = {{"a", "1"}, {"b", "2"}, {"a", "3"}, {"absent", nullptr}};
    EXPECT_EQ(profiles().writeMany(file.c_str(), "s", entries), 0u);
    EXPECT_EQ(essence(folder_.read(file)), "[s]|a=3|b=2|");

    const ProfileEntry bad[] = {{"c", "1"}, {"d=e", "2"}};
    EXPECT_NE(profiles().writeMany(file.c_str(), "s", bad), 0u);
    EXPECT_EQ(essence(folder_.read(file)), "[s]|a=3|b=2|");
}

TEST_F(ProfileStoreContract, RefusesWhatCouldNotBeReadBack) {
    const std::pair<const char*, const char*> cases[] = {
        {"s", "a=b"},   {"s", "[t]"}, {"s", " \v[t"}, {"s", "a\nb"}, {"s", ""},     {"s", "  "},
        {"s", nullptr}, {"s\r", "k"}, {"", "k"},      {" ", "k"},    {nullptr, "k"}};
    const std::string file = profileHolding("[s]\r\nk=1\r\n");
    for (const auto& [section, entry] : cases)
        EXPECT_NE(profiles().write(file.c_str(), section, entry, "v"), 0u)
            << (entry ? entry : "null");
    EXPECT_EQ(folder_.read(file), "[s]\r\nk=1\r\n");

    EXPECT_NE(profiles().write(nullptr, "s", "k", "v"), 0u);
    EXPECT_NE(profiles().write((folder_ / "no such folder/x.ini").c_str(), "s", "k", "v"), 0u);
}

}  // namespace
