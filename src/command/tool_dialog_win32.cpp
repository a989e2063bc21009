// Dialog tools. The application may destroy the window at any time, so each operation asks whether
// it is still there.
#include "toolbox/command_manager.h"
#include "toolbox/diagnostics.h"
#include "toolbox/tools.h"

namespace {

/// Marks code that was thought to be unused, by an assertion that always holds: its condition is
/// the text.
void markThoughtUnused(int line) {
    static constexpr const char* kText = "Call Merlo to notify him we're this code is used";
    if (!kText) _tvassert(kText, "src/tooldlg", line);
}

}  // namespace

const int ToolDlg::classType = 0;

ToolDlg::ToolDlg(unsigned long id, HWND dialog) : Tool(id), dialog_(dialog) {
    markThoughtUnused(27);
}

ToolDlg::~ToolDlg() {
    removeAll();
    // While this still is a dialog tool, so that the manager destroys a window that it owns.
    GCOMMBase::unmanageEverywhere(this);
}

HWND ToolDlg::getHWND() const {
    return IsWindow(dialog_) ? dialog_ : nullptr;
}

int ToolDlg::setEnableStatus(int status) {
    const HWND dialog = getHWND();
    if (!dialog) return 0;
    EnableWindow(dialog, status);
    return 1;
}

int ToolDlg::getEnableStatus() const {
    return IsWindowEnabled(getHWND());
}

int ToolDlg::setVisibleStatus(int visible, int activate) {
    const HWND dialog = getHWND();
    if (!dialog) return 0;
    if (!visible == !isVisible()) return 1;
    const int shown = activate ? SW_SHOW : SW_SHOWNOACTIVATE;
    ShowWindow(dialog, visible ? shown : SW_HIDE);
    return 1;
}

int ToolDlg::isVisible() const {
    return IsWindowVisible(getHWND());
}

int ToolDlg::setCommandCheckStatus(int commandId, int status) {
    return tell(kSetCheck, commandId, status);
}

int ToolDlg::setCommandEnableStatus(int commandId, int status) {
    return tell(kSetEnable, commandId, status);
}

int ToolDlg::tell(UINT message, int commandId, int status) const {
    const HWND dialog = getHWND();
    if (!dialog) return 0;
    return static_cast<int>(SendMessageA(dialog, message, static_cast<WPARAM>(commandId), status));
}

DLGPROC ToolDlg::getStdDlgProc() {
    return ToolDlgDlgProc;
}

INT_PTR CALLBACK ToolDlg::ToolDlgDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    markThoughtUnused(110);
    const int control = static_cast<int>(wParam);
    switch (message) {
        case kSetCheck:
            CheckDlgButton(dialog, control, static_cast<UINT>(lParam));
            return TRUE;
        case kSetEnable:
            EnableWindow(GetDlgItem(dialog, control), static_cast<BOOL>(lParam));
            return TRUE;
        case WM_DESTROY:
            return TRUE;
        case WM_COMMAND:
            if (GCOMMBase* manager = getGCOMMBase())
                SendMessageA(manager->getFrame(), WM_COMMAND, LOWORD(wParam), 0);
            return TRUE;
        default:
            return FALSE;
    }
}
