// The program waits while the user chooses.
#include "dialogs/file_dialog.h"

#include "frame/workbench.h"
#include "resources/workbench_texts.h"
#include "toolbox/pickers.h"

CString askForFile(Workbench& workbench, const CString& file, bool saving) {
    TvFileDialog dialog("Project");
    dialog.setFilter(kFileFilter);
    dialog.setDefaultExtension("tbf");
    dialog.setFile(file);
    const ModalPhase phase(workbench);
    const HWND owner = Workbench::frame().getFrame();
    return (saving ? dialog.save(owner) : dialog.open(owner)) ? dialog.getFile() : CString();
}
