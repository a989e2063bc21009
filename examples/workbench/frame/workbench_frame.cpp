// The line of hints is a static control; the frame keeps its height free above the documents.
#include "frame/workbench_frame.h"

#include <vector>

#include "frame/workbench.h"
#include "resources/resource.h"

namespace {

constexpr int kPaneHeight = 20;

/// The accelerators but those of the commands that edit what is selected.
HACCEL withoutEditing(HACCEL table) {
    std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableA(table, nullptr, 0)));
    CopyAcceleratorTableA(table, keys.data(), static_cast<int>(keys.size()));
    std::erase_if(keys,
                  [](const ACCEL& key) { return key.cmd == CMD_DELETE || key.cmd == CMD_COPY; });
    return CreateAcceleratorTableA(keys.data(), static_cast<int>(keys.size()));
}

}  // namespace

WorkbenchFrame::~WorkbenchFrame() {
    if (otherKeys_) DestroyAcceleratorTable(otherKeys_);
}

void WorkbenchFrame::setEditingKeys(bool areCommands) {
    const HACCEL all = LoadAcceleratorsA(
        getInstance(), MAKEINTRESOURCEA(static_cast<WORD>(getConstructInfo().acceleratorId)));
    if (!areCommands && !otherKeys_) otherKeys_ = withoutEditing(all);
    setMDIAccel(areCommands ? all : otherKeys_);
}

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
    // Of the session's end the frame asks and tells the application nothing.
    if (Workbench* const program = workbench()) {
        if (message.message == WM_QUERYENDSESSION && !program->canClose()) return 0;
        if (message.message == WM_ENDSESSION && !message.wParam) program->sessionGoesOn();
    }
    const LRESULT result = MDI::frameWndProc(message);
    // The frame keeps the pane's height free; its width follows here.
    if (message.message == WM_SIZE && pane_) {
        MoveWindow(pane_, 0, 0, LOWORD(message.lParam), kPaneHeight, TRUE);
    }
    return result;
}
