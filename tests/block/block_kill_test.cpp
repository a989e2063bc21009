// Saves that are killed, in a process of their own.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "block/block_kit.h"
#include "support/temp_folder.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace block_kit;

namespace {

constexpr char kNameVariable[] = "TOOLBOX_TEST_SAVED_FILE";

std::vector<Block> generation(std::uint32_t number) {
    std::vector<Block> blocks;
    for (std::uint32_t i = 0; i < 40; ++i)
        blocks.push_back(
            {1000 + i, std::string(1000 * i + 4, static_cast<char>('a' + number % 26))});
    return blocks;
}

/// Not a test: what the killed process does.
TEST(Saver, DISABLED_SavesWithoutEnd) {
    const char* name = std::getenv(kNameVariable);
    ASSERT_NE(name, nullptr);
    for (std::uint32_t number = 0; save(name, generation(number), true); ++number) {
    }
}

/// Runs the saver for a while and kills it.
void saveAndKill(const std::string& name, std::chrono::microseconds after) {
#if defined(_WIN32)
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    SetEnvironmentVariableA(kNameVariable, name.c_str());
    std::string command =
        std::string("\"") + program + "\" --gtest_also_run_disabled_tests --gtest_filter=Saver.*";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION child{};
    ASSERT_TRUE(CreateProcessA(program, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                               nullptr, nullptr, &start, &child));
    std::this_thread::sleep_for(std::chrono::milliseconds(40) + after);
    TerminateProcess(child.hProcess, 9);
    WaitForSingleObject(child.hProcess, INFINITE);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
#else
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (!std::freopen("/dev/null", "w", stdout)) _exit(1);
        for (std::uint32_t number = 0; save(name, generation(number), true); ++number) {
        }
        _exit(2);
    }
    std::this_thread::sleep_for(after);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "a save failed";
#endif
}

TEST(SafeSave, LeavesOneWholeFileWheneverItIsKilled) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    for (int i = 0; i < 30; ++i) {
        saveAndKill(name, std::chrono::microseconds(1700 * (i % 10) + 37 * i));
        const auto blocks = fetched(name, generation(0));
        ASSERT_EQ(blocks.size(), 40u) << i;
        const auto number = static_cast<std::uint32_t>(blocks[0].data[0] - 'a');
        ASSERT_EQ(blocks, generation(number)) << i;
        EXPECT_EQ(save(name, generation(1), true), 1) << "what a killed save left is no obstacle";
    }
}

}  // namespace
