// Words and classes of windows, and windows by title.
#include <cstring>

#include "toolbox/processes.h"

namespace {

struct TitleSearch {
    const char* text;
    HWND except;
    HWND found;
};

BOOL CALLBACK compareTitle(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<TitleSearch*>(parameter);
    char title[80 + 1] = "";
    GetWindowTextA(window, title, sizeof title);
    if (window == search.except || !std::strstr(title, search.text)) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

void SetWindowPtr(HWND window, void* pointer) {
    SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(pointer));
}

void* GetWindowPtr(HWND window) {
    return reinterpret_cast<void*>(GetWindowLongPtrA(window, 0));
}

void SetWindowStyle(HWND window, int bits, int on) {
    const auto mask = static_cast<ULONG_PTR>(static_cast<UINT>(bits));
    const ULONG_PTR style = GetClassLongPtrA(window, GCL_STYLE);
    SetClassLongPtrA(window, GCL_STYLE, static_cast<LONG_PTR>(on ? style | mask : style & ~mask));
}

void SetWindowIcon(HWND window, int icon) {
    SetClassLongPtrA(window, GCLP_HICON, icon);
}

HWND FindWin(const char* text, HWND except) {
    if (!text) return nullptr;
    TitleSearch search{text, except, nullptr};
    EnumWindows(compareTitle, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

int IsAppRunning(const toolbox::RunningApp* app) {
    if (!app || !IsWindow(app->window)) return 0;
    const DWORD thread = GetWindowThreadProcessId(app->window, nullptr);
    return thread != 0 && thread == app->threadId ? 1 : 0;
}
