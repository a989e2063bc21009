// Opening and closing a sheet. It is the system's modeless one in any case, with a message loop of
// its own where it is modal: so it can end at any moment, and whatever ends it is handled once.
#include <algorithm>
#include <utility>

#include "dialog/parent_scope.h"
#include "dialog/sheet/open_sheets_win32.h"
#include "dialog/sheet/sheet_state.h"
#include "toolbox/windowing.h"

// After windows.h.
#include <commctrl.h>

using toolbox::dialog::ParentScope;

namespace {

constexpr unsigned short kNotMadeText = 1330;
constexpr unsigned short kCancelText = 1335;
constexpr unsigned short kApplyText = 1336;
constexpr int kApplyButton = 0x3021;  // of the system's sheet

TvPropertySheet::State* opening = nullptr;

int CALLBACK sheetCallback(HWND window, UINT message, LPARAM) {
    if (message == PSCB_INITIALIZED && opening) opening->wasInitialized(window);
    return 0;
}

void reportNotMade(const CString& name, HWND owner) {
    const DWORD code = GetLastError();
    const ParentScope parent(owner);
    char reason[1024] = "";
    GMSG::getLastErrorMsg(code, reason);
    GMSG::errorMsg(kNotMadeText, MB_ICONEXCLAMATION, name, reason);
}

/// The system has its buttons in its own language.
void showButtonTexts(HWND sheet) {
    for (const auto& [button, id] :
         {std::pair{IDCANCEL, kCancelText}, std::pair{kApplyButton, kApplyText}}) {
        RWCString text;
        if (GMSG::getString(id, text)) SetDlgItemTextA(sheet, button, text);
    }
}
}  // namespace
