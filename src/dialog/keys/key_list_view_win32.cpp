// Rows, selection and geometry of the list control.
#include "dialog/keys/key_list_view_win32.h"

#include <algorithm>

#include "dialog/keys/key_texts.h"
#include "key_dialogs.h"
#include "toolbox/windowing.h"

namespace toolbox::keys {
namespace {

constexpr const char* kSetting = "KeyList";

}  // namespace

int KeyListView::commandOf(UINT message, WPARAM key) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    if (message == WM_SYSKEYDOWN && !control)
        return key == VK_UP ? IDC_KEY_LIST_UP : key == VK_DOWN ? IDC_KEY_LIST_DOWN : 0;
    if (message != WM_KEYDOWN) return 0;
    if (control && (key == 'C' || key == VK_INSERT)) return IDC_KEY_LIST_COPY;
    return key == VK_F2 ? IDC_KEY_LIST_DESCRIPTION : 0;
}

void KeyListView::addKeyColumns() {
    addColumns({{printed(kKeyHeading), 60},
                {printed(kDescriptionHeading), 110},
                {printed(kHeaderHeading), 46},
                {printed(kUnitsHeading), 38},
                {printed(kSampleHeading), 62, true},
                {printed(kPlaceHeading), 28, true}});
    restoreWidths(kSetting);
    widths_ = columnWidths();
}

void KeyListView::keepColumns() const {
    std::vector<int> widths = columnWidths();
    if (widths.size() != widths_.size() || widths.empty()) return;
    widths[kDescription] = widths_[kDescription];
    if (widths != widths_) saveWidths(kSetting);
}

void KeyListView::fitColumns() {
    RECT client{};
    if (fitting_ || !GetClientRect(getHWND(), &client)) return;
    fitting_ = true;  // a scroll bar that comes or goes sizes the control again
    int others = 0;
    for (int column = kKey; column <= kPlace; ++column)
        if (column != kDescription) others += ListView_GetColumnWidth(getHWND(), column);
    const int least = ListView_GetColumnWidth(getHWND(), kKey);
    ListView_SetColumnWidth(getHWND(), kDescription,
                            std::max(least, static_cast<int>(client.right) - others));
    fitting_ = false;
}

void KeyListView::show(const KeyListModel& model, UINT focused) {
    const HWND list = getHWND();
    if (!list) return;
    showing_ = true;
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCountEx(list, static_cast<int>(model.rowCount()), LVSICF_NOSCROLL);
    const Ids selected = model.selection();
    const bool all = !selected.empty() && selected.size() == model.rowCount();
    if (all) {
        selectAll();
    } else {
        deselect();
        for (const UINT id : selected)
            ListView_SetItemState(list, static_cast<int>(*model.rowOf(id)), LVIS_SELECTED,
                                  LVIS_SELECTED);
    }
    if (const auto row = model.rowOf(focused)) {
        ListView_SetItemState(list, static_cast<int>(*row), LVIS_FOCUSED, LVIS_FOCUSED);
        ListView_SetSelectionMark(list, static_cast<int>(*row));
        ListView_EnsureVisible(list, static_cast<int>(*row), FALSE);
    }
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, FALSE);
    showing_ = false;
}

/// For all rows at once the system visits every one of them, which takes time.
void KeyListView::deselect() {
    constexpr UINT kFew = 100;
    const UINT count = ListView_GetSelectedCount(getHWND());
    if (count > kFew) {
        ListView_SetItemState(getHWND(), -1, 0, LVIS_SELECTED);
    } else if (count > 0) {
        for (const int row : selectedRows())
            ListView_SetItemState(getHWND(), row, 0, LVIS_SELECTED);
    }
}

Ids KeyListView::selectedIds(const KeyListModel& model) const {
    Ids ids;
    for (const int row : selectedRows())
        if (static_cast<std::size_t>(row) < model.rowCount())
            ids.push_back(model.row(static_cast<std::size_t>(row)));
    return ids;
}

UINT KeyListView::focusedId(const KeyListModel& model, UINT otherwise) const {
    const int row = getHWND() ? ListView_GetNextItem(getHWND(), -1, LVNI_FOCUSED) : -1;
    const auto place = static_cast<std::size_t>(row);
    return row >= 0 && place < model.rowCount() ? model.row(place) : otherwise;
}

void KeyListView::selectAll() {
    ListView_SetItemState(getHWND(), -1, LVIS_SELECTED, LVIS_SELECTED);
}

std::pair<std::size_t, std::size_t> KeyListView::rowsInSight(const KeyListModel& model) const {
    const auto top = static_cast<std::size_t>(std::max(ListView_GetTopIndex(getHWND()), 0));
    const auto whole = static_cast<std::size_t>(std::max(ListView_GetCountPerPage(getHWND()), 0));
    return {std::min(top, model.rowCount()), std::min(top + whole + 1, model.rowCount())};
}

void KeyListView::redraw(std::pair<std::size_t, std::size_t> rows) {
    if (rows.first < rows.second)
        ListView_RedrawItems(getHWND(), static_cast<int>(rows.first),
                             static_cast<int>(rows.second) - 1);
}

RECT KeyListView::rowArea(std::size_t row) const {
    RECT area{};
    ListView_GetItemRect(getHWND(), static_cast<int>(row), &area, LVIR_BOUNDS);
    return area;
}

POINT KeyListView::belowFocus() const {
    const int row = ListView_GetNextItem(getHWND(), -1, LVNI_FOCUSED);
    const RECT area = row >= 0 ? rowArea(static_cast<std::size_t>(row)) : RECT{};
    POINT place{area.left, area.bottom};
    ClientToScreen(getHWND(), &place);
    return place;
}

int KeyListView::rowHeight() const {
    const RECT first = rowArea(0);
    return std::max(static_cast<int>(first.bottom - first.top), 1);
}

std::size_t KeyListView::rowBefore(POINT point) const {
    const int rows = ListView_GetItemCount(getHWND());
    if (rows <= 0) return 0;
    const int height = rowHeight();
    const int below = static_cast<int>(point.y - rowArea(0).top) + height / 2;
    return static_cast<std::size_t>(std::clamp(below / height, 0, rows));
}

int KeyListView::edgeOf(std::size_t row) const {
    return static_cast<int>(rowArea(0).top) + static_cast<int>(row) * rowHeight();
}

int KeyListView::beyond(POINT point) const {
    RECT client{};
    GetClientRect(getHWND(), &client);
    const auto top = static_cast<std::size_t>(std::max(ListView_GetTopIndex(getHWND()), 0));
    if (point.y < edgeOf(top)) return -1;
    return point.y >= client.bottom ? 1 : 0;
}

LRESULT KeyListView::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == MDI::getKeyQuestion()) {
        const MSG& key = *reinterpret_cast<const MSG*>(lParam);
        if (commandOf(key.message, key.wParam)) return TRUE;
    }
    if (const int command = commandOf(message, wParam)) {
        PostMessageA(GetParent(getHWND()), WM_COMMAND, static_cast<WPARAM>(command), 0);
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == 'A' && GetKeyState(VK_CONTROL) < 0) {
        selectAll();
        return 0;
    }
    if (message == WM_SIZE) {
        const LRESULT result = pass(message, wParam, lParam);
        fitColumns();
        return result;
    }
    if (message == WM_CTLCOLORSTATIC)  // of the mark that shows where keys are dropped
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_HIGHLIGHT));
    return TvListView::handleMessage(message, wParam, lParam);
}

}  // namespace toolbox::keys
