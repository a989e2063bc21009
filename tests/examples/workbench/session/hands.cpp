// After each act the hand waits until the system has it, and rests where a program moves the mouse.
#include "hands.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "other_windows.h"

namespace session {
namespace {

void send(std::vector<INPUT> events) {
    const auto count = static_cast<UINT>(events.size());
    if (SendInput(count, events.data(), sizeof(INPUT)) != count)
        throw Failure("the system takes no input");
}

INPUT mouse(DWORD flags) {
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    return event;
}

INPUT key(WORD code, DWORD flags) {
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = code;
    event.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    event.ki.dwFlags = flags;
    return event;
}

INPUT character(wchar_t unit, DWORD flags) {
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wScan = unit;
    event.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    return event;
}

/// Absolute places are parts of the screen, in 65536ths.
LONG part(LONG place, int metric) {
    const LONG size = GetSystemMetrics(metric);
    return (place * 65536 + size - 1) / size;
}

void step(POINT place) {
    INPUT event = mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    event.mi.dx = part(place.x, SM_CXSCREEN);
    event.mi.dy = part(place.y, SM_CYSCREEN);
    send({event});
}

POINT mouseAt() {
    POINT now{};
    GetCursorPos(&now);
    return now;
}

/// Programs pull the mouse to the points of a grid.
bool isNear(POINT a, POINT b) {
    constexpr LONG kReach = 8;  // pixels
    return std::abs(a.x - b.x) <= kReach && std::abs(a.y - b.y) <= kReach;
}

/// Waits until a program that pulls the mouse after itself has caught up with it: the hand rests.
void rest() {
    constexpr ULONGLONG kRest = 100;  // ms
    POINT last = mouseAt();
    ULONGLONG since = GetTickCount64();
    waitFor("the mouse to rest", [&] {
        const POINT now = mouseAt();
        if (now.x != last.x || now.y != last.y) since = GetTickCount64();
        last = now;
        return GetTickCount64() - since >= kRest;
    });
}

}  // namespace

void moveTo(POINT place) {
    step(place);
    waitFor("the mouse where it was moved to", [&] { return isNear(mouseAt(), place); });
}

void click(POINT place) {
    moveTo(place);
    send({mouse(MOUSEEVENTF_LEFTDOWN), mouse(MOUSEEVENTF_LEFTUP)});
}

void doubleClick(POINT place) {
    click(place);
    send({mouse(MOUSEEVENTF_LEFTDOWN), mouse(MOUSEEVENTF_LEFTUP)});
}

void drag(POINT from, POINT to) {
    constexpr LONG kStep = 6;  // pixels
    moveTo(from);
    send({mouse(MOUSEEVENTF_LEFTDOWN)});
    const LONG steps =
        std::max({std::abs(to.x - from.x) / kStep, std::abs(to.y - from.y) / kStep, LONG{1}});
    for (LONG i = 1; i < steps; ++i)
        step({from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
    moveTo(to);
    rest();
    send({mouse(MOUSEEVENTF_LEFTUP)});
}

void press(WORD code, std::initializer_list<WORD> held) {
    std::vector<INPUT> events;
    for (const WORD modifier : held) events.push_back(key(modifier, 0));
    events.push_back(key(code, 0));
    events.push_back(key(code, KEYEVENTF_KEYUP));
    for (auto modifier = std::rbegin(held); modifier != std::rend(held); ++modifier)
        events.push_back(key(*modifier, KEYEVENTF_KEYUP));
    send(std::move(events));
}

void type(const std::string& text) {
    std::vector<INPUT> events;
    for (const wchar_t unit : wide(text)) {
        events.push_back(character(unit, 0));
        events.push_back(character(unit, KEYEVENTF_KEYUP));
    }
    if (!events.empty()) send(std::move(events));
}

}  // namespace session
