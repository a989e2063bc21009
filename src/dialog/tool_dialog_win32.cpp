// Tool dialogs with controls of their own. The tool is what the manager knows of the dialog; the
// window's messages come to the dialog.
#include <memory>
#include <new>

#include "dialog/dialog_keys_win32.h"
#include "toolbox/command_manager.h"
#include "toolbox/controls.h"
#include "toolbox/detail/watch.h"
#include "toolbox/dialogs.h"
#include "toolbox/messages.h"
#include "toolbox/windowing.h"

namespace {

bool isCommand(int control) {
    GCOMMBase* const manager = Tool::getGCOMMBase();
    return manager && static_cast<int>((*manager)[control]);
}

}  // namespace

struct CToolDialog::Parts {
    std::unique_ptr<ToolDlg> tool;
    TvToolTip tips;
};

CToolDialog::CToolDialog(const toolbox::ResourceName& name)
    : TvDialog(name), parts_(std::make_unique<Parts>()) {}

CToolDialog::~CToolDialog() {
    deleteWhenClosed(0);  // the window goes with the tool
    parts_->tool.reset();
}

int CToolDialog::create(GCOMMBase& manager, unsigned long toolId) {
    const HWND window = open(manager.getFrame(), Showing::hidden);
    if (!window) return 0;
    parts_->tool.reset(new (std::nothrow) ToolDlg(toolId, window));
    if (!parts_->tool || !manager.manage(parts_->tool.get(), 1)) {
        parts_->tool.reset();
        close(0);
        return 0;
    }
    addTips();
    return 1;
}

int CToolDialog::attach(ToolDlg* tool) {
    if (!tool || !adopt(tool->getHWND())) return 0;
    addTips();
    return 1;
}

int CToolDialog::show(int visible) {
    const HWND window = getHWND();
    if (!window) return 0;
    ShowWindow(window, visible ? SW_SHOWNOACTIVATE : SW_HIDE);
    // The frame may have come to the front after the window was made.
    if (visible && IsWindow(window))
        SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return 1;
}

ToolDlg* CToolDialog::getTool() const {
    return getHWND() ? parts_->tool.get() : nullptr;
}

void CToolDialog::addTips() {
    const HWND window = getHWND();
    parts_->tips.attach(window);
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int control = GetDlgCtrlID(child);
        if (control > 0) parts_->tips.add(child, TvTip([=, this] { return toolTip(control); }));
    }
}

CString CToolDialog::toolTip(int control) {
    RWCString text;
    if (isCommand(control)) GMSG::getString(static_cast<unsigned short>(control), text);
    return text;
}

int CToolDialog::handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const int control = LOWORD(wParam);
    if (message == MDI::getKeyQuestion()) {
        const MSG& key = *reinterpret_cast<const MSG*>(lParam);
        result = toolbox::dialog::hasField(getHWND()) && toolbox::dialog::keeps(getHWND(), key);
        return 1;
    }
    switch (message) {
        case ToolDlg::kSetCheck:
            CheckDlgButton(getHWND(), control, static_cast<UINT>(lParam));
            result = 1;
            return 1;
        case ToolDlg::kSetEnable:
            enable(control, lParam != 0);
            result = 1;
            return 1;
        case WM_CLOSE: {
            const HWND window = getHWND();
            if (cancelled() && IsWindow(window)) ShowWindow(window, SW_HIDE);
            return 1;
        }
        case WM_COMMAND:
            return commanded(control, HIWORD(wParam));
        default:
            return 0;
    }
}

int CToolDialog::commanded(int control, int notification) {
    const bool isClick = notification == BN_CLICKED || notification == BN_DOUBLECLICKED;
    if (isClick && isCommand(control)) {
        SendMessageA(Tool::getGCOMMBase()->getFrame(), WM_COMMAND, static_cast<WPARAM>(control), 0);
        return 1;
    }
    if (control != IDOK && control != IDCANCEL) return 0;
    const HWND window = getHWND();
    if (command(control, notification) || !IsWindow(window)) return 1;
    if (control == IDOK)
        apply();
    else
        SetActiveWindow(GetWindow(window, GW_OWNER));
    return 1;
}
