// How dialogs open and close. The object may be deleted in every call that leads back to the
// application; what run() needs after that stands on its stack.
#include "dialog/common_controls.h"
#include "dialog/dialog_state_win32.h"
#include "dialog/open_dialogs_win32.h"
#include "toolbox/windowing.h"
#include "window/dialog_template.h"

using toolbox::detail::Watch;
using toolbox::dialog::isDialogWindow;
using toolbox::dialog::ModalRun;
using toolbox::dialog::ParentScope;
using toolbox::window::FoundTemplate;
using toolbox::window::TemplateCopy;

namespace {

constexpr unsigned short kNotMadeText = 1330;

/// The style of a modal frame stays beside that of a thick one: it says that the caption has no
/// icon.
void makeSizable(TemplateCopy& copy) {
    copy.setStyle(copy.style() | WS_THICKFRAME);
}

/// The same of a window that is there, around what it has inside; and back.
void setSizable(HWND window, bool on) {
    RECT inside{};
    GetClientRect(window, &inside);
    const LONG_PTR style = GetWindowLongPtrA(window, GWL_STYLE);
    SetWindowLongPtrA(window, GWL_STYLE, on ? style | WS_THICKFRAME : style & ~WS_THICKFRAME);
    const UINT flags = SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPos(window, nullptr, 0, 0, 0, 0, flags | SWP_NOSIZE);
    RECT outside{}, left{};
    GetWindowRect(window, &outside);
    GetClientRect(window, &left);
    SetWindowPos(window, nullptr, 0, 0, outside.right - outside.left + inside.right - left.right,
                 outside.bottom - outside.top + inside.bottom - left.bottom, flags);
}

bool isChild(HWND window) {
    return (GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0;
}

/// Always 0.
int reportNotMade(const toolbox::ResourceName& name, HWND owner, DWORD code) {
    const ParentScope parent(owner);
    char reason[1024] = "";
    GMSG::getLastErrorMsg(code, reason);
    GMSG::errorMsg(kNotMadeText, MB_ICONEXCLAMATION, name.text(), reason);
    return 0;
}

/// A child window that is an owner: the system only tells of the end of its frame.
LRESULT CALLBACK ownerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR dialog, DWORD_PTR) {
    if (message == WM_DESTROY) reinterpret_cast<TvDialog*>(dialog)->close(0);
    return DefSubclassProc(window, message, wParam, lParam);
}

UINT_PTR identity(TvDialog* dialog) {
    return reinterpret_cast<UINT_PTR>(dialog);
}

}  // namespace

TvDialog::TvDialog(const toolbox::ResourceName& name) : state_(std::make_unique<State>(name)) {}

TvDialog::~TvDialog() {
    State& state = *state_;
    const HWND window = state.window;
    if (!window) return;
    if (state.place) state.place->save(window);
    detach();
    if (state.run)
        state.run->end(0);
    else if (state.adopted)
        giveBack(window);
    else
        DestroyWindow(window);
}

void TvDialog::giveBack(HWND window) {
    SetWindowLongPtrA(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(state_->before));
    state_->sizer.reset();
    if (state_->widened) setSizable(window, false);
}

bool TvDialog::prepare(HWND& owner) {
    State& state = *state_;
    if (state.window || state.run || state.opening) return false;
    const Watch self(state.life);
    state.made = state.closing = false;
    TvDialogLayout sizes;
    layout(sizes);
    if (self.gone()) return false;
    state.layout = sizes;
    MDI* const frame = MDIApplication::getPMDI();
    if (!owner && frame) owner = frame->getFrame();
    state.owner = owner;
    return true;
}

