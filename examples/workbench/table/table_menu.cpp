// What the table offers for a row and for a column.
#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "table/table_view.h"

namespace {

enum MenuItem : UINT_PTR { kNone, kEdit, kCopy, kFormat, kHide };

class PopupMenu {
  public:
    PopupMenu() : menu_(CreatePopupMenu()) {}
    ~PopupMenu() { DestroyMenu(menu_); }
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;

    void add(MenuItem item, const CString& label, bool enabled = true) {
        AppendMenuA(menu_, MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), item, label.c_str());
    }
    /// What the user chose.
    [[nodiscard]] MenuItem open(HWND owner, POINT place) const {
        return static_cast<MenuItem>(TrackPopupMenu(menu_, TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x,
                                                    place.y, 0, owner, nullptr));
    }

  private:
    HMENU menu_;
};

}  // namespace

void TableView::openMenu(POINT place) {
    if (place.x == -1 && place.y == -1) return openRowMenu(placeOfRow());  // by the keyboard
    // A click on the header comes as one on the list.
    const HWND header = ListView_GetHeader(list_);
    HDHITTESTINFO hit{place, 0, -1};
    ScreenToClient(header, &hit.pt);
    SendMessageA(header, HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (!(hit.flags & (HHT_ONHEADER | HHT_ONDIVIDER | HHT_NOWHERE))) return openRowMenu(place);
    if (hit.iItem >= 0) openColumnMenu(place, hit.iItem);
}

POINT TableView::placeOfRow() const {
    RECT row{};
    const int focused = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
    if (focused >= 0) ListView_GetItemRect(list_, focused, &row, LVIR_LABEL);
    POINT place{row.left, row.bottom};
    ClientToScreen(list_, &place);
    return place;
}

void TableView::openRowMenu(POINT place) {
    const int row =
        ListView_GetSelectedCount(list_) == 1 ? ListView_GetNextItem(list_, -1, LVNI_SELECTED) : -1;
    PopupMenu menu;
    menu.add(kEdit, text(kMenuEdit), row >= 0);
    menu.add(kCopy, text(kMenuCopy));
    const ViewWatch watch(*this);
    const MenuItem chosen = menu.open(getHWND(), place);
    if (!watch.isOpen()) return;
    switch (chosen) {
        case kEdit:
            return editRow(row);
        case kCopy:
            return copyRows();
        default:
            return;
    }
}

void TableView::openColumnMenu(POINT place, int column) {
    markColumn(column);
    const RWCString heading = columns_.heading(column);
    PopupMenu menu;
    menu.add(kFormat, text(kMenuFormat, heading));
    menu.add(kHide, text(kMenuHide, heading), columns_.count() > 1);
    const ViewWatch watch(*this);
    const MenuItem chosen = menu.open(getHWND(), place);
    if (!watch.isOpen()) return;
    switch (chosen) {
        case kFormat:
            return editFormat(column);
        case kHide:
            return hideColumn(column);
        default:
            return;
    }
}

void TableView::hideColumn(int column) {
    RWTValOrderedVector<UINT> keys = workbench().keys().getSelection();
    if (keys.entries() < 2 || !keys.remove(columns_.key(column))) return;
    workbench().keys().setSelection(keys);
    workbench().keysChanged();
}

void TableView::editFormat(int column) {
    if (const UINT key = columns_.key(column))
        workbench().editFormat(Workbench::frame().getFrame(), key);
}

void TableView::editMarkedFormat() {
    const int column = columns_.indexOf(markedKey_);
    if (column >= 0) return editFormat(column);
    MessageBeep(MB_OK);
    workbench().showHint(text(kChooseColumn));
}
