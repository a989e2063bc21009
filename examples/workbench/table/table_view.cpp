// A virtual list: it asks for the text of each cell that it draws.
#include "table/table_view.h"

#include <windowsx.h>

#include <algorithm>

#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "table/table_text.h"
#include "toolbox/platform.h"

namespace {

constexpr const char* kClass = "WorkbenchTable";
constexpr std::intptr_t kListId = 1;
constexpr int kEveryRow = -1;
constexpr COLORREF kMarkedColumn = RGB(228, 238, 250);

// Messages to itself, for what the list tells before it has done it.
constexpr UINT kSelectionMoved = WM_APP + 1;
constexpr UINT kColumnsDragged = WM_APP + 2;

const NMLISTVIEW& listNote(const NMHDR& note) {
    return reinterpret_cast<const NMLISTVIEW&>(note);
}

/// 0: only its data changed.
bool changesSelection(const NMHDR& note) {
    if (note.code == LVN_ODSTATECHANGED) return true;
    const NMLISTVIEW& change = listNote(note);
    return ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0;
}

}  // namespace

void registerTableClass(HINSTANCE instance) {
    WNDCLASSA table{};
    table.lpfnWndProc = WindowObject::StdWinProc;
    table.hInstance = instance;
    table.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_FRAME));
    table.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    table.lpszClassName = kClass;  // without background: the list covers it
    RegisterClassA(&table);
}

void showTable(Document& document) {
    if (const TableView* const shown = viewOf<TableView>(document))
        shown->bringToFront();
    else
        View::open(new TableView(document), kClass);
}

unsigned short TableView::nameText() const {
    return kTableName;
}

LRESULT TableView::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            createList();
            break;
        case WM_SIZE:
            MoveWindow(list_, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
            break;
        case WM_SETFOCUS:
            SetFocus(list_);
            return 0;
        case WM_NOTIFY:
            return notified(*reinterpret_cast<NMHDR*>(lParam));
        case WM_COMMAND:
            if (command(LOWORD(wParam))) return 0;
            break;
        case WM_CONTEXTMENU:
            openMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            return 0;
        case kSelectionMoved:
            selectionMoved_ = false;
            takeSelection();
            return 0;
        case kColumnsDragged:
            takeColumnOrder();
            return 0;
        default:
            break;
    }
    return View::handleMessage(message, wParam, lParam);
}

void TableView::createList() {
    list_ = CreateWindowExA(
        0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS,
        0, 0, 0, 0, getHWND(), reinterpret_cast<HMENU>(kListId), workbench().instance(), nullptr);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES |
                                                 LVS_EX_HEADERDRAGDROP | LVS_EX_DOUBLEBUFFER);
    showColumns();
    showBeams();
    showSelection();
}

bool TableView::command(int id) {
    if (id == CMD_COPY)
        copyRows();
    else if (id == CMD_FORMAT)
        editMarkedFormat();
    else
        return false;
    return true;
}

LRESULT TableView::notified(NMHDR& note) {
    switch (note.code) {
        case LVN_GETDISPINFOA:
            giveText(reinterpret_cast<NMLVDISPINFOA&>(note));
            return 0;
        case LVN_ODFINDITEMA:
            return findByName(reinterpret_cast<const NMLVFINDITEMA&>(note));
        case NM_CUSTOMDRAW:
            // The header's as well come this way.
            return note.hwndFrom == list_ ? draw(reinterpret_cast<NMLVCUSTOMDRAW&>(note))
                                          : CDRF_DODEFAULT;
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            if (!showing_ && changesSelection(note)) takeSelectionLater();
            return 0;
        case NM_DBLCLK:
            editRow(listNote(note).iItem);
            return 0;
        case NM_RETURN:
            editRow(ListView_GetNextItem(list_, kEveryRow, LVNI_FOCUSED));
            return 0;
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(note).wVKey == 'A' &&
                GetKeyState(VK_CONTROL) < 0)
                selectAll();
            return 0;
        case LVN_COLUMNCLICK:
            markColumn(listNote(note).iSubItem);
            return 0;
        case HDN_ITEMDBLCLICKA:
        case HDN_ITEMDBLCLICKW:
            editFormat(reinterpret_cast<const NMHEADERA&>(note).iItem);
            return 0;
        case HDN_ENDDRAG:
            PostMessageA(getHWND(), kColumnsDragged, 0, 0);
            return 0;
        default:
            return 0;
    }
}

void TableView::giveText(NMLVDISPINFOA& wanted) {
    LVITEMA& cell = wanted.item;
    Document* const shown = document;
    if (!(cell.mask & LVIF_TEXT) || cell.cchTextMax <= 0 || !shown) return;
    const CString text =
        cellText(*shown, static_cast<std::size_t>(cell.iItem), columns_.key(cell.iSubItem));
    lstrcpynA(cell.pszText, text.c_str(), cell.cchTextMax);
}

