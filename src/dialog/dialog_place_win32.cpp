// Where a dialog stands, and how it follows the user who sizes it.
#include "dialog/dialog_state_win32.h"
#include "dialog/layout/screens_win32.h"

using namespace toolbox::dialog;

namespace {

/// Over its owner as far as that is seen, otherwise in the middle of the owner's screen.
Box overOwner(HWND window, HWND owner) {
    const HWND frame = owner ? GetAncestor(owner, GA_ROOT) : nullptr;
    const bool isSeen = frame && IsWindowVisible(frame) && !IsIconic(frame);
    return centredOver(boxOf(window), isSeen ? boxOf(frame) : workAreaOf(frame));
}

}  // namespace

void TvDialog::arrange() {
    State& state = *state_;
    const HWND window = state.window;
    const bool isSizable = !state.layout.controls().empty();
    state.sizer.reset();
    if (isSizable) state.sizer = std::make_shared<Sizer>(window, state.layout);
    if (GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) return;
    const toolbox::detail::Watch self(state.life);
    const char* const name = placeName();
    if (self.gone() || !state.stays()) return;
    state.place.reset();
    if (name) state.place.emplace(name);
    if (state.place && state.place->restore(window, isSizable)) {
        if (state.place->wasMaximized() && state.takesFocus) ShowWindow(window, SW_SHOWMAXIMIZED);
        return;
    }
    const Box wanted = state.takesFocus ? overOwner(window, state.owner) : boxOf(window);
    place(window, ontoScreens(wanted, workAreas(), isSizable));
    if (!self.gone() && state.place) state.place->setPut(window);
}
