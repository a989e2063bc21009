// Profile files where the library itself reads and replaces them.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <tuple>
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

    /// Runs `work` in a process of its own.
    static pid_t start(const std::function<void()>& work) {
        const pid_t child = ::fork();
        if (child != 0) return child;
        work();
        ::_exit(0);
    }
};

TEST_F(PosixProfile, AFailedSaveLeavesTheOldFileWhole) {
    const std::string file = profileHolding("[s]\nk=1\n");
    ::chmod(file.c_str(), 0444);
    EXPECT_EQ(write(file, "k", "v"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder_.read(file), "[s]\nk=1\n");

    // What is no file of settings is not read, and not replaced. 300 GB that take no room are none.
    ::mkfifo((folder_ / "pipe.ini").c_str(), 0600);
    folder_.write("sparse.ini", "");
    std::filesystem::resize_file(folder_ / "sparse.ini", 300'000'000'000);
    for (const auto& [name, error] :
         {std::pair<const char*, toolbox::platform::ErrorCode>{"pipe.ini", ERROR_ACCESS_DENIED},
          {"sparse.ini", ERROR_FILE_TOO_LARGE}}) {
        EXPECT_EQ(write(folder_ / name, "k", "v"), error) << name;
        EXPECT_EQ(read(folder_ / name, "s", "k"), "<none>") << name;
    }
    EXPECT_EQ(std::filesystem::file_size(folder_ / "sparse.ini"), 300'000'000'000u);
}

TEST_F(PosixProfile, ReplacesWhatALinkLeadsToAndWritesNothingElse) {
    const std::string kept = folder_.write("kept", "kept");
    const std::string file = folder_.write("file.ini", "[s]\nk=1\n");
    ::chmod(file.c_str(), 06640);
    const std::string link = folder_ / "link.ini";
    std::filesystem::create_symlink(file, link);
    // Something lies under the name that the new file would have.
    std::filesystem::create_symlink(kept, folder_ / ".file.ini.saving");
    EXPECT_EQ(write(link, "k", "2"), 0u);
    std::filesystem::create_directory(folder_ / ".file.ini.saving");
    EXPECT_EQ(write(link, "k", "3"), 0u);
    EXPECT_EQ(folder_.read("file.ini"), "[s]\nk=3\n");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(folder_.read("kept"), "kept");
    struct stat facts {};
    ::lstat(file.c_str(), &facts);
    EXPECT_EQ(facts.st_mode & 07777u, 0640u) << "whatever else the old file had";
    const std::vector<std::string> names{".file.ini.saving", "file.ini", "kept", "link.ini"};
    EXPECT_EQ(folder_.names(), names);
}

TEST_F(PosixProfile, SeesAtOnceWhatOthersChangeInPlace) {
    const std::string file = profileHolding("[s]\nk=000\n");
    std::fstream other(file);
    for (int i = 100; i < 400; ++i) {
        other.seekp(6) << i << std::flush;  // same size, often the same file time
        ASSERT_EQ(read(file, "s", "k"), std::to_string(i));
    }
}

TEST_F(PosixProfile, SavesOfSeveralProcessesLoseNoEntry) {
    const std::string file = folder_ / "shared.ini";  // they also race to create it
    std::vector<std::string> entries;
    for (int i = 0; i < 160; ++i) entries.push_back("entry" + std::to_string(i));
    for (std::size_t process = 0; process < 4; ++process)
        start([&] {
            for (std::size_t i = process; i < entries.size(); i += 4) write(file, entries[i], "v");
        });
    while (::wait(nullptr) > 0) continue;
    for (const std::string& entry : entries)
        EXPECT_EQ(read(file, "s", entry.c_str()), "v") << entry;
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"shared.ini"});
}

TEST_F(PosixProfile, AKilledProcessLeavesTheOldFileOrTheNew) {
    const std::string file = folder_ / "killed.ini";
    std::vector<std::string> names;
    for (int i = 0; i < 500; ++i) names.push_back("entry" + std::to_string(i));
    // All entries of one generation, so that a mix of two shows.
    const auto save = [&](int generation) {
        const std::string text = std::to_string(generation);
        std::vector<ProfileEntry> entries;
        for (const std::string& name : names) entries.push_back({name.c_str(), text.c_str()});
        profiles().writeMany(file.c_str(), "s", entries);
    };
    save(0);
    std::mt19937 chance(1);
    std::string seen = "0";
    for (int kill = 1; kill <= 60; ++kill) {
        const pid_t child = start([&] {
            for (int i = 0;; ++i) save(kill * 1000 + i);
        });
        ::usleep(static_cast<useconds_t>(chance() % 8000));
        // Some live until a save of theirs is there, however slow the machine is.
        for (int i = 0; kill % 20 == 0 && i < 20000 && read(file, "s", "entry0") == seen; ++i)
            ::usleep(1000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        seen = read(file, "s", "entry0");
        for (const std::string& name : names) ASSERT_EQ(read(file, "s", name.c_str()), seen);
        ASSERT_EQ(write(file, "alive", "v"), 0u) << "no lock is left";
    }
    EXPECT_GE(std::stoi(seen), 60000) << "no save came through";
}

}  // namespace
