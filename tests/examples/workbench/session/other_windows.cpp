// Messages to another program have a time limit: one that computes does not answer.
#include "other_windows.h"

#include <algorithm>
#include <sstream>

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

void describeWindow(std::ostream& out, HWND window, int depth) {
    const RECT area = areaOf(window);
    out << std::string(static_cast<std::size_t>(2 * depth), ' ') << classOf(window) << " \""
        << textOf(window) << "\" " << area.left << ',' << area.top << ' ' << area.right - area.left
        << 'x' << area.bottom - area.top << (IsWindowEnabled(window) ? "" : " disabled") << '\n';
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (isShown(child)) describeWindow(out, child, depth + 1);
}

}  // namespace

std::string utf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string out(text.size() * 3, '\0');
    out.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, out.data(),
                            static_cast<int>(out.size()), nullptr, nullptr)));
    return out;
}

std::wstring wide(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring out(text.size(), L'\0');
    out.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, out.data(), length)));
    return out;
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

std::optional<GUITHREADINFO> Program::inputState() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(process_.dwThreadId, &info)) return std::nullopt;
    return info;
}

HWND Program::focus() const {
    const HWND front = GetForegroundWindow();
    if (!front || processOf(front) != process_.dwProcessId) return nullptr;
    const auto state = inputState();
    return state ? state->hwndFocus : nullptr;
}

bool Program::isInMenu() const {
    const auto state = inputState();
    return state && (state->flags & GUI_INMENUMODE);
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

std::string Program::describe() const {
    std::ostringstream out;
    if (!isRunning()) out << "the program has ended with " << exitCode() << '\n';
    for (const HWND window : windows()) describeWindow(out, window, 0);
    if (const HWND focused = focus())
        out << "the keys go to " << classOf(focused) << " \"" << textOf(focused) << "\"\n";
    return out.str();
}

}  // namespace session
