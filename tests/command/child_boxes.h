// Answers the message boxes of a child process while the test waits for the child to end (Windows
// only): what ends the process is run in a death test, and the boxes are seen from outside.
//
//     ChildBoxes boxes;
//     EXPECT_EXIT(endTheProcess(), ::testing::ExitedWithCode(1), "");
//     EXPECT_EQ(boxes.seen().at(0).text, "Last words");
#pragma once

#include <windows.h>
// after <windows.h>
#include <tlhelp32.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "support/box_answerer.h"
#include "support/window_kit.h"

namespace toolbox::testing {

/// From its construction until seen() is called, every box that a child of this process shows is
/// read and answered by its first button.
class ChildBoxes {
  public:
    ChildBoxes() : watcher_([this] { watch(); }) {}
    ~ChildBoxes() { stop(); }
    ChildBoxes(const ChildBoxes&) = delete;
    ChildBoxes& operator=(const ChildBoxes&) = delete;

    /// The boxes in the order in which they opened.
    [[nodiscard]] const std::vector<SeenBox>& seen() {
        stop();
        return seen_;
    }

  private:
    static bool isOfChild(HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
        PROCESSENTRY32 entry{};
        entry.dwSize = sizeof entry;
        BOOL more = Process32First(all, &entry);
        while (more && entry.th32ProcessID != process) more = Process32Next(all, &entry);
        CloseHandle(all);
        return more && entry.th32ParentProcessID == GetCurrentProcessId();
    }
    static BOOL CALLBACK collect(HWND window, LPARAM boxes) {
        if (isOfClass(window, "#32770") && IsWindowVisible(window) && isOfChild(window))
            reinterpret_cast<std::vector<HWND>*>(boxes)->push_back(window);
        return TRUE;
    }
    void watch() {
        for (std::vector<HWND> handled; !stopped_; ::Sleep(10ul)) look(handled);
    }
    void look(std::vector<HWND>& handled) {
        std::erase_if(handled, [](HWND box) { return !IsWindow(box); });
        std::vector<HWND> boxes;
        EnumWindows(collect, reinterpret_cast<LPARAM>(&boxes));
        for (const HWND box : boxes) {
            if (std::ranges::find(handled, box) != handled.end()) continue;
            const SeenBox shown = readBox(box);
            if (shown.buttons.empty()) continue;  // not filled yet
            handled.push_back(box);
            seen_.push_back(shown);
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(shown.buttons.front()), 0);
        }
    }
    void stop() {
        stopped_ = true;
        if (watcher_.joinable()) watcher_.join();
    }

    std::vector<SeenBox> seen_;
    std::atomic<bool> stopped_ = false;
    std::thread watcher_;
};

}  // namespace toolbox::testing
