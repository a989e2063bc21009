// An attached object is a subclass of its window, with its own address for the subclass's number:
// any number of them, and the application's own, may be on one window. One more that does nothing
// stays until the window ends: when the last of them is removed, some versions of the common
// controls put back the procedure that the window began with, and lose the application's.
#include "toolbox/controls.h"

namespace {

using toolbox::detail::Watch;

UINT_PTR numberOf(const TvControl* control) {
    return reinterpret_cast<UINT_PTR>(control);
}

constexpr UINT_PTR kKeeper = 1;

LRESULT CALLBACK keeper(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                        DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, keeper, kKeeper);
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

TvControl::~TvControl() {
    leave();
}

int TvControl::attach(HWND control) {
    detach();
    char name[64] = "";
    // Of a class that was made from a system's one, that one's name.
    if (!control || !RealGetWindowClassA(control, name, sizeof name) || !accepts(name)) return 0;
    const auto self = reinterpret_cast<DWORD_PTR>(this);
    if (!SetWindowSubclass(control, keeper, kKeeper, 0) ||
        !SetWindowSubclass(control, procedure, numberOf(this), self))
        return 0;
    window_ = control;
    const Watch there(life_);
    attached();
    return !there.gone() && window_ == control;
}

int TvControl::attach(HWND dialog, int id) {
    return attach(GetDlgItem(dialog, id));
}

void TvControl::detach() {
    if (!window_) return;
    const Watch self(life_);
    detaching();
    if (!self.gone()) leave();
}

void TvControl::leave() {
    if (window_) RemoveWindowSubclass(window_, procedure, numberOf(this));
    window_ = nullptr;
}

LRESULT TvControl::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return pass(message, wParam, lParam);
}

LRESULT TvControl::pass(UINT message, WPARAM wParam, LPARAM lParam) {
    return window_ ? DefSubclassProc(window_, message, wParam, lParam) : 0;
}

int TvControl::accepts(const char*) const {
    return 1;
}

LRESULT CALLBACK TvControl::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR, DWORD_PTR object) {
    auto* const self = reinterpret_cast<TvControl*>(object);
    if (message != WM_NCDESTROY) return self->handleMessage(message, wParam, lParam);
    self->detach();
    return DefSubclassProc(window, message, wParam, lParam);
}
