// Mouse and keyboard are the machine's: what they do reaches whatever window is there.
#include "hand.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "support/picture.h"
#include "support/window_kit.h"

namespace session {

using toolbox::testing::mouseButton;
using toolbox::testing::pressKey;

namespace {

POINT mouseAt() {
    POINT now{};
    GetCursorPos(&now);
    return now;
}

void step(POINT place) {
    toolbox::testing::moveMouse(GetDesktopWindow(), place);
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

void click(POINT place) {
    step(place);
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    mouseButton(MOUSEEVENTF_LEFTUP);
}

void drag(POINT from, POINT to) {
    constexpr LONG kStep = 6;  // pixels
    step(from);
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    const LONG steps =
        std::max({std::abs(to.x - from.x) / kStep, std::abs(to.y - from.y) / kStep, LONG{1}});
    for (LONG i = 1; i < steps; ++i)
        step({from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
    step(to);
    rest();
    mouseButton(MOUSEEVENTF_LEFTUP);
}

void type(const std::string& text) {
    std::vector<INPUT> events;
    for (const wchar_t unit : wide(text)) {
        INPUT event{};
        event.type = INPUT_KEYBOARD;
        event.ki.wScan = unit;
        event.ki.dwFlags = KEYEVENTF_UNICODE;
        events.push_back(event);
        event.ki.dwFlags |= KEYEVENTF_KEYUP;
        events.push_back(event);
    }
    const auto count = static_cast<UINT>(events.size());
    if (SendInput(count, events.data(), sizeof(INPUT)) != count)
        throw Failure("the system takes no input");
}

void enter(HWND dialog, int field, const std::string& text) {
    const HWND edit = control(dialog, field);
    click(middleOf(areaOf(edit)));
    pressKey(VK_HOME);
    pressKey(VK_END, {VK_SHIFT});
    type(text);
    waitFor("\"" + text + "\" in a field", [&] { return textOf(edit) == text; });
}

void savePicture(const RECT& area, const std::string& file) {
    const toolbox::testing::Picture screen = toolbox::testing::pictureOf(GetDesktopWindow());
    const RECT all{0, 0, screen.width, screen.height};
    RECT seen{};
    IntersectRect(&seen, &area, &all);
    std::ofstream out(std::filesystem::path(wide(file)), std::ios::binary);
    out << "P6\n" << seen.right - seen.left << ' ' << seen.bottom - seen.top << "\n255\n";
    for (LONG y = seen.top; y < seen.bottom; ++y)
        for (LONG x = seen.left; x < seen.right; ++x)
            for (const int shift : {16, 8, 0}) out.put(static_cast<char>(screen.at(x, y) >> shift));
    if (!out.flush()) throw Failure("no picture of the screen: " + file);
}

void savePicture(HWND window, const std::string& file) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    savePicture(areaOf(window), file);
}

int drive(const char* program, const char* folderName,
          const std::function<void(const std::string&, const std::string&)>& run) {
    namespace fs = std::filesystem;
    // Full names, as a file dialog shows them.
    const auto fullName = [](const char* name) {
        return utf8(fs::absolute(name).make_preferred().wstring());
    };
    const std::string folder = fullName(folderName);
    try {
        fs::remove_all(wide(folder));
        fs::create_directories(wide(folder));
        run(fullName(program), folder);
        return 0;
    } catch (const std::exception& failure) {
        std::cout << "FAILED: " << failure.what() << '\n';
        savePicture(areaOf(GetDesktopWindow()), folder + "\\failure.ppm");
        return 1;
    }
}

}  // namespace session