int TvDialog::run(HWND owner) {
    State& state = *state_;
    const Watch self(state.life);
    if (!prepare(owner)) return 0;
    const toolbox::ResourceName name = state.name;  // for the report, when this is gone
    const FoundTemplate found = toolbox::window::findTemplate(name.get());
    if (!found) return reportNotMade(name, owner, GetLastError());

    TemplateCopy copy(found);
    if (!state.layout.controls().empty()) makeSizable(copy);
    state.takesFocus = true;
    DWORD code = 0;
    int result = 0;
    {
        ModalRun modal(owner);
        state.run = &modal;
        DialogBoxIndirectParamA(found.module, copy.get(), owner, procedure,
                                reinterpret_cast<LPARAM>(this));
        code = GetLastError();
        result = modal.result();
        if (!self.gone()) state.run = nullptr;
        if (modal.wasMade()) return result;
    }
    return reportNotMade(name, owner, code);
}

HWND TvDialog::open(HWND owner) {
    return open(owner, Showing::active);
}

HWND TvDialog::open(HWND owner, Showing showing) {
    State& state = *state_;
    const Watch self(state.life);
    if (!prepare(owner)) return nullptr;
    const FoundTemplate found = toolbox::window::findTemplate(state.name.get());
    DWORD code = GetLastError();
    TemplateCopy copy(found);
    const bool isPage = (copy.style() & WS_CHILD) != 0;
    copy.setStyle(copy.style() & ~static_cast<DWORD>(WS_VISIBLE));  // shown when it has its place
    if (!isPage && !state.layout.controls().empty()) makeSizable(copy);
    state.takesFocus = showing == Showing::active && !isPage;
    if (found) {
        state.opening = true;
        CreateDialogIndirectParamA(found.module, copy.get(), owner, procedure,
                                   reinterpret_cast<LPARAM>(this));
        code = GetLastError();
        if (self.gone()) return nullptr;
        state.opening = false;
    }
    if (!state.made) reportNotMade(state.name, owner, code);
    if (self.gone() || !state.window) return nullptr;
    if (state.closing) {
        close(0);
        return nullptr;
    }
    if (showing != Showing::hidden)
        ShowWindow(state.window, showing == Showing::active ? SW_SHOW : SW_SHOWNOACTIVATE);
    return self.gone() ? nullptr : state.window;
}

int TvDialog::adopt(HWND dialog) {
    State& state = *state_;
    if (state.window || state.run || state.opening || find(dialog) || !isDialogWindow(dialog))
        return 0;
    const Watch self(state.life);
    state.owner = GetWindow(dialog, GW_OWNER);
    if (!prepare(state.owner)) return 0;
    state.before = reinterpret_cast<DLGPROC>(
        SetWindowLongPtrA(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(&TvDialog::procedure)));
    state.adopted = true;
    state.takesFocus = false;
    state.widened = !state.layout.controls().empty() && !isChild(dialog) &&
                    !(GetWindowLongPtrA(dialog, GWL_STYLE) & WS_THICKFRAME);
    if (state.widened) setSizable(dialog, true);
    initialized(dialog);
    return !self.gone() && state.window ? 1 : 0;
}

int TvDialog::close(int result) {
    State& state = *state_;
    if (!state.window) return 0;
    if (state.run) return state.run->end(result);
    const bool isFirst = !state.closing;
    state.closing = true;
    if (!state.opening) DestroyWindow(state.window);
    return isFirst;
}

void TvDialog::detach() {
    State& state = *state_;
    toolbox::dialog::remove(state.window);
    MDI* const frame = MDIApplication::getPMDI();
    if (state.registered && frame) frame->unregisterModeless(state.window);
    state.registered = false;
    if (state.owner) RemoveWindowSubclass(state.owner, ownerProcedure, identity(this));
    state.owner = nullptr;
}

void TvDialog::join() {
    State& state = *state_;
    if (state.owner && isChild(state.owner) && !isChild(state.window))
        SetWindowSubclass(state.owner, ownerProcedure, identity(this), 0);
    MDI* const frame = MDIApplication::getPMDI();
    const bool isPage = isChild(state.window) && isDialogWindow(GetAncestor(state.window, GA_ROOT));
    if (!state.run && frame && !isPage) state.registered = frame->registerModeless(state.window);
}
