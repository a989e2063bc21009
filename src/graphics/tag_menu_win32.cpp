// The menu of tag objects, from the library's own resources.
#include "toolbox/graphics.h"
#include "toolbox/messages.h"

// The module that this file was linked into: the library's, or the program's that has it
// statically.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier): the linker's name

namespace {

HMENU loadTagMenu() {
    const auto module = reinterpret_cast<HINSTANCE>(&__ImageBase);
    const WORD language = GMSG::language == GMSG::French
                              ? MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH)
                              : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    const HRSRC found =
        FindResourceExA(module, MAKEINTRESOURCEA(4), "M_WTAGOBJECT", language);  // RT_MENU
    if (!found) return LoadMenuA(module, "M_WTAGOBJECT");
    return LoadMenuIndirectA(LockResource(LoadResource(module, found)));
}

}  // namespace

int MouseDragger::handlePopupMenu(HWND window, POINT point) {
    const HMENU menu = loadTagMenu();
    if (!menu) return 0;
    ClientToScreen(window, &point);
    const BOOL shown = TrackPopupMenu(GetSubMenu(menu, 0), 0, point.x, point.y, 0, window, nullptr);
    DestroyMenu(menu);
    return shown ? 1 : 0;
}
