// Modal dialogs that run inside of one another form a chain.
#include "dialog/dialog_state_win32.h"

namespace toolbox::dialog {
namespace {

ModalRun* innermost = nullptr;
bool isFiltering = false;  // asking a dialog asks the filter again

/// The loop of a modal dialog knows the keys of that one only. Modeless ones that were opened over
/// it have theirs.
LRESULT CALLBACK filter(int code, WPARAM word, LPARAM message) {
    if (code != MSGF_DIALOGBOX || isFiltering) return CallNextHookEx(nullptr, code, word, message);
    isFiltering = true;
    MSG copy = *reinterpret_cast<const MSG*>(message);
    const int taken = TvDialog::isDialogMessage(copy);
    isFiltering = false;
    return taken ? 1 : CallNextHookEx(nullptr, code, word, message);
}

}  // namespace

ModalRun::ModalRun(HWND owner)
    : owner_(owner ? GetAncestor(owner, GA_ROOT) : nullptr),
      ownerTakesInput_(owner_ && IsWindowEnabled(owner_)),
      hook_(SetWindowsHookExA(WH_MSGFILTER, filter, nullptr, GetCurrentThreadId())),
      outer_(innermost) {
    others_.switchOff();
    innermost = this;
}

ModalRun::~ModalRun() {
    innermost = outer_;
    if (hook_) UnhookWindowsHookEx(hook_);
    others_.switchOn();
    if (ending_ || !window_ || !IsWindow(owner_)) return;
    // The window was destroyed from outside, which the system does not take for an end: its owner
    // would stay disabled, and the activation has gone to whom the system found.
    if (ownerTakesInput_) EnableWindow(owner_, TRUE);
    if (!GetActiveWindow() && IsWindowVisible(owner_)) SetActiveWindow(owner_);
}

void ModalRun::begin(HWND window) {
    window_ = window;
    parent_.emplace(window);
    if (ending_) EndDialog(window_, 0);  // while it was being made
}

bool ModalRun::end(int result) {
    if (ending_) return false;
    for (ModalRun* over = innermost; over && over != this; over = over->outer_) over->end(0);
    ending_ = true;
    result_ = result;
    others_.switchOn();
    EndDialog(window_, 0);
    return true;
}

}  // namespace toolbox::dialog
