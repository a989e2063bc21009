// Saves in a process of their own: killed, and in the middle of another.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "file/block/block_kit.h"
#include "support/temp_folder.h"
#include "support/text_fakes.h"

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
    explicit Saver(const std::string& file, const char* mode = nullptr) {
#if defined(_WIN32)
        char self[MAX_PATH];
        GetModuleFileNameA(nullptr, self, MAX_PATH);
        const auto program = std::filesystem::path(self).replace_filename("block_saver.exe");
        std::string command =
            '"' + program.string() + "\" \"" + file + '"' + (mode ? std::string(" ") + mode : "");
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
            execl(program.c_str(), program.c_str(), file.c_str(), mode, nullptr);
        _exit(3);
#endif
    }

    /// Kills it; false when it had ended by itself.
    bool kill() {
#if defined(_WIN32)
        TerminateProcess(process_.hProcess, 9);
        return end() == 9;
#else
        ::kill(process_, SIGKILL);
        return end() == -SIGKILL;
#endif
    }

    /// Waits for its end; its exit code, or on Linux the signal that ended it, below 0.
    int end() {
#if defined(_WIN32)
        WaitForSingleObject(process_.hProcess, INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(process_.hProcess, &code);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
        return static_cast<int>(code);
#else
        int status = 0;
        if (waitpid(process_, &status, 0) != process_) return 1000;
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
#endif
    }

  private:
#if defined(_WIN32)
    PROCESS_INFORMATION process_{};
#else
    pid_t process_ = -1;
#endif
};

void waitFor(const std::string& name) {
    for (int wait = 0; wait < 20000 && !std::filesystem::exists(name); ++wait)
        std::this_thread::sleep_for(1ms);
}

TEST(SafeSave, LeavesOneWholeFileWheneverItIsKilled) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    for (int i = 0; i < 30; ++i) {
        Saver saver(name);
        waitFor(name + ".started");
        std::this_thread::sleep_for(1700us * (i % 10) + 37us * i);
        ASSERT_TRUE(saver.kill()) << "a save failed";
        ASSERT_TRUE(std::filesystem::remove(name + ".started"));

        const auto blocks = fetched(name, generation(0));
        ASSERT_EQ(blocks.size(), 40u) << i;
        ASSERT_EQ(blocks, generation(static_cast<std::uint32_t>(blocks[0].data[0] - 'a'))) << i;
        EXPECT_EQ(save(name, generation(1), true), 1) << "what a killed save left is no obstacle";
    }
    // An empty file that was left is not told from one just created.
    for (const std::string& each : folder.names())
        if (each.find(".~save-") != std::string::npos) {
            EXPECT_EQ(folder.read(each), "");
        }
}

TEST(SafeSave, IsNotTouchedByAnotherOfTheSameFile) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    Saver slow(name, "wait");
    waitFor(name + ".started");
    EXPECT_EQ(save(name, generation(1), true), 1);
    EXPECT_EQ(fetched(name, generation(1)), generation(1));
    folder.write("plan.dat.go", "");
    EXPECT_EQ(slow.end(), 0);
    EXPECT_EQ(fetched(name, generation(5)), generation(5));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"plan.bak", "plan.dat", "plan.dat.go",
                                                        "plan.dat.started"}));
}

#if defined(_WIN32)
TEST(SafeSave, WaitsForAReaderAMomentAndThenKeepsTheFile) {
    TempFolder folder;
    const std::string name = folder / "plan.dat";
    ASSERT_EQ(save(name, generation(0)), 1);
    TarvFileRead reader;
    ASSERT_EQ(reader.open(name.c_str()), 1);
    std::thread leaving([&] {
        std::this_thread::sleep_for(200ms);
        reader.close();
    });
    EXPECT_EQ(save(name, generation(1), true), 1);
    leaving.join();

    ASSERT_EQ(reader.open(name.c_str()), 1);
    toolbox::testing::RecordingPrompt told;
    EXPECT_EQ(save(name, generation(2), true), 0);
    TarvBlocFile out;
    EXPECT_EQ(reader.getBloc(1000, out), 1);
    const auto names = folder.names();
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(fetched(folder / names[2], generation(2)), generation(2));
    ASSERT_EQ(told.boxes.size(), 1u);
    EXPECT_NE(told.boxes[0].text.find(names[2]), std::string::npos);
}
#endif

}  // namespace
