// A thread looks for boxes of child processes; the test waits in its own thread.
#include "support/child_boxes.h"

// after <windows.h>
#include <tlhelp32.h>

#include <algorithm>

#include "support/window_kit.h"

namespace toolbox::testing {
namespace {

bool isChild(DWORD process) {
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    bool child = false;
    for (BOOL more = Process32First(all, &entry); more; more = Process32Next(all, &entry))
        child |=
            entry.th32ProcessID == process && entry.th32ParentProcessID == GetCurrentProcessId();
    CloseHandle(all);
    return child;
}

BOOL CALLBACK collectOthersBox(HWND window, LPARAM boxes) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId() && isOfClass(window, "#32770") && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(boxes)->push_back(window);
    return TRUE;
}

}  // namespace

void ChildBoxes::watch() {
    std::vector<HWND> handled;
    while (!stopped_) {
        look(handled);
        ::Sleep(10ul);
    }
}

void ChildBoxes::look(std::vector<HWND>& handled) {
    std::erase_if(handled, [](HWND box) { return !IsWindow(box); });
    std::vector<HWND> boxes;
    EnumWindows(collectOthersBox, reinterpret_cast<LPARAM>(&boxes));
    for (const HWND box : boxes) {
        DWORD process = 0;
        GetWindowThreadProcessId(box, &process);
        if (std::find(handled.begin(), handled.end(), box) != handled.end() || !isChild(process))
            continue;
        const SeenBox shown = readBox(box);
        if (shown.buttons.empty()) continue;  // not filled yet
        handled.push_back(box);
        seen_.push_back(shown);
        PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(shown.buttons.front()), 0);
    }
}

void ChildBoxes::stop() {
    stopped_ = true;
    if (watcher_.joinable()) watcher_.join();
}

}  // namespace toolbox::testing
