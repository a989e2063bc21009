// Starting real programs, and browsing for them in the real file dialog.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.h"
#include "support/window_kit.h"
#include "toolbox/messages.h"
#include "toolbox/processes.h"

namespace {

using namespace std::string_literals;
using namespace toolbox::testing;

constexpr int kFileName = 1152;
constexpr int kFolders = 1121;
constexpr int kFoundText = 1281;

/// Place of a folder in the file dialog's list, where some systems put it between brackets.
LRESULT placeOf(HWND folders, const std::string& name) {
    const auto find = [&](const std::string& text) {
        return SendMessageA(folders, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(text.c_str()));
    };
    return find(name) == LB_ERR ? find('[' + name + ']') : find(name);
}

/// The program to start lies in the folder "here" of the current folder.
struct ExecAppTest : ::testing::Test {
    ExecAppTest() {
        char self[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, self, sizeof self);
        std::filesystem::create_directory(folder / "here");
        std::filesystem::copy_file(std::filesystem::path(self).parent_path() / "started_app.exe",
                                   path);
        GetCurrentDirectoryA(sizeof before, before);
        SetCurrentDirectoryA(folder.path().c_str());
        WriteProfileStringA("programs", kName, nullptr);
        GMSG::setInstance(GetModuleHandleA(nullptr));
    }
    ~ExecAppTest() override {
        if (started.hProcess) closeStarted();
        SetCurrentDirectoryA(before);
        WriteProfileStringA("programs", kName, nullptr);
        GMSG::setInstance(nullptr);
    }

    /// Closes the window of the program.
    void closeStarted() {
        HWND window = nullptr;
        EXPECT_TRUE(pumpUntil([&] { return (window = FindWin(title, nullptr)) != nullptr; }));
        const toolbox::RunningApp app{window, started.dwThreadId};
        EXPECT_EQ(IsAppRunning(&app), 1);
        PostMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(WaitForSingleObject(started.hProcess, 10000), WAIT_OBJECT_0);
        EXPECT_EQ(IsAppRunning(&app), 0);
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
        started = {};
    }
    int exec(const char* program) { return ExecApp(nullptr, program, title, &started); }
    static std::string remembered() {
        char text[MAX_PATH] = "";
        GetProfileStringA("programs", kName, "", text, sizeof text);
        return text;
    }

    static constexpr char kName[] = "TB_TRIED_APP";
    TempFolder folder;
    std::string path = folder / "here\\tb_tried_app.exe";
    char title[40] = "started by a test of ExecApp";
    char before[MAX_PATH] = "";
    PROCESS_INFORMATION started{};
};

TEST_F(ExecAppTest, StartsAProgramByItsPathOrWhereItWasFoundBefore) {
    WriteProfileStringA("programs", kName, path.c_str());
    for (const std::string& name : {path, folder / "here\\tb_tried_app", "tb_tried_app"s}) {
        ASSERT_EQ(exec(name.c_str()), 1);
        closeStarted();
    }
}

TEST_F(ExecAppTest, RefusesOtherExtensionsAtOnce) {
    started.dwProcessId = 5;
    for (const char* name : {"EDIT.COM", "c:\\x\\y.bat", "tb_tried_app.", "a.exe.txt"})
        EXPECT_EQ(exec(name), 3) << name;
    EXPECT_EQ(started.dwProcessId, 0u);
}

/// Answers the question whether to browse.
DialogScript::Step answer(int button) {
    return [button](HWND box) { PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0); };
}
TEST_F(ExecAppTest, FindsAProgramWithTheUserAndRemembersIt) {
    const auto notFound = [](HWND dialog) {
        return textOf(dialog, kFoundText) == "(not found)" &&
               !IsWindowEnabled(GetDlgItem(dialog, IDOK));
    };
    const auto found = [](HWND dialog) {
        return textOf(dialog, kFoundText) == "(found)" && IsWindowEnabled(GetDlgItem(dialog, IDOK));
    };
    DialogScript script;
    script.run(answer(IDYES))
        .waitUntil("not found", notFound)
        .run([](HWND dialog) {
            EXPECT_EQ(lstrcmpiA(textOf(dialog, kFileName).c_str(), "tb_tried_app.exe"), 0);
            const HWND folders = GetDlgItem(dialog, kFolders);
            SendMessageA(folders, LB_SETCURSEL, static_cast<WPARAM>(placeOf(folders, "here")), 0);
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(kFolders, LBN_DBLCLK),
                         reinterpret_cast<LPARAM>(folders));
            // Going to another folder puts the filter into the field.
            setText(dialog, kFileName, "tb_tried_ap");
        })
        .waitUntil("not found as typed", notFound)
        .run([](HWND dialog) { setText(dialog, kFileName, "tb_tried_app.exe"); })
        .waitUntil("found as typed", found)
        .run([](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDOK, 0); });
    for (int i = 0; i < 2; ++i) {  // asks once
        ASSERT_EQ(exec("tb_tried_app"), 1);
        closeStarted();
        EXPECT_EQ(lstrcmpiA(remembered().c_str(), path.c_str()), 0) << remembered();
    }
}

}  // namespace
