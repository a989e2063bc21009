// The frame's message loop: accelerators and modeless dialogs.
#include "window/frame_state.h"

using toolbox::detail::Watch;

namespace {

/// Asks the window that a key goes to and those around it, up to the frame.
bool isKept(const MSG& message, HWND frame) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const auto outer = [](HWND window) {
        return GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD ? GetParent(window) : nullptr;
    };
    for (HWND asked = message.hwnd; asked && asked != frame; asked = outer(asked))
        if (SendMessageA(asked, MDI::getKeyQuestion(), 0, reinterpret_cast<LPARAM>(&message)))
            return true;
    return false;
}

}  // namespace

int MDI::run(int) {
    const Watch self(state_->life);
    const auto translated = [&](MSG& message) {
        if (self.gone()) return false;
        if (TranslateMDISysAccel(state_->client, &message)) return true;
        if (self.gone()) return false;
        if (state_->currentAccel &&
            translateAccelerator(state_->frame, state_->currentAccel, &message))
            return true;
        return !self.gone() && dispatchModeless(message);
    };
    MSG message{};
    // GetMessage answers -1 to a broken call, which would repeat for ever.
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (translated(message)) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}

int MDI::dispatchModeless(MSG& message) {
    const Watch self(state_->life);
    int taken = 0;
    tellEach(state_->modeless, self, [&](HWND dialog) {
        if (!taken) taken = IsDialogMessageA(dialog, &message);
    });
    return taken;
}

void MDI::freezeAccelerator() {
    state_->acceleratorsFrozen = 1;
}

void MDI::thawAccelerator() {
    state_->acceleratorsFrozen = 0;
}

int MDI::isAcceleratorFrozen() const {
    return state_->acceleratorsFrozen;
}

int MDI::translateAccelerator(HWND window, HACCEL table, MSG* message) {
    if (state_->acceleratorsFrozen || !message || isKept(*message, state_->frame)) return 0;
    return TranslateAcceleratorA(window, table, message);
}

UINT MDI::getKeyQuestion() {
    static const UINT question = RegisterWindowMessageA("toolbox.KeepsKey");
    return question;
}

int MDI::setMDIAccel(HACCEL table) {
    state_->currentAccel = table;
    return 1;
}

int MDI::registerModeless(HWND dialog) {
    return dialog ? state_->modeless.add(dialog) : 0;
}

int MDI::unregisterModeless(HWND dialog) {
    return dialog ? state_->modeless.remove(dialog) : 0;
}

void MDI::setModelessDispatch(int on) {
    State& state = *state_;
    const Watch self(state.life);
    if (on) {
        if (state.modelessOffCount == 0 || --state.modelessOffCount > 0) return;
        const ContigSet<HWND> disabledBefore = state.disabledBefore;
        state.disabledBefore.init();
        tellEach(state.modeless, self, [&](HWND dialog) {
            if (!disabledBefore.isInSet(dialog)) EnableWindow(dialog, TRUE);
        });
        return;
    }
    if (++state.modelessOffCount > 1) return;
    state.disabledBefore.init();
    tellEach(state.modeless, self, [&](HWND dialog) {
        if (IsWindowEnabled(dialog))
            EnableWindow(dialog, FALSE);
        else
            state.disabledBefore.add(dialog);
    });
}

int MDI::getModelessDispatch() const {
    return state_->modelessOffCount == 0;
}
