// A field is what says to dialogs that it has a selection of text.
#include "dialog/keys/focused_field_win32.h"

namespace toolbox::keys {
namespace {

bool takesText(HWND window) {
    return window && IsWindow(window) && IsWindowEnabled(window) &&
           GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() &&
           (SendMessageA(window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0 &&
           (GetWindowLongPtrA(window, GWL_STYLE) & ES_READONLY) == 0;
}

}  // namespace

void FocusedField::look(HWND dialog) {
    const HWND focus = GetFocus();
    if (!focus || focus == dialog || IsChild(dialog, focus)) return;
    field_ = takesText(focus) ? focus : nullptr;
}

bool FocusedField::isThere() const {
    return takesText(field_);
}

bool FocusedField::insert(const CString& text) const {
    if (!isThere()) return false;
    SendMessageA(field_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    return true;
}

}  // namespace toolbox::keys
