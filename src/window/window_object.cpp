// Objects bound to windows.
#include "toolbox/windowing.h"
#include "window/window_dict.h"

namespace {

using toolbox::window::Pending;

/// The procedure of windows without object.
WNDPROC systemProcedure(HWND window) {
    const bool isDocument = (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_MDICHILD) != 0;
    return isDocument ? DefMDIChildProcA : DefWindowProcA;
}

}  // namespace

WindowObject::~WindowObject() {
    Pending::forget(*this);
    if (WindowDict::find(window_) != this) return;
    toolbox::window::unbind(window_);
    SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(systemProcedure(window_)));
}

HINSTANCE WindowObject::getLibraryInstance() {
    HMODULE module = nullptr;
    GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCSTR>(&StdWinProc), &module);
    return module;
}

int WindowObject::create(const char* className, const char* title, unsigned long style, int x,
                         int y, int cx, int cy, HWND parent, HMENU menu, void* param) {
    return createWindow(0, className, title, style, x, y, cx, cy, parent, menu, param);
}

int WindowObject::createWindow(unsigned long extendedStyle, const char* className,
                               const char* title, unsigned long style, int x, int y, int cx, int cy,
                               HWND parent, HMENU menu, void* param) {
    if (window_ || !toolbox::window::hasDictionary()) return 0;
    Pending pending(*this);
    return CreateWindowExA(extendedStyle, className, title, style, x, y, cx, cy, parent, menu,
                           getLibraryInstance(), param) != nullptr;
}

LRESULT WindowObject::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window_, message, wParam, lParam);
}

LRESULT CALLBACK WindowObject::StdWinProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowObject* object = WindowDict::find(window);
    if (!object) {
        object = Pending::take();
        if (!object) return systemProcedure(window)(window, message, wParam, lParam);
        toolbox::window::bind(window, *object);
        object->window_ = window;
    }
    const LRESULT result = object->handleMessage(message, wParam, lParam);
    // The handler may have deleted the object, which took it out of the dictionary.
    if (message == WM_NCDESTROY) delete toolbox::window::unbind(window);
    return result;
}

int WindowObjectEx::create(unsigned long extendedStyle, const char* className, const char* title,
                           unsigned long style, int x, int y, int cx, int cy, HWND parent,
                           HMENU menu, void* param) {
    return createWindow(extendedStyle, className, title, style, x, y, cx, cy, parent, menu, param);
}

MDIWindowObject::~MDIWindowObject() {
    MDI* const frame = MDIApplication::getPMDI();
    if (getHWND() && frame) frame->notifyMDIChildDestruction(getHWND());
}

int MDIWindowObject::create(const char* className, const char* title, unsigned long style, short x,
                            short y, short cx, short cy, LPARAM param) {
    MDI* const frame = MDIApplication::getPMDI();
    if (getHWND() || !frame || !toolbox::window::hasDictionary()) return 0;
    Pending pending(*this);
    return frame->createMDIChild(className, title, style, x, y, cx, cy, param) != nullptr;
}

void MDIWindowObject::destroy() {
    MDI* const frame = MDIApplication::getPMDI();
    if (getHWND() && frame) frame->destroyMDIChild(getHWND());
}

LRESULT MDIWindowObject::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefMDIChildProcA(getHWND(), message, wParam, lParam);
}
