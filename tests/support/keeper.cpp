// Keeps Wine's desktop alive between tests: a window that is never shown and its message loop.
// Ends with the Wine server.
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    if (!CreateWindowExA(0, "STATIC", "keeper", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, instance,
                         nullptr))
        return 1;
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
    return 0;
}
