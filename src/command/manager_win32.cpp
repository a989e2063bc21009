// What the command manager does with windows.
#include <memory>
#include <new>

#include "toolbox/command_manager.h"
#include "toolbox/tools.h"

namespace {

ToolDlg* asDialog(Tool* tool) {
    return tool->getClassType() == &ToolDlg::classType ? static_cast<ToolDlg*>(tool) : nullptr;
}

}  // namespace

DLGPROC GCOMMBase::getStdToolDlgProc() {
    return ToolDlg::getStdDlgProc();
}

ToolDlg* GCOMMBase::createAndManageToolDlg(unsigned long toolId, int dialogId) {
    HWND dialog = nullptr;
    if (dialogId) {
        dialog = CreateDialogParamA(instance_, MAKEINTRESOURCEA(dialogId), frame_,
                                    getStdToolDlgProc(), 0);
        if (!dialog) return nullptr;
        ShowWindow(dialog, SW_HIDE);
    }
    std::unique_ptr<ToolDlg> tool(new (std::nothrow) ToolDlg(toolId, dialog));
    if (manage(tool.get(), 1)) return tool.release();
    if (dialog) DestroyWindow(dialog);
    return nullptr;
}

void GCOMMBase::destroyWindow(Tool* tool) {
    ToolDlg* dialog = asDialog(tool);
    if (!dialog) return;
    const HWND window = dialog->getHWND();
    dialog->dialog_ = nullptr;
    if (window) DestroyWindow(window);  // may delete the tool
}

void GCOMMBase::setFrozen(Tool* tool, int frozen) {
    if (ToolDlg* dialog = asDialog(tool)) dialog->setEnableStatus(!frozen);
}

bool GCOMMBase::maySend(unsigned short id, int check) {
    if (!check) return true;
    const Command* command = find(id);
    return command && command->isEnabled();
}

LRESULT GCOMMBase::sendCommand(unsigned short id, long, int check) {
    return maySend(id, check) ? SendMessageA(frame_, WM_COMMAND, id, 0) : 0;
}

void GCOMMBase::postCommand(unsigned short id, long, int check) {
    if (maySend(id, check)) PostMessageA(frame_, WM_COMMAND, id, 0);
}

void GCOMMBase::freezeAllToolDlg() {
    if (++freezeCount_ == 1) freezeEach(1);
}

void GCOMMBase::thawAllToolDlg() {
    if (freezeCount_ > 0 && --freezeCount_ == 0) freezeEach(0);
}

void GCOMMBase::freezeEach(int frozen) {
    const toolbox::detail::Watch self(life_);
    tellEach(tools_, self, [=, this](Tool* tool) { setFrozen(tool, frozen); });
}
