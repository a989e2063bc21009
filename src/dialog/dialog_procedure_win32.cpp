// What a dialog does with the messages of its window. Each operation that is called may delete the
// object: after it nothing of it is touched unless it is there.
#include "dialog/dialog_keys_win32.h"
#include "dialog/dialog_state_win32.h"
#include "dialog/open_dialogs_win32.h"
#include "toolbox/windowing.h"

using toolbox::detail::Watch;
using toolbox::dialog::ParentScope;

namespace {

/// Messages whose answer a dialog's procedure returns itself. To the others it returns that they
/// are answered, and the answer lies beside.
bool isAnsweredDirectly(UINT message) {
    return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) ||
           message == WM_COMPAREITEM || message == WM_VKEYTOITEM || message == WM_CHARTOITEM ||
           message == WM_QUERYDRAGICON;
}

INT_PTR answer(HWND window, UINT message, LRESULT result) {
    if (isAnsweredDirectly(message)) return result;
    SetWindowLongPtrA(window, DWLP_MSGRESULT, result);
    return TRUE;
}

/// The control that holds a window, or is it: the list of a combo box has a window inside of it.
int controlOf(HWND dialog, HWND window) {
    while (window && GetParent(window) != dialog) window = GetParent(window);
    return window ? GetDlgCtrlID(window) : 0;
}

}  // namespace

INT_PTR CALLBACK TvDialog::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<TvDialog*>(lParam)->initialized(window);
        return FALSE;  // the focus is where it shall be
    }
    TvDialog* const self = find(window);
    return self ? self->received(message, wParam, lParam) : FALSE;
}

INT_PTR TvDialog::received(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = state_->window;
    const DLGPROC before = state_->before;
    const Watch self(state_->life);
    LRESULT result = 0;
    const int done = handleMessage(message, wParam, lParam, result);
    if (message == WM_DESTROY && !self.gone() && state_->place) state_->place->save(window);
    if (message == WM_NCDESTROY) {
        if (!self.gone()) ended();
    } else if (done) {
        return answer(window, message, result);
    } else if (!self.gone() && state_->window) {
        const INT_PTR taken = handled(message, wParam, lParam);
        if (taken) return taken;
    }
    // A command is this object's alone: the procedure of tools would send every one to the frame.
    return before && message != WM_COMMAND ? before(window, message, wParam, lParam) : FALSE;
}

INT_PTR TvDialog::handled(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = state_->window;
    const std::shared_ptr<toolbox::dialog::Sizer> sizer = state_->sizer;
    if (message == MDI::getKeyQuestion())
        return answer(window, message,
                      toolbox::dialog::keeps(window, *reinterpret_cast<const MSG*>(lParam)));
    const ParentScope parent(window);
    switch (message) {
        case WM_COMMAND:
            return commanded(LOWORD(wParam), HIWORD(wParam));
        case WM_NOTIFY: {
            const LRESULT result = notified(*reinterpret_cast<NMHDR*>(lParam));
            return result ? answer(window, message, result) : FALSE;
        }
        case WM_HELP:
            askedForHelp(*reinterpret_cast<const HELPINFO*>(lParam));
            return answer(window, message, TRUE);
        case WM_SIZE:
            if (sizer) sizer->follow();
            return FALSE;
        case WM_GETMINMAXINFO:
            if (sizer) sizer->limit(*reinterpret_cast<MINMAXINFO*>(lParam));
            return FALSE;
        case WM_ERASEBKGND:
            if (sizer) sizer->excludeControls(reinterpret_cast<HDC>(wParam));
            return FALSE;  // what is left is the system's
        default:
            return FALSE;
    }
}

void TvDialog::initialized(HWND window) {
    State& state = *state_;
    const Watch self(state.life);
    const auto stays = [&] { return !self.gone() && state.stays(); };
    state.window = window;
    state.made = true;
    toolbox::dialog::enter(window, *this);
    if (state.run) state.run->begin(window);
    const ParentScope parent(window);
    join();
    if (!stays()) return;
    opened();
    if (!stays()) return;
    state.fields = std::make_unique<TvExchange>(window);
    state.fields->fill([this](TvExchange& each) { exchange(each); });
    if (stays()) arrange();
    if (stays() && state.takesFocus) toolbox::dialog::giveFirstFocus(window);
}

INT_PTR TvDialog::commanded(int control, int notification) {
    const Watch self(state_->life);
    if (command(control, notification)) return TRUE;
    if (self.gone() || !state_->window) return TRUE;
    constexpr int kByKey = 1;  // of an accelerator
    if (notification != BN_CLICKED && notification != kByKey) return FALSE;
    if (control != IDOK && control != IDCANCEL) return FALSE;
    const HWND button = this->control(control);
    if (button && !IsWindowEnabled(button))
        MessageBeep(0);
    else if (control == IDOK) {
        if (apply()) close(1);
    } else
        cancel();
    return TRUE;
}

int TvDialog::apply() {
    State& state = *state_;
    const Watch self(state.life);
    const auto stays = [&] { return !self.gone() && state.stays(); };
    if (!state.fields || !state.fields->read([this](TvExchange& each) { exchange(each); }))
        return 0;
    if (!stays()) return 0;
    const int agreed = confirmed();
    if (!stays()) return 0;
    if (!agreed && state.fields) state.fields->takeBack();
    return agreed != 0;
}

void TvDialog::cancel() {
    const Watch self(state_->life);
    if (cancelled() && !self.gone()) close(0);
}

void TvDialog::askedForHelp(const HELPINFO& about) {
    const HWND window = state_->window;
    const bool isModal = state_->run != nullptr;
    const int control = about.iContextType == HELPINFO_WINDOW
                            ? controlOf(window, static_cast<HWND>(about.hItemHandle))
                            : 0;
    if (help(control) || isModal || GetKeyState(VK_F1) >= 0) return;
    // As if the key had gone to the frame in the first place.
    MDI* const frame = MDIApplication::getPMDI();
    if (frame && IsWindowEnabled(frame->getFrame()))
        PostMessageA(frame->getFrame(), WM_KEYDOWN, VK_F1, 0);
}

void TvDialog::ended() {
    State& state = *state_;
    detach();
    const Watch self(state.life);
    state.window = nullptr;
    state.before = nullptr;
    state.adopted = state.widened = false;
    state.fields.reset();
    state.sizer.reset();
    state.place.reset();
    destroyed();
    if (!self.gone() && state.deletes && !state.window) delete this;
}

void TvDialog::opened() {}

void TvDialog::exchange(TvExchange&) {}

int TvDialog::command(int, int) {
    return 0;
}

LRESULT TvDialog::notified(NMHDR&) {
    return 0;
}

int TvDialog::confirmed() {
    return 1;
}

int TvDialog::cancelled() {
    return 1;
}

int TvDialog::help(int) {
    return 0;
}

void TvDialog::destroyed() {}

int TvDialog::handleMessage(UINT, WPARAM, LPARAM, LRESULT&) {
    return 0;
}

const char* TvDialog::placeName() {
    return nullptr;
}

void TvDialog::layout(TvDialogLayout&) {}
