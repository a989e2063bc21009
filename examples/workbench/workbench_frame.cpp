#include "workbench_frame.h"

#include "workbench.h"

namespace {

constexpr int kPaneHeight = 20;

}  // namespace

void WorkbenchFrame::showHint(const CString& hint) {
    if (pane_) SetWindowTextA(pane_, hint.c_str());
}

Workbench* WorkbenchFrame::workbench() const {
    return static_cast<Workbench*>(getApplication());
}

HWND WorkbenchFrame::createFramePane() {
    pane_ = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE | SS_CENTERIMAGE | SS_NOPREFIX,
                            0, 0, 0, kPaneHeight, getFrame(), nullptr, getInstance(), nullptr);
    SendMessageA(pane_, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), 0);
    return pane_;
}

LRESULT WorkbenchFrame::frameWndProc(TarvMess& message) {
    // Of this one the frame tells nobody.
    if (message.message == WM_ENDSESSION && !message.wParam)
        if (Workbench* const program = workbench()) program->sessionGoesOn();
    const LRESULT result = MDI::frameWndProc(message);
    // The frame keeps the pane's height free; its width follows here.
    if (message.message == WM_SIZE && pane_) {
        MoveWindow(pane_, 0, 0, LOWORD(message.lParam), kPaneHeight, TRUE);
    }
    return result;
}