LRESULT TableView::findByName(const NMLVFINDITEMA& wanted) const {
    const Document* const shown = document;
    if (!shown || !(wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL))) return -1;
    const std::string_view typed = wanted.lvfi.psz;
    const std::vector<Beam>& beams = shown->project().beams();
    const int first = std::max(wanted.iStart, 0);
    const int count = static_cast<int>(beams.size());
    for (int i = 0; i < count; ++i) {
        const int row = (first + i) % count;
        const CString& name = beams[static_cast<std::size_t>(row)].name;
        const CString start(name.view().substr(0, typed.size()));
        if (lstrcmpiA(start.c_str(), wanted.lvfi.psz) == 0) return row;
    }
    return -1;
}

LRESULT TableView::draw(NMLVCUSTOMDRAW& drawn) const {
    switch (drawn.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return markedKey_ ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
        case CDDS_ITEMPREPAINT:
            return CDRF_NOTIFYSUBITEMDRAW;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            drawn.clrTextBk =
                columns_.key(drawn.iSubItem) == markedKey_ ? kMarkedColumn : CLR_DEFAULT;
            return CDRF_DODEFAULT;
        default:
            return CDRF_DODEFAULT;
    }
}

void TableView::documentChanged(unsigned changes) {
    if (!list_) return;
    if (changes & Document::KeysChanged) showColumns();
    if (changes & Document::Content) showBeams();
    if (changes & (Document::Content | Document::Selected)) showSelection();
}

void TableView::showBeams() {
    const Document* const shown = document;
    const auto count = shown ? static_cast<int>(shown->project().beams().size()) : 0;
    if (count == ListView_GetItemCount(list_))
        InvalidateRect(list_, nullptr, FALSE);
    else
        ListView_SetItemCountEx(list_, count, LVSICF_NOSCROLL);
}

void TableView::showSelection() {
    const Document* const shown = document;
    if (!shown) return;
    const Selection& selection = shown->selection();
    const bool isRow = selection.kind == Selection::OneBeam || selection.kind == Selection::OneLoad;
    const int count = ListView_GetSelectedCount(list_);
    const int row = isRow ? static_cast<int>(shown->work().indexOf(selection.id)) : kEveryRow;
    bool isShown = count == 0;
    if (isRow)
        isShown = count == 1 && ListView_GetItemState(list_, row, LVIS_SELECTED) != 0;
    else if (selection.kind == Selection::Nothing)
        isShown = count != 1;  // several that the user is choosing are no selection
    if (isShown) return;
    showing_ = true;
    ListView_SetItemState(list_, kEveryRow, 0, LVIS_SELECTED);
    if (isRow) {
        const UINT states = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(list_, row, states, states);
        ListView_EnsureVisible(list_, row, FALSE);
    }
    showing_ = false;
}

void TableView::takeSelectionLater() {
    if (!selectionMoved_) selectionMoved_ = PostMessageA(getHWND(), kSelectionMoved, 0, 0) != 0;
}

void TableView::takeSelection() {
    Document* const shown = document;
    if (!shown) return;
    const Selection& before = shown->selection();
    const UINT count = ListView_GetSelectedCount(list_);
    if (count != 1) {
        // A label stays selected as long as no row is.
        if (count > 1 || before.kind != Selection::OneLabel) shown->select({});
        return;
    }
    const auto row =
        static_cast<std::size_t>(ListView_GetNextItem(list_, kEveryRow, LVNI_SELECTED));
    const std::vector<Beam>& beams = shown->project().beams();
    if (row >= beams.size()) return;
    const std::uint32_t id = beams[row].id;
    if (before.kind != Selection::OneLoad || before.id != id)
        shown->select({.kind = Selection::OneBeam, .id = id});
}

void TableView::selectAll() {
    ListView_SetItemState(list_, kEveryRow, LVIS_SELECTED, LVIS_SELECTED);
    takeSelectionLater();
}

void TableView::editRow(int row) {
    Document* const shown = document;
    if (!shown || row < 0 || static_cast<std::size_t>(row) >= shown->project().beams().size())
        return;
    Beam beam = shown->project().beams()[static_cast<std::size_t>(row)];
    if (editBeam(Workbench::frame().getFrame(), workbench(), beam)) shown->put(beam);
}

void TableView::copyRows() {
    Document* const shown = document;
    if (!shown) return;
    std::vector<std::size_t> rows;
    for (int row = kEveryRow; (row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) >= 0;)
        rows.push_back(static_cast<std::size_t>(row));
    if (rows.empty())
        for (std::size_t row = 0; row < shown->project().beams().size(); ++row) rows.push_back(row);
    const std::string text = tableText(*shown, columns_.keys(), rows);
    if (toolbox::platform::current().clipboard->setText(text.c_str()) == 0)
        workbench().showHint(::text(kRowsCopied, rows.size()));
    else
        workbench().report(kNotCopied, MB_ICONEXCLAMATION);
}

void TableView::showColumns() {
    columns_.show(list_, workbench().keys());
    if (columns_.indexOf(markedKey_) < 0) markedKey_ = 0;
    InvalidateRect(list_, nullptr, FALSE);
}

void TableView::markColumn(int column) {
    markedKey_ = columns_.key(column);
    InvalidateRect(list_, nullptr, FALSE);
}

void TableView::takeColumnOrder() {
    const RWTValOrderedVector<UINT> order(columns_.dragged(list_));
    if (order == workbench().keys().getSelection()) return;
    workbench().keys().setSelection(order);
    workbench().keysChanged();
}
