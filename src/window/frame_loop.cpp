// The frame's message loop: accelerators and modeless dialogs.
#include "window/frame_state.h"

int MDI::run(int) {
    MSG message{};
    // GetMessage answers -1 to a broken call, which would repeat for ever.
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (TranslateMDISysAccel(state_->client, &message)) continue;
        if (state_->currentAccel &&
            translateAccelerator(state_->frame, state_->currentAccel, &message))
            continue;
        if (dispatchModeless(message)) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}

int MDI::dispatchModeless(MSG& message) {
    for (int i = 0; i < state_->modeless.nItem(); ++i)
        if (IsDialogMessageA(state_->modeless[i], &message)) return 1;
    return 0;
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
    if (state_->acceleratorsFrozen) return 0;
    return TranslateAcceleratorA(window, table, message);
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
    if (on) {
        if (state.modelessOffCount == 0 || --state.modelessOffCount > 0) return;
        for (int i = 0; i < state.modeless.nItem(); ++i)
            if (!state.disabledBefore.isInSet(state.modeless[i]))
                EnableWindow(state.modeless[i], TRUE);
        state.disabledBefore.init();
        return;
    }
    if (++state.modelessOffCount > 1) return;
    state.disabledBefore.init();
    for (int i = 0; i < state.modeless.nItem(); ++i) {
        if (IsWindowEnabled(state.modeless[i]))
            EnableWindow(state.modeless[i], FALSE);
        else
            state.disabledBefore.add(state.modeless[i]);
    }
}

int MDI::getModelessDispatch() const {
    return state_->modelessOffCount == 0;
}
