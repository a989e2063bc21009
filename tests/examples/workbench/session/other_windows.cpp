// Messages to another program have a time limit: one that computes does not answer.
#include "other_windows.h"

#include <algorithm>
#include <filesystem>

namespace session {
namespace {

constexpr UINT kAnswerTime = 1000;  // ms; a program that computes does not answer at all

BOOL CALLBACK collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

DWORD processOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

}  // namespace

std::string utf8(const std::wstring& text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

std::wstring wide(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

std::string textOf(HWND window) {
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, kAnswerTime, &length))
        return {};
    std::wstring text(length + 1, L'\0');
    if (!SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                             SMTO_NORMAL, kAnswerTime, &length))
        return {};
    text.resize(std::min<std::size_t>(length, text.size() - 1));
    return utf8(text);
}

std::string classOf(HWND window) {
    wchar_t name[128] = L"";
    GetClassNameW(window, name, 128);
    return utf8(name);
}

bool isShown(HWND window) {
    return IsWindowVisible(window) && !IsIconic(window);
}

RECT areaOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

RECT clientOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

POINT middleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

std::vector<HWND> childrenOf(HWND window) {
    std::vector<HWND> found;
    EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND control(HWND dialog, int id) {
    for (const HWND child : childrenOf(dialog))
        if (GetWindowLongPtrW(child, GWLP_ID) == id) return child;
    throw Failure("no control " + std::to_string(id) + " in \"" + textOf(dialog) + '"');
}

Program::Program(const std::string& commandLine) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    std::wstring line = wide(commandLine);
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process_))
        throw Failure("cannot be started: " + commandLine);
}

Program::~Program() {
    if (isRunning()) TerminateProcess(process_.hProcess, 99);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

std::vector<HWND> Program::windows() const {
    std::vector<HWND> found;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&found));
    std::erase_if(found, [&](HWND window) {
        return processOf(window) != process_.dwProcessId || !isShown(window);
    });
    return found;
}

HWND Program::find(const std::string& className) const {
    const std::vector<HWND> all = windows();
    const auto found = std::ranges::find_if(
        all, [&](HWND window) { return IsWindowEnabled(window) && classOf(window) == className; });
    return found == all.end() ? nullptr : *found;
}

HWND Program::waitForDialog(const std::string& what) const {
    return waitFor(what, [&]() -> HWND {
        if (!isRunning()) throw Failure("the program has ended instead of showing " + what);
        const HWND focused = focus();
        const HWND window = focused ? GetAncestor(focused, GA_ROOT) : nullptr;
        return window && classOf(window) == "#32770" && isShown(window) ? window : nullptr;
    });
}

void Program::waitUntilGone(const std::string& what, HWND window) const {
    waitFor("the end of " + what, [&] { return !IsWindow(window) || !IsWindowVisible(window); });
}

HWND Program::focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    const HWND front = GetForegroundWindow();
    const bool isOurs = front && processOf(front) == process_.dwProcessId;
    return isOurs && GetGUIThreadInfo(process_.dwThreadId, &info) ? info.hwndFocus : nullptr;
}

bool Program::isRunning() const {
    return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

DWORD Program::exitCode() const {
    waitFor("the end of the program", [&] { return !isRunning(); });
    DWORD code = 0;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

}  // namespace session
