// Profile files where the library itself reads and replaces them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <random>
#include <vector>

#include "support/settings_fixture.h"

namespace {

using toolbox::platform::ProfileEntry;

class PosixProfile : public SettingsFixture {
  protected:
    static toolbox::platform::ErrorCode write(const std::string& file, const std::string& entry,
                                              const char* value) {
        return profiles().write(file.c_str(), "s", entry.c_str(), value);
    }

    /// Runs `work` in a process of its own; its exit code is 0 when `work` gives true.
    static pid_t start(const std::function<bool()>& work) {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(work() ? 0 : 1);
        return child;
    }
    static int exitCode(pid_t child) {
        int status = -1;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(PosixProfile, KeepsEveryOtherByte) {
    using namespace std::string_literals;
    struct Case {
        std::string before;
        const char* value;
        std::string after;
    };
    const Case cases[] = {
        {"", "v", "[s]\r\nk=v\r\n"},
        {"; x\n\n [t] ;\n  a = 1\n\n\n[s]\n k  =  1\n\0z\r\n"s, "v",
         "; x\n\n [t] ;\n  a = 1\n\n\n[s]\nk=v\n\0z\r\n"s},
        {"[s]\n\na=1 \n\n \n[t]\n", "v", "[s]\n\na=1 \nk=v\n\n \n[t]\n"},
        {"[s]\r\n\r\n   ", "v", "[s]\r\nk=v\r\n\r\n   "},
        {"[t]\r\n\r\n   ", "v", "[t]\r\n\r\n   \r\n[s]\r\nk=v\r\n"},
        {"[s]\nk=1\r\nm", nullptr, "[s]\nm"},
        {"[s]\nk=1\n", "1", "[s]\nk=1\n"},
        {"\xFF\xFE[\0s\0]\0\x3D\xD8\0\xDE\x01\xD8\n\0"s, "\x80",
         "\xFF\xFE[\0s\0]\0\x3D\xD8\0\xDE\x01\xD8\n\0k\0=\0\xAC\x20\n\0"s},
    };
    for (const Case& c : cases) {
        const std::string file = profileHolding(c.before);
        EXPECT_EQ(write(file, "k", c.value), 0u) << c.before;
        EXPECT_EQ(folder_.read(file), c.after) << c.before;
    }
}

TEST_F(PosixProfile, AFailedSaveLeavesTheOldFileWhole) {
    const std::string file = profileHolding("[s]\nk=1\n");
    ::chmod(file.c_str(), 0444);
    EXPECT_EQ(write(file, "k", "v"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder_.read(file), "[s]\nk=1\n");

    std::filesystem::create_directory(folder_ / "folder.ini");
    EXPECT_EQ(write(folder_ / "folder.ini", "k", "v"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(read(folder_ / "folder.ini", "s", "k"), "<none>");

    ::mkfifo((folder_ / "pipe.ini").c_str(), 0600);
    EXPECT_EQ(write(folder_ / "pipe.ini", "k", "v"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(read(folder_ / "pipe.ini", "s", "k"), "<none>");

    // 300 GB that take no room: what is no file of settings is not read, and not replaced.
    const std::string sparse = folder_ / "sparse.ini";
    const int file300 = ::open(sparse.c_str(), O_WRONLY | O_CREAT, 0600);
    ASSERT_EQ(::ftruncate(file300, 300'000'000'000), 0);
    ::close(file300);
    EXPECT_EQ(write(sparse, "k", "v"), ERROR_FILE_TOO_LARGE);
    EXPECT_EQ(read(sparse, "s", "k"), "<none>");
    EXPECT_EQ(std::filesystem::file_size(sparse), 300'000'000'000u);
}

TEST_F(PosixProfile, WhatLiesUnderTheNameOfTheNewFileIsNotWritten) {
    const std::string kept = folder_.write("kept", "kept");
    const std::string other = folder_.write("other.ini", "[s]\nk=1\n");
    std::filesystem::create_symlink(kept, folder_ / ".other.ini.saving");
    EXPECT_EQ(write(other, "k", "2"), 0u);
    std::filesystem::create_directory(folder_ / ".other.ini.saving");
    EXPECT_EQ(write(other, "k", "3"), 0u);
    EXPECT_EQ(folder_.read("other.ini"), "[s]\nk=3\n");
    EXPECT_FALSE(std::filesystem::is_symlink(other));
    EXPECT_EQ(folder_.read("kept"), "kept");
    const std::vector<std::string> names{".other.ini.saving", "kept", "other.ini"};
    EXPECT_EQ(folder_.names(), names);
}

TEST_F(PosixProfile, ReplacesWhatALinkLeadsToAndKeepsTheRights) {
    const std::string file = profileHolding("[s]\nk=1\n");
    ::chmod(file.c_str(), 06640);
    const std::string link = folder_ / "link.ini";
    std::filesystem::create_symlink(file, link);
    EXPECT_EQ(write(link, "k", "v"), 0u);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(folder_.read(file), "[s]\nk=v\n");
    struct stat facts {};
    ::stat(file.c_str(), &facts);
    EXPECT_EQ(facts.st_mode & 07777u, 0640u) << "whatever else the old file had";
}

TEST_F(PosixProfile, SeesAtOnceWhatOthersChangeInPlace) {
    const std::string file = profileHolding("[s]\nk=000\n");
    for (int i = 100; i < 400; ++i) {
        const std::string number = std::to_string(i);
        const int fd = ::open(file.c_str(), O_WRONLY);
        ASSERT_EQ(::pwrite(fd, number.data(), 3, 6), 3);  // same size, often the same file time
        ::close(fd);
        ASSERT_EQ(read(file, "s", "k"), number);
    }
}

TEST_F(PosixProfile, SavesOfSeveralProcessesLoseNoEntry) {
    constexpr int kProcesses = 4;
    constexpr int kEntries = 40;
    const std::string file = folder_ / "shared.ini";  // they also race to create it
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p)
        children.push_back(start([&] {
            bool good = true;
            for (int i = 0; i < kEntries; ++i)
                good = write(file, std::to_string(p) + "." + std::to_string(i), "v") == 0 && good;
            return good;
        }));
    for (const pid_t child : children) EXPECT_EQ(exitCode(child), 0);
    for (int p = 0; p < kProcesses; ++p)
        for (int i = 0; i < kEntries; ++i) {
            const std::string entry = std::to_string(p) + "." + std::to_string(i);
            EXPECT_EQ(read(file, "s", entry.c_str()), "v") << entry;
        }
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"shared.ini"});
}

/// All entries of one generation, so that a mix of two shows.
void saveGeneration(const std::string& file, int generation) {
    const std::string text = std::to_string(generation);
    std::vector<std::string> names;
    for (int i = 0; i < 500; ++i) names.push_back("entry" + std::to_string(i));
    std::vector<ProfileEntry> entries;
    for (const std::string& name : names) entries.push_back({name.c_str(), text.c_str()});
    toolbox::platform::current().profiles->writeMany(file.c_str(), "s", entries);
}

TEST_F(PosixProfile, AKilledProcessLeavesTheOldFileOrTheNew) {
    constexpr int kKills = 60;
    const std::string file = folder_ / "killed.ini";
    saveGeneration(file, 0);
    std::mt19937 chance(1);
    std::vector<std::string> seen;
    for (int kill = 1; kill <= kKills; ++kill) {
        const pid_t child = start([&] {
            for (int i = 0;; ++i) saveGeneration(file, kill * 1000 + i);
            return false;
        });
        ::usleep(static_cast<useconds_t>(chance() % 8000));
        // Some live until a save of theirs is there, however slow the machine is.
        const std::string before = seen.empty() ? "0" : seen.back();
        for (int i = 0; kill % 20 == 0 && i < 20000 && read(file, "s", "entry0") == before; ++i)
            ::usleep(1000);
        ::kill(child, SIGKILL);
        exitCode(child);
        const std::string generation = read(file, "s", "entry0");
        for (int i = 1; i < 500; ++i)
            ASSERT_EQ(read(file, "s", ("entry" + std::to_string(i)).c_str()), generation);
        seen.push_back(generation);
        // No lock is left.
        ASSERT_EQ(write(file, "alive", "v"), 0u);
    }
    EXPECT_NE(seen.front(), seen.back()) << "no save came through";
}

}  // namespace
