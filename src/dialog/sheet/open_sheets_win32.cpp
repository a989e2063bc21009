// Message loops, the frame's too, give the messages of a modeless sheet to IsDialogMessage, which
// knows nothing of pages. It asks the thread's message filters first: there Ctrl+Tab and its kin
// are taken while such a sheet is open.
#include "dialog/sheet/open_sheets_win32.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "dialog/common_controls.h"
#include "toolbox/property_sheets.h"

namespace {

std::vector<HWND>& modelessSheets() {
    static std::vector<HWND> all;
    return all;
}

HHOOK filter = nullptr;
bool isFiltering = false;

/// The modeless sheet that a message goes to; null for none.
HWND sheetOf(const MSG& message) {
    const auto& all = modelessSheets();
    const auto found = std::ranges::find_if(
        all, [&](HWND sheet) { return sheet == message.hwnd || IsChild(sheet, message.hwnd); });
    return found == all.end() ? nullptr : *found;
}

bool handledBy(HWND sheet, MSG& message) {
    return SendMessageA(sheet, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != 0;
}

LRESULT CALLBACK filterMessage(int code, WPARAM wParam, LPARAM lParam) {
    auto& message = *reinterpret_cast<MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && !isFiltering && toolbox::dialog::turnsPages(message)) {
        if (const HWND sheet = sheetOf(message)) {
            isFiltering = true;  // the sheet asks the filters, too
            const bool handled = handledBy(sheet, message);
            isFiltering = false;
            if (handled) return TRUE;
        }
    }
    return CallNextHookEx(filter, code, wParam, lParam);
}

}  // namespace

bool toolbox::dialog::turnsPages(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0) return false;
    return message.wParam == VK_TAB || message.wParam == VK_PRIOR || message.wParam == VK_NEXT;
}

void toolbox::dialog::enterSheet(HWND sheet, bool isModal) {
    if (isModal) return;
    modelessSheets().push_back(sheet);
    if (!filter)
        filter = SetWindowsHookExA(WH_MSGFILTER, filterMessage, nullptr, GetCurrentThreadId());
}

void toolbox::dialog::removeSheet(HWND sheet) {
    std::erase(modelessSheets(), sheet);
    if (modelessSheets().empty() && filter) UnhookWindowsHookEx(std::exchange(filter, nullptr));
}

int TvPropertySheet::isDialogMessage(MSG& message) {
    const HWND sheet = sheetOf(message);
    return sheet && handledBy(sheet, message);
}
