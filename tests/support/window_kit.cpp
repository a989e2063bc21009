// Input goes through the system, as from keyboard and mouse; scripts advance at the ticks of a
// timer.
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace toolbox::testing {
namespace {

constexpr ULONGLONG kPatience = 15000;  // ms; a step takes some 20 on a machine at rest
constexpr UINT kTick = 10;              // ms

DialogScript* active = nullptr;

BOOL CALLBACK collectDialog(HWND window, LPARAM dialogs) {
    if (isOfClass(window, "#32770") && IsWindowVisible(window) && IsWindowEnabled(window))
        reinterpret_cast<std::vector<HWND>*>(dialogs)->push_back(window);
    return TRUE;
}

BOOL CALLBACK takeTip(HWND window, LPARAM text) {
    if (isOfClass(window, "tooltips_class32") && IsWindowVisible(window))
        *reinterpret_cast<std::string*>(text) = textOf(window);
    return TRUE;
}

INPUT mouseEvent(DWORD flags) {
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    return event;
}

void send(std::vector<INPUT> events) {
    const auto count = static_cast<UINT>(events.size());
    EXPECT_EQ(SendInput(count, events.data(), sizeof(INPUT)), count);
}

INPUT keyEvent(WORD key, DWORD flags) {
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    event.ki.dwFlags = flags;
    return event;
}

}  // namespace

std::string textOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool isOfClass(HWND window, const char* name) {
    char found[64] = "";
    GetClassNameA(window, found, sizeof found);
    return lstrcmpiA(found, name) == 0;
}

std::string textOf(HWND dialog, int control) {
    return textOf(GetDlgItem(dialog, control));
}

void setText(HWND dialog, int control, const char* text) {
    EXPECT_TRUE(SetDlgItemTextA(dialog, control, text)) << "no control " << control;
}

int focusedControl() {
    const HWND focus = GetFocus();
    return focus ? GetDlgCtrlID(focus) : 0;
}

void pumpMessages() {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

bool pumpUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    for (;;) {
        pumpMessages();
        if (condition()) return true;
        if (GetTickCount64() > end) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kTick, QS_ALLINPUT);
    }
}

void pressKey(WORD key, const std::vector<WORD>& modifiers) {
    std::vector<INPUT> events;
    for (const WORD modifier : modifiers) events.push_back(keyEvent(modifier, 0));
    events.push_back(keyEvent(key, 0));
    events.push_back(keyEvent(key, KEYEVENTF_KEYUP));
    for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier)
        events.push_back(keyEvent(*modifier, KEYEVENTF_KEYUP));
    send(std::move(events));
}

void typeText(const std::string& text) {
    for (const char c : text) {
        const auto key = static_cast<WORD>(VkKeyScanA(c));
        constexpr WORD kShift = 0x100;
        if (key & kShift)
            pressKey(key & 0xFF, {VK_SHIFT});
        else
            pressKey(key & 0xFF);
    }
}

void moveMouse(HWND window, POINT point) {
    ClientToScreen(window, &point);
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    INPUT event = mouseEvent(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    // In parts of 65536 of the screen, rounded up so that rounding down gives the pixel.
    event.mi.dx = (point.x * 65536 + width - 1) / width;
    event.mi.dy = (point.y * 65536 + height - 1) / height;
    send({event});
    pumpMessages();
}

void mouseButton(DWORD event) {
    send({mouseEvent(event)});
    pumpMessages();
}

void clickOn(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    EXPECT_TRUE(SetCursorPos((area.left + area.right) / 2, (area.top + area.bottom) / 2));
    send({mouseEvent(MOUSEEVENTF_LEFTDOWN), mouseEvent(MOUSEEVENTF_LEFTUP)});
}

std::vector<HWND> openDialogs() {
    std::vector<HWND> dialogs;
    EnumThreadWindows(GetCurrentThreadId(), collectDialog, reinterpret_cast<LPARAM>(&dialogs));
    return dialogs;
}

std::string shownTip() {
    std::string text;
    EnumThreadWindows(GetCurrentThreadId(), takeTip, reinterpret_cast<LPARAM>(&text));
    return text;
}

HandleMarks handleMarks() {
    // The low word of a handle is its place in the table. So many at once are more than what is
    // free below the mark for other reasons.
    constexpr std::size_t kAtOnce = 100;
    HandleMarks marks;
    std::vector<HWND> windows(kAtOnce);
    std::vector<HBRUSH> brushes(kAtOnce);
    for (std::size_t i = 0; i < kAtOnce; ++i) {
        windows[i] =
            CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        brushes[i] = CreateSolidBrush(RGB(1, 2, i));
        marks.windows = std::max<int>(marks.windows, LOWORD(windows[i]));
        marks.drawing = std::max<int>(marks.drawing, LOWORD(brushes[i]));
    }
    for (const HWND window : windows) DestroyWindow(window);
    for (const HBRUSH brush : brushes) DeleteObject(brush);
    return marks;
}

void expectNoHandlesLeft(int times, const std::function<void()>& action) {
    for (int i = 0; i < 5; ++i) action();
    const HandleMarks before = handleMarks();
    for (int i = 0; i < times; ++i) action();
    const HandleMarks after = handleMarks();
    EXPECT_LE(after.windows - before.windows, times / 4) << "windows are left behind";
    EXPECT_LE(after.drawing - before.drawing, times / 4) << "drawing objects are left behind";
}

DialogScript::DialogScript() : timer_(SetTimer(nullptr, 0, kTick, tick)) {
    EXPECT_EQ(active, nullptr) << "one script at a time";
    active = this;
}

DialogScript::~DialogScript() {
    KillTimer(nullptr, timer_);
    active = nullptr;
    for (const Entry& step : steps_) ADD_FAILURE() << "not run: " << step.what;
}

DialogScript& DialogScript::run(Step step) {
    return waitUntil("step", [step = std::move(step)](HWND dialog) {
        step(dialog);
        return true;
    });
}

DialogScript& DialogScript::waitUntil(const char* what, Condition condition) {
    steps_.push_back({what, std::move(condition)});
    return *this;
}

void CALLBACK DialogScript::tick(HWND, UINT, UINT_PTR, DWORD) {
    if (active) active->advance();
}

void DialogScript::advance() {
    const std::vector<HWND> dialogs = openDialogs();
    if (dialogs.empty()) {
        patience_ = 0;
        return;
    }
    if (patience_ == 0) patience_ = GetTickCount64() + kPatience;
    if (!steps_.empty()) {
        // Out of the list while it runs: a step that opens a box is not run again inside it.
        Entry step = std::move(steps_.front());
        steps_.pop_front();
        if (step.done(dialogs.front())) {
            patience_ = 0;
            return;
        }
        if (GetTickCount64() <= patience_) {
            steps_.push_front(std::move(step));
            return;
        }
        ADD_FAILURE() << "waited in vain: " << step.what;
        steps_.clear();
    } else if (GetTickCount64() <= patience_) {
        return;  // what the last step did is still under way
    }
    ADD_FAILURE() << "dialog left open: " << textOf(dialogs.front());
    PostMessageA(dialogs.front(), WM_COMMAND, IDCANCEL, 0);
}

}  // namespace toolbox::testing
