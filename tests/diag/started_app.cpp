// A program for tests to start: a window with its command line as title, until that is closed.
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    const HWND window = CreateWindowExA(0, "STATIC", GetCommandLineA(), WS_POPUP, 0, 0, 10, 10,
                                        nullptr, nullptr, instance, nullptr);
    MSG message;
    while (IsWindow(window) && GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
    return 0;
}
