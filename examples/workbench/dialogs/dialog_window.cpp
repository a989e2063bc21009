// A dialog finds its object in its own user data, from WM_INITDIALOG until it is destroyed.
#include "dialogs/dialog_window.h"

#include <charconv>
#include <cmath>
#include <string>

#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "toolbox/messages.h"

bool DialogWindow::run(HWND parent, int frenchDialog) {
    return DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(inLanguage(frenchDialog)),
                           parent, procedure, reinterpret_cast<LPARAM>(this)) == TRUE;
}

HWND DialogWindow::open(HWND owner, int frenchDialog) {
    return CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(inLanguage(frenchDialog)),
                              owner, procedure, reinterpret_cast<LPARAM>(this));
}

bool DialogWindow::notified(const NMHDR&) {
    return false;
}

void DialogWindow::focus(int id) const {
    // By the dialog manager, which keeps the default button right.
    SendMessageA(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control(id)), TRUE);
}

void DialogWindow::enable(int id, bool enabled) const {
    if (!enabled && GetFocus() == control(id)) SendMessageA(dialog_, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(control(id), enabled);
}

INT_PTR CALLBACK DialogWindow::procedure(HWND dialog, UINT message, WPARAM word, LPARAM data) {
    if (message == WM_INITDIALOG) {
        auto* const self = reinterpret_cast<DialogWindow*>(data);
        SetWindowLongPtrA(dialog, DWLP_USER, data);
        self->dialog_ = dialog;
        self->opened();
        return TRUE;
    }
    auto* const self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (!self) return FALSE;
    switch (message) {
        case WM_COMMAND:
            if (self->command(LOWORD(word), HIWORD(word))) return TRUE;
            if (LOWORD(word) != IDCANCEL) return FALSE;
            self->close(false);
            return TRUE;
        case WM_ACTIVATE:
            self->activated(LOWORD(word) != WA_INACTIVE);
            return FALSE;
        case WM_NOTIFY:
            return self->notified(*reinterpret_cast<const NMHDR*>(data));
        case WM_NCDESTROY:
            SetWindowLongPtrA(dialog, DWLP_USER, 0);
            self->dialog_ = nullptr;
            self->destroyed();
            return FALSE;
        default:
            return FALSE;
    }
}

namespace {

constexpr int kNumberCharacters = 40;  // what the message service reads of a number, and the end

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The message service reads the number that a text begins with: "6,50" would be 6.
bool isNumber(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

}  // namespace

CString NumberField::entered() const {
    RWCString text;
    GMSG::getCtrlString(control_, text, kNumberCharacters);
    return withoutBlanks(text.view());
}

void NumberField::remember() {
    SendDlgItemMessageA(GMSG::getParent(), control_, EM_LIMITTEXT, kNumberCharacters - 1, 0);
    shown_ = entered();
}

void NumberField::show(double value) {
    value_ = value;
    GMSG::setFormatDouble(control_, value, range_);
    remember();
}

void NumberField::clear() {
    SetDlgItemTextA(GMSG::getParent(), control_, "");
    remember();
}

bool NumberField::read(double& value) {
    CString text = entered();
    if (!text.empty() && text == shown_) {
        value = value_;
        return true;
    }
    const std::size_t comma = text.view().find(',');
    if (comma != std::string_view::npos) {
        text.str()[comma] = '.';
        if (isNumber(text.view())) SetDlgItemTextA(GMSG::getParent(), control_, text);
    }
    const HWND dialog = GMSG::getParent();
    if (text.empty())
        GMSG::errorMsg(kNumberNeeded, MB_ICONEXCLAMATION);
    else if (!isNumber(text.view()))
        GMSG::errorMsg(kNoNumber, MB_ICONEXCLAMATION, entered());
    else if (GMSG::getDouble(control_, value, range_))
        return true;
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, control_)),
                 TRUE);
    return false;
}

void addListColumns(HWND list, std::initializer_list<ListColumn> columns) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    for (const ListColumn& column : columns) {
        CString heading = text(column.heading);
        RECT units{0, 0, column.width, 0};
        MapDialogRect(GetParent(list), &units);
        LVCOLUMNA inserted{};
        inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        inserted.fmt = column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
        inserted.cx = units.right;
        inserted.pszText = heading.str().data();
        SendMessageA(list, LVM_INSERTCOLUMNA, 0x7FFF, reinterpret_cast<LPARAM>(&inserted));
    }
}

void setListText(HWND list, int row, int column, const CString& text) {
    CString shown = text;
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = shown.str().data();
    const bool isNew = row >= ListView_GetItemCount(list);
    SendMessageA(list, isNew ? LVM_INSERTITEMA : LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

int selectedRow(HWND list) {
    if (!list) return -1;
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

void selectRow(HWND list, int row, bool selected) {
    const UINT states = LVIS_SELECTED | (row == kEveryRow ? 0u : UINT{LVIS_FOCUSED});
    ListView_SetItemState(list, row, selected ? states : 0u, states);
    if (selected && row != kEveryRow) ListView_EnsureVisible(list, row, FALSE);
}
