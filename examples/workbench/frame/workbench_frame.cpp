// Asks the application when the session ends, and keeps the status bar.
#include "frame/workbench_frame.h"

#include "frame/workbench.h"

void WorkbenchFrame::createStatusBar() {
    constexpr int kCountCharacters = 18;
    if (!bar_.create(getFrame())) return;
    bar_.setPanes({{.characters = 0}, {.characters = kCountCharacters}});
    setStatusBar(bar_.getHWND());
}

Workbench* WorkbenchFrame::workbench() const {
    return static_cast<Workbench*>(getApplication());
}

LRESULT WorkbenchFrame::frameWndProc(TarvMess& message) {
    // Of the session's end the frame asks and tells the application nothing.
    if (Workbench* const program = workbench()) {
        if (message.message == WM_QUERYENDSESSION && !program->canClose()) return 0;
        if (message.message == WM_TIMER && message.wParam == kIdleTimer) program->idle();
        if (message.message == WM_ACTIVATEAPP && message.wParam) program->lookAtDisk();
        if (message.message == WM_ENDSESSION && !message.wParam) program->sessionGoesOn();
    }
    return MDI::frameWndProc(message);
}
