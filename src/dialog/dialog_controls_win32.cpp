// A dialog's state and its controls, and names of resources.
#include <string>
#include <utility>

#include "dialog/dialog_state_win32.h"

namespace toolbox {

ResourceName::ResourceName(const char* name) {
    if (IS_INTRESOURCE(name))
        number_ = static_cast<unsigned short>(reinterpret_cast<ULONG_PTR>(name));
    else
        text_ = name;
}

const char* ResourceName::get() const {
    return number_ ? MAKEINTRESOURCEA(number_) : text_.c_str();
}

CString ResourceName::text() const {
    return number_ ? CString("#" + std::to_string(number_)) : text_;
}

}  // namespace toolbox

int TvDialog::wasMade() const {
    return state_->made;
}

int TvDialog::isOpen() const {
    return state_->stays();
}

int TvDialog::isModal() const {
    return state_->window && state_->run;
}

HWND TvDialog::getHWND() const {
    return state_->window;
}

void TvDialog::deleteWhenClosed(int on) {
    state_->deletes = on != 0;
}

TvExchange* TvDialog::fields() const {
    return state_->fields.get();
}

HWND TvDialog::control(int id) const {
    return state_->window ? GetDlgItem(state_->window, id) : nullptr;
}

int TvDialog::focus(int id) {
    const HWND wanted = control(id);
    if (!wanted) return 0;
    // By the dialog manager, which keeps the default button right and selects the text of a field.
    SendMessageA(state_->window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(wanted), TRUE);
    return 1;
}

int TvDialog::enable(int id, int on) {
    const HWND wanted = control(id);
    if (!wanted) return 0;
    const HWND focus = GetFocus();
    if (!on && (focus == wanted || IsChild(wanted, focus)))
        SendMessageA(state_->window, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(wanted, on);
    return 1;
}

CString TvDialog::getText(int id) const {
    const HWND window = control(id);
    if (!window) return {};
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return CString(std::move(text));
}

int TvDialog::setText(int id, const CString& text) {
    const HWND window = control(id);
    return window && SetWindowTextA(window, text.c_str());
}
