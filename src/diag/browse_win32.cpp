// The file dialog that asks for a program, with a hook that tells whether it is in the folder
// shown.
#include "diag/browse_win32.h"

#include <cderr.h>
#include <commdlg.h>
#include <dlgs.h>

#include <array>

#include "toolbox/messages.h"

namespace toolbox::diag {
namespace {

// Controls of the dialog's template: the system's own, and what tells whether the program is in the
// folder that is shown.
constexpr int kFileName = edt1;
constexpr int kFiles = lst1;
constexpr int kFolders = lst2;
constexpr int kDrives = cmb2;
constexpr int kUpdate = 1280;
constexpr int kFoundText = 1281;
constexpr int kFoundIcon = 1282;
constexpr int kIconFound = 12002;
constexpr int kIconNotFound = 12003;

struct DialogError {
    DWORD code;
    const char* text;
};

constexpr auto kErrors = std::to_array<DialogError>({
    {CDERR_STRUCTSIZE, "Invalid struct size"},
    {CDERR_INITIALIZATION, "Failed during initialisation"},
    {CDERR_NOTEMPLATE, "No template defined"},
    {CDERR_NOHINSTANCE, "No hinstance"},
    {CDERR_LOADSTRFAILURE, "Failed to load a string"},
    {CDERR_FINDRESFAILURE, "Failed to find resource"},
    {CDERR_LOADRESFAILURE, "Failed to load resource"},
    {CDERR_LOCKRESFAILURE, "Failed to lock resource"},
    {CDERR_MEMALLOCFAILURE, "Not able to allocate memory"},
    {CDERR_MEMLOCKFAILURE, "Unable to lock memory"},
    {CDERR_NOHOOK, "No hook defined"},
    {FNERR_SUBCLASSFAILURE, "Sub class failure"},
    {FNERR_INVALIDFILENAME, "Invalid file name"},
    {FNERR_BUFFERTOOSMALL, "Buffer too small"},
    {CDERR_DIALOGFAILURE, "Dialog Failure"},
});

HINSTANCE module() {
    return static_cast<HINSTANCE>(GMSG::getInstance());
}

/// Names the template. Where the module has it in the message service's language that one is handed
/// over; by its name alone the system would take the one of the user's language.
void takeTemplate(OPENFILENAMEA& dialog) {
    constexpr char kName[] = "DLG_BROWSE";
    const WORD language = GMSG::language == GMSG::French
                              ? MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH)
                              : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    const HRSRC found =
        FindResourceExA(module(), MAKEINTRESOURCEA(5), kName, language);  // RT_DIALOG
    if (found) {
        dialog.Flags = OFN_ENABLETEMPLATEHANDLE;
        dialog.hInstance = static_cast<HINSTANCE>(LoadResource(module(), found));
    } else {
        dialog.Flags = OFN_ENABLETEMPLATE;
        dialog.hInstance = module();
        dialog.lpTemplateName = kName;
    }
}

void report(DWORD error) {
    for (const DialogError& known : kErrors)
        if (known.code == error) GMSG::errorMsg("%s", MB_OK | MB_ICONSTOP, known.text);
}

/// Shows whether the folder's list has the name in the file-name field, and lets only that be
/// chosen.
void showWhetherFound(HWND dialog) {
    char name[40 + 1] = "";
    GetDlgItemTextA(dialog, kFileName, name, sizeof name);
    const LRESULT place =
        SendDlgItemMessageA(dialog, kFiles, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(name));
    const bool found = place != LB_ERR;
    SetDlgItemTextA(dialog, kFoundText, found ? "(found)" : "(not found)");
    EnableWindow(GetDlgItem(dialog, IDOK), found);
    const HICON icon = LoadIconA(module(), MAKEINTRESOURCEA(found ? kIconFound : kIconNotFound));
    SendDlgItemMessageA(dialog, kFoundIcon, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
}

/// Whether a command of a control may change which file is named or listed.
bool changesTheChoice(int control, int notification) {
    switch (control) {
        case kFileName:
            return notification == EN_CHANGE;
        case kDrives:
            return notification == CBN_SELCHANGE || notification == EN_CHANGE;
        case kFiles:
        case kFolders:
            return notification == LBN_SELCHANGE || notification == LBN_DBLCLK;
        default:
            return false;
    }
}

UINT_PTR CALLBACK browseHook(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        PostMessageA(dialog, WM_COMMAND, kUpdate, 0);
    } else if (message == WM_COMMAND) {
        if (LOWORD(wParam) == kUpdate)
            showWhetherFound(dialog);
        else if (changesTheChoice(LOWORD(wParam), HIWORD(wParam)))
            // After the dialog has done its part.
            PostMessageA(dialog, WM_COMMAND, kUpdate, 0);
    }
    return 0;
}

}  // namespace

std::string browseForProgram(HWND owner, const std::string& fileName) {
    char path[MAX_PATH] = "";
    if (fileName.size() < sizeof path) fileName.copy(path, sizeof path - 1);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    takeTemplate(dialog);
    dialog.lpstrFilter = "Applications (*.EXE)\0*.EXE\0";
    dialog.lpstrFile = path;
    dialog.nMaxFile = sizeof path;
    dialog.lpstrTitle = "Browse for Application";
    dialog.Flags |= OFN_ENABLEHOOK | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    dialog.lpfnHook = browseHook;
    if (GetOpenFileNameA(&dialog)) return path;
    report(CommDlgExtendedError());
    return {};
}

}  // namespace toolbox::diag
