// Windows and dialogs that are being written.
#include "dialogs.h"
#include "table_view.h"

void registerTableClass(HINSTANCE) {}
void showTable(Document&) {}

bool editBeam(HWND, Workbench&, Beam&) {
    return false;
}
bool editLabel(HWND, Document&, Label&) {
    return false;
}
bool showMessages(HWND, Workbench&, const CString&) {
    return false;
}
void showAbout(HWND, Workbench&) {}
void showKeyList(Workbench&) {}
void closeKeyList() {}
void refreshKeyList() {}
