// The system's dialogs for opening and saving, while everything else of the program waits.
#include "dialogs/file_dialog.h"

#include <algorithm>
#include <array>
#include <string>

#include "frame/workbench.h"
#include "resources/workbench_texts.h"

// Needs the declarations of the system first.
#include <commdlg.h>

CString askForFile(Workbench& workbench, const CString& file, bool saving) {
    // "Name|*.tbf|" with zeros for the bars, as the dialog wants it.
    std::string filter = text(kFileFilter).str();
    std::ranges::replace(filter, '|', '\0');
    std::array<char, 1024> name{};
    std::ranges::copy(file.view().substr(0, name.size() - 1), name.begin());

    OPENFILENAMEA ask{};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = workbench.frame().getFrame();
    ask.lpstrFilter = filter.c_str();
    ask.lpstrFile = name.data();
    ask.nMaxFile = static_cast<DWORD>(name.size());
    ask.lpstrDefExt = "tbf";
    ask.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST |
                (saving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const ModalPhase phase(workbench);
    return (saving ? GetSaveFileNameA(&ask) : GetOpenFileNameA(&ask)) ? CString(name.data())
                                                                      : CString();
}
