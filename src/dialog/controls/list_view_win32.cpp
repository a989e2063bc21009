// Lists with columns, and the few things that most of them need.
#include <algorithm>

#include "dialog/controls/window_text_win32.h"
#include "dialog/layout/kept_place.h"
#include "dialog/layout/screens_win32.h"
#include "toolbox/controls.h"
#include "toolbox/messages.h"

using namespace toolbox::controls;

namespace {

constexpr const char* kSection = "Columns";

/// Dialog units across, in pixels, also where the parent is no dialog.
int pixelsOf(HWND list, int units) {
    RECT across{0, 0, units, 0};
    if (MapDialogRect(GetParent(list), &across) && across.right > 0) return across.right;
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const int letters = static_cast<int>(kLetters.size());
    return MulDiv(units, FontContext(list).width(kLetters), 4 * letters);
}

int columnsOf(HWND list) {
    return Header_GetItemCount(ListView_GetHeader(list));
}

}  // namespace

TvListView::~TvListView() {
    detach();
}

int TvListView::accepts(const char* className) const {
    return lstrcmpiA(className, WC_LISTVIEWA) == 0;
}

int TvListView::addColumns(const std::vector<Column>& columns) {
    const HWND list = getHWND();
    if (!list) return 0;
    constexpr DWORD kLook = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES;
    ListView_SetExtendedListViewStyleEx(list, kLook, kLook);
    int all = 1;
    for (const Column& column : columns) {
        std::string heading = column.heading.str();
        LVCOLUMNA added{};
        added.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        added.fmt = column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
        added.cx = column.width > 0 ? pixelsOf(list, column.width) : 0;
        added.pszText = heading.data();
        const int last = columnsOf(list);
        const LRESULT at = SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(last),
                                        reinterpret_cast<LPARAM>(&added));
        if (at < 0) all = 0;
        if (at >= 0 && column.width <= 0)
            ListView_SetColumnWidth(list, last, LVSCW_AUTOSIZE_USEHEADER);
    }
    return all;
}

std::vector<int> TvListView::columnWidths() const {
    std::vector<int> widths;
    for (int column = 0; getHWND() && column < columnsOf(getHWND()); ++column)
        widths.push_back(ListView_GetColumnWidth(getHWND(), column));
    return widths;
}

int TvListView::restoreWidths(const toolbox::SettingName& name) {
    RWCString kept;
    if (!getHWND() || !GMSG::getProfile(kSection, name, kept, RWCString())) return 0;
    std::string_view line = kept.view();
    const int dpi = toolbox::dialog::takeNumber(line).value_or(0);
    std::vector<int> widths;
    while (const auto width = toolbox::dialog::takeNumber(line)) widths.push_back(*width);
    const bool areWidths = dpi > 0 && line.empty() &&
                           std::ranges::all_of(widths, [](int width) { return width >= 0; });
    if (!areWidths || static_cast<int>(widths.size()) != columnsOf(getHWND())) return 0;
    for (std::size_t at = 0; at < widths.size(); ++at)
        ListView_SetColumnWidth(
            getHWND(), static_cast<int>(at),
            toolbox::dialog::scaled(widths[at], dpi, toolbox::dialog::screenDpi()));
    return 1;
}

int TvListView::saveWidths(const toolbox::SettingName& name) const {
    if (!getHWND()) return 0;
    std::string line = std::to_string(toolbox::dialog::screenDpi());
    for (const int width : columnWidths()) line += " " + std::to_string(width);
    return GMSG::writeProfile(kSection, name, RWCString(line));
}

int TvListView::setText(int row, int column, const CString& text) {
    const HWND list = getHWND();
    if (!list || row < 0 || column < 0) return 0;
    const int rows = ListView_GetItemCount(list);
    if (row > rows || (row == rows && column > 0)) return 0;
    std::string shown = text.str();
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = shown.data();
    const bool isNew = row == rows;
    const LRESULT done = SendMessageA(list, isNew ? LVM_INSERTITEMA : LVM_SETITEMA, 0,
                                      reinterpret_cast<LPARAM>(&item));
    return isNew ? done >= 0 : done != 0;
}

CString TvListView::getText(int row, int column) const {
    std::string text(128, '\0');
    for (;;) {
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        const auto length = static_cast<std::size_t>(SendMessageA(getHWND(), LVM_GETITEMTEXTA,
                                                                  static_cast<WPARAM>(row),
                                                                  reinterpret_cast<LPARAM>(&item)));
        if (length + 1 < text.size()) return CString(text.substr(0, length));
        text.resize(2 * text.size());  // there may be more
    }
}

int TvListView::selectedRow() const {
    return getHWND() ? ListView_GetNextItem(getHWND(), -1, LVNI_SELECTED) : -1;
}

std::vector<int> TvListView::selectedRows() const {
    std::vector<int> rows;
    for (int row = selectedRow(); row >= 0;
         row = ListView_GetNextItem(getHWND(), row, LVNI_SELECTED))
        rows.push_back(row);
    return rows;
}

int TvListView::selectRow(int row, bool selected) {
    const HWND list = getHWND();
    if (!list || row < kEveryRow || row >= ListView_GetItemCount(list)) return 0;
    const UINT states = LVIS_SELECTED | (row == kEveryRow ? 0u : UINT{LVIS_FOCUSED});
    ListView_SetItemState(list, row, selected ? states : 0u, states);
    if (selected && row != kEveryRow) ListView_EnsureVisible(list, row, FALSE);
    return 1;
}
