// The program waits while the user chooses.
#include "dialogs/file_dialog.h"

#include "frame/workbench.h"
#include "resources/workbench_texts.h"
#include "toolbox/pickers.h"

namespace {

CString ask(Workbench& workbench, TvFileDialog& dialog, bool saving) {
    const ModalPhase phase(workbench);
    const HWND owner = Workbench::frame().getFrame();
    return (saving ? dialog.save(owner) : dialog.open(owner)) ? dialog.getFile() : CString();
}

}  // namespace

CString askForFile(Workbench& workbench, const CString& file, bool saving) {
    TvFileDialog dialog("Project");
    dialog.setFilter(kFileFilter);
    dialog.setDefaultExtension("tbf");
    dialog.setFile(file);
    return ask(workbench, dialog, saving);
}

CString askForDrawingFile(Workbench& workbench, const CString& name) {
    TvFileDialog dialog("Drawing");
    dialog.setFilter(kDrawingFilter);
    dialog.setDefaultExtension("svg");
    dialog.setFile(name.view().substr(0, name.view().rfind(".tbf")));
    return ask(workbench, dialog, true);
}
