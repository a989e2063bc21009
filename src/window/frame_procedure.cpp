// What the frame's window does with its messages. What is called may delete the frame object: after
// each call that matters its state is touched only while it is there, and a message that it left is
// given to the system's default processing.
#include "window/frame_state.h"
#include "window/owned_windows.h"

using toolbox::detail::Watch;

namespace {

constexpr UINT kFirstPrivateMessage = 0x3E0;
constexpr UINT kLastPrivateMessage = 0x3E8;
constexpr WPARAM kSystemCommandMask = 0xFFF0;  // the system keeps the low four bits to itself

/// What becomes of a message whose frame object was deleted while it was handled.
LRESULT systemProcessing(const TarvMess& message) {
    return DefWindowProcA(message.hwnd, message.message, message.wParam, message.lParam);
}

}  // namespace

LRESULT CALLBACK MDI::WinFrameWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    MDI* const mdi = MDIApplication::getPMDI();
    if (!mdi) return DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_SETFOCUS) toolbox::window::keepOwnedAbove(window);
    TarvMess packed(window, message, wParam, lParam, 0);
    const LRESULT result = mdi->frameWndProc(packed);
    if (message == WM_NCDESTROY && mdi == MDIApplication::getPMDI() &&
        mdi->state_->frame == window) {
        mdi->state_->frame = nullptr;
        mdi->state_->client = nullptr;
        mdi->state_->pane = nullptr;
        mdi->state_->statusBar = nullptr;
    }
    return result;
}

LRESULT MDI::frameWndProc(TarvMess& message) {
    const HWND child = getActiveMDIChild();
    switch (message.message) {
        case WM_CREATE:
            return created(message);
        case WM_DESTROY:
            leaveApplication();
            PostQuitMessage(0);
            return 0;
        case WM_MOVE:
            return moved(message);
        case WM_SIZE:
            return resized(message);
        case WM_PARENTNOTIFY:
            return childEnded(message);
        case WM_CLOSE:
            return closing(message);
        case WM_QUERYENDSESSION:
            return queryChildren(message.wParam);
        case WM_ENDSESSION:
            // No document hears of it: they were asked by the query.
            if (message.wParam) leaveApplication();
            return 0;
        case WM_ACTIVATEAPP:
            applicationActivated(message);
            return 0;
        case WM_COMMAND:
            return commanded(message, child);
        case WM_SYSCOMMAND:
            return systemCommanded(message);
        default:
            if (message.message >= kFirstPrivateMessage && message.message <= kLastPrivateMessage)
                return privateMessage(message, child);
            return defaultProcessing(message);
    }
}

LRESULT MDI::defaultProcessing(const TarvMess& message) {
    return DefFrameProcA(message.hwnd, state_->client, message.message, message.wParam,
                         message.lParam);
}

LRESULT MDI::moved(const TarvMess& message) {
    const Watch self(state_->life);
    if (state_->application) state_->application->frameMoved(0);
    return self.gone() ? systemProcessing(message) : defaultProcessing(message);
}

LRESULT MDI::created(const TarvMess& message) {
    State& state = *state_;
    state.frame = message.hwnd;
    CLIENTCREATESTRUCT record{};
    record.hWindowMenu = GetSubMenu(GetMenu(state.frame), 0);
    record.idFirstChild = static_cast<WORD>(state.info.firstChildId);
    state.client = CreateWindowExA(
        0, "MDIClient", "",
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_HSCROLL | WS_VSCROLL, 0, 0,
        0, 0, state.frame, nullptr, state.instance, &record);
    state.pane = createFramePane();
    return 0;
}

LRESULT MDI::resized(const TarvMess& message) {
    layOut(message.hwnd);
    return 0;
}

/// The pane above the client window, the status bar below it. What is told of its new place may
/// delete the frame.
void MDI::layOut(HWND frame) {
    const Watch self(state_->life);
    RECT area{};
    GetClientRect(frame, &area);
    const HWND bar = getStatusBar();
    if (bar && IsWindowVisible(bar)) {
        RECT strip{};
        GetWindowRect(bar, &strip);
        const int height = strip.bottom - strip.top;
        MoveWindow(bar, 0, area.bottom - height, area.right, height, TRUE);
        if (self.gone()) return;
        area.bottom -= height;
    }
    if (state_->pane && IsWindowVisible(state_->pane)) {
        RECT pane{};
        GetClientRect(state_->pane, &pane);
        area.top += pane.bottom;
        area.bottom -= pane.bottom;
    }
    MoveWindow(state_->client, area.left, area.top, area.right, area.bottom, TRUE);
}

LRESULT MDI::childEnded(const TarvMess& message) {
    const bool isStrip = LOWORD(message.wParam) == WM_DESTROY && state_->statusBar &&
                         reinterpret_cast<HWND>(message.lParam) == state_->statusBar;
    const Watch self(state_->life);
    if (isStrip) setStatusBar(nullptr);
    return self.gone() ? systemProcessing(message) : defaultProcessing(message);
}

LRESULT MDI::closing(const TarvMess& message) {
    const Watch self(state_->life);
    if (state_->application && state_->application->canClose() != 1) return 0;
    if (!SendMessageA(message.hwnd, WM_QUERYENDSESSION, 1, 0)) return 0;
    SendMessageA(message.hwnd, WM_ENDSESSION, 1, 0);
    return self.gone() ? systemProcessing(message) : defaultProcessing(message);
}

void MDI::leaveApplication() {
    if (!state_->application || state_->isLeaving) return;
    const Watch self(state_->life);
    state_->isLeaving = true;
    state_->application->frameDestroyed();
    if (!self.gone()) state_->application = nullptr;
}

void MDI::applicationActivated(const TarvMess& message) {
    const HWND active = GetActiveWindow();
    if (!message.wParam || active == message.hwnd) return;
    MSG record{};
    record.hwnd = active;
    record.message = message.message;
    record.wParam = message.wParam;
    record.lParam = message.lParam;
    if (!IsDialogMessageA(active, &record)) return;
    SetActiveWindow(message.hwnd);
    SetActiveWindow(active);
}

LRESULT MDI::commanded(const TarvMess& message, HWND child) {
    if (LOWORD(message.wParam) >= static_cast<WORD>(state_->info.firstChildId))
        return defaultProcessing(message);
    const Watch self(state_->life);
    if (doFrameCommand(child, static_cast<UINT>(message.wParam), message.lParam)) return 0;
    if (!self.gone() && state_->application &&
        state_->application->command(child, message.wParam, message.lParam))
        return 0;
    if (child) SendMessageA(child, WM_COMMAND, message.wParam, message.lParam);
    return 0;
}

LRESULT MDI::systemCommanded(const TarvMess& message) {
    const Watch self(state_->life);
    SetFocus(message.hwnd);
    const bool minimizes = (message.wParam & kSystemCommandMask) == SC_MINIMIZE;
    const auto notify = [&] {
        if (!self.gone() && state_->application)
            state_->application->systemCommand(message.hwnd, message.wParam, message.lParam);
    };
    if (minimizes) notify();
    const LRESULT result = self.gone() ? systemProcessing(message) : defaultProcessing(message);
    if (!minimizes) notify();
    return result;
}

LRESULT MDI::privateMessage(const TarvMess& message, HWND child) {
    const Watch self(state_->life);
    if (state_->application &&
        state_->application->privateMessage(child, message.message, message.wParam, message.lParam))
        return 0;
    if (!child) return self.gone() ? systemProcessing(message) : defaultProcessing(message);
    SendMessageA(child, message.message, message.wParam, message.lParam);
    return 0;
}
