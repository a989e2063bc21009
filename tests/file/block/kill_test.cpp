// Saves that are killed, in a process of their own.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace block_kit;
using namespace std::chrono_literals;

namespace {

/// The program block_saver, which lies beside this one, at work on a file.
class Saver {
  public:
    explicit Saver(const std::string& file) {
#if defined(_WIN32)
        char self[MAX_PATH];
        GetModuleFileNameA(nullptr, self, MAX_PATH);
        const auto program = std::filesystem::path(self).replace_filename("block_saver.exe");
        std::string command = '"' + program.string() + "\" \"" + file + '"';
        STARTUPINFOA start{};
        start.cb = sizeof start;
        if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                            nullptr, nullptr, &start, &process_))
            ADD_FAILURE() << command << " does not start";
#else
        const auto self = std::filesystem::read_symlink("/proc/self/exe");
        const std::string program = self.parent_path() / "block_saver";
        process_ = fork();
        if (process_ != 0) return;
        if (std::freopen("/dev/null", "w", stdout))
            execl(program.c_str(), program.c_str(), file.c_str(), nullptr);
        _exit(3);
#endif
    }

    /// Kills it; false when it had ended by itself.
    bool kill() {
#if defined(_WIN32)
        TerminateProcess(process_.hProcess, 9);
        WaitForSingleObject(process_.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(process_.hProcess, &code);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
        return code == 9;
#else
        int status = 0;
        return ::kill(process_, SIGKILL) == 0 && waitpid(process_, &status, 0) == process_ &&
               WIFSIGNALED(status);
#endif
    }

  private:
#if defined(_WIN32)
    PROCESS_INFORMATION process_{};
#else
    pid_t process_ = -1;
#endif
};

TEST(SafeSave, LeavesOneWholeFileWheneverItIsKilled) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    for (int i = 0; i < 30; ++i) {
        Saver saver(name);
        for (int wait = 0; wait < 20000 && folder.read("plan.dat.started") == "<none>"; ++wait)
            std::this_thread::sleep_for(1ms);
        std::this_thread::sleep_for(1700us * (i % 10) + 37us * i);
        ASSERT_TRUE(saver.kill()) << "a save failed";
        ASSERT_TRUE(std::filesystem::remove(name + ".started"));

        const auto blocks = fetched(name, generation(0));
        ASSERT_EQ(blocks.size(), 40u) << i;
        ASSERT_EQ(blocks, generation(static_cast<std::uint32_t>(blocks[0].data[0] - 'a'))) << i;
        EXPECT_EQ(save(name, generation(1), true), 1) << "what a killed save left is no obstacle";
    }
}

}  // namespace
