// The list of keys: the columns first, in their order, then the others.
#include <algorithm>
#include <vector>

#include "dialogs/dialog_window.h"
#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "frame/workbench_frame.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "table/table_text.h"

namespace {

using Keys = std::vector<UINT>;

Keys columnsOf(const ProjectKeys& keys) {
    const RWTValOrderedVector<UINT>& ids = keys.getSelection();
    return {ids.begin(), ids.end()};
}

/// How a key of its format prints a value; the kinds have nothing else in common.
CString sampleOf(ProjectKeys& keys, UINT id) {
    const UDKeyData key = keys.getKeyData(id);
    if (key.getFormat()->isReal()) {
        RealFormatedValue value;
        value = 1234.5678;
        return keys.shown(id, value);
    }
    if (key.getFormat()->isNumber()) {
        NumberFormatedValue value;
        value = 12;
        return keys.shown(id, value);
    }
    StringFormatedValue value;
    value = RWCString(text(kSampleValue));
    return keys.shown(id, value);
}

class KeyList : public DialogWindow {
  public:
    explicit KeyList(Workbench& workbench) : workbench_(workbench) {}

    /// False when it could not be made; the object is the caller's then.
    bool open() { return DialogWindow::open(workbench_.frame().getFrame(), IDD_KEY_LIST); }
    void show() const;
    void close() const {
        Workbench::frame().unregisterModeless(window());
        DestroyWindow(window());
    }
    void refresh();

    static KeyList* theList;

  private:
    void opened() override;
    bool command(int id, int notification) override;
    bool notified(const NMHDR& note) override;
    void activated(bool active) override;
    void destroyed() override;

    void showButtons();
    void setColumns(const Keys& columns);
    void toggleColumn();
    void moveColumn(int by);
    void copyToken();
    void reset();
    [[nodiscard]] ProjectKeys& keys() const { return workbench_.keys(); }

    Workbench& workbench_;
    Keys shown_;         // by lines
    UINT selected_ = 0;  // always a key
    bool refreshing_ = false;
};

KeyList* KeyList::theList = nullptr;

void KeyList::show() const {
    ShowWindow(window(), SW_SHOW);
    SetActiveWindow(window());
}

void KeyList::opened() {
    Workbench::frame().registerModeless(window());
    addListColumns(control(IDC_KEYS), {{kKeyHeading, 44},
                                       {kDescriptionHeading, 124},
                                       {kHeaderHeading, 56},
                                       {kSampleHeading, 46, true},
                                       {kPlaceHeading, 38, true}});
    selected_ = columnsOf(keys()).front();
    refresh();
}

/// Delete would delete what is selected in the document, and Ctrl+C copy the table.
void KeyList::activated(bool active) {
    static_cast<WorkbenchFrame&>(Workbench::frame()).setEditingKeys(!active);
}

void KeyList::destroyed() {
    theList = nullptr;
    activated(false);
    delete this;
}

void KeyList::refresh() {
    shown_ = columnsOf(keys());
    const std::size_t columns = shown_.size();
    for (const UINT id : ProjectKeys::all())
        if (std::ranges::find(shown_, id) == shown_.end()) shown_.push_back(id);

    const HWND list = control(IDC_KEYS);
    refreshing_ = true;
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const UINT id = shown_[i];
        const int row = static_cast<int>(i);
        setListText(list, row, 0, keys().getKey(id));
        setListText(list, row, 1, keys().getKeyDesc(id));
        setListText(list, row, 2, headingOf(keys(), id));
        setListText(list, row, 3, sampleOf(keys(), id));
        setListText(list, row, 4, i < columns ? text(kWholeNumber, row + 1) : CString());
    }
    const auto at = std::ranges::find(shown_, selected_);
    selectRow(list, kEveryRow, false);
    selectRow(list, static_cast<int>(at - shown_.begin()));
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, FALSE);
    refreshing_ = false;
    showButtons();
}

void KeyList::showButtons() {
    const Keys columns = columnsOf(keys());
    const auto at = std::ranges::find(columns, selected_);
    const bool isColumn = at != columns.end();
    CheckDlgButton(window(), IDC_KEY_SHOWN, isColumn ? BST_CHECKED : BST_UNCHECKED);
    // A table without columns would show nothing.
    enable(IDC_KEY_SHOWN, !isColumn || columns.size() > 1);
    enable(IDC_KEY_UP, isColumn && at != columns.begin());
    enable(IDC_KEY_DOWN, isColumn && at + 1 != columns.end());
}

bool KeyList::command(int id, int) {
    switch (id) {
        case IDOK:
        case IDC_KEY_FORMAT:
            workbench_.editFormat(window(), selected_);
            return true;
        case IDC_KEY_SHOWN:
            toggleColumn();
            return true;
        case IDC_KEY_UP:
            moveColumn(-1);
            return true;
        case IDC_KEY_DOWN:
            moveColumn(1);
            return true;
        case IDC_KEY_COPY:
            copyToken();
            return true;
        case IDC_KEY_RESET:
            reset();
            return true;
        case IDCANCEL:
            close();
            return true;
        default:
            return false;
    }
}

bool KeyList::notified(const NMHDR& note) {
    if (note.idFrom != IDC_KEYS || refreshing_) return false;
    if (note.code == LVN_KEYDOWN) {
        const WORD key = reinterpret_cast<const NMLVKEYDOWN&>(note).wVKey;
        if ((key == 'C' || key == VK_INSERT) && GetKeyState(VK_CONTROL) < 0) copyToken();
        return false;
    }
    const int row = selectedRow(note.hwndFrom);
    if (row < 0) {
        // Below the last line: the buttons are always for the line that is selected.
        if (note.code == NM_CLICK || note.code == NM_RCLICK) refresh();
        return false;
    }
    selected_ = shown_[static_cast<std::size_t>(row)];
    if (note.code == LVN_ITEMCHANGED) showButtons();
    if (note.code == NM_DBLCLK) workbench_.editFormat(window(), selected_);
    return false;
}

void KeyList::setColumns(const Keys& columns) {
    keys().setSelection(RWTValOrderedVector<UINT>(columns));
    workbench_.keysChanged();
}

void KeyList::toggleColumn() {
    Keys columns = columnsOf(keys());
    if (std::erase(columns, selected_) == 0) columns.push_back(selected_);
    if (!columns.empty()) setColumns(columns);
}

void KeyList::moveColumn(int by) {
    Keys columns = columnsOf(keys());
    const auto at = std::ranges::find(columns, selected_);
    if (at == columns.end() || (by < 0 ? at == columns.begin() : at + 1 == columns.end())) return;
    std::iter_swap(at, at + by);
    setColumns(columns);
}

void KeyList::copyToken() {
    // The manager copies the token under the cursor of its selection, which the columns are.
    ProjectKeys& keys = workbench_.keys();
    const RWTValOrderedVector<UINT> columns = keys.getSelection();
    keys.setSelection(selected_);
    const int copied = keys.setSelTokenToClip();
    keys.setSelection(columns);
    if (copied)
        workbench_.showHint(text(kTokenCopied, keys.getKey(selected_)));
    else
        workbench_.report(kNotCopied, MB_ICONEXCLAMATION);
}

void KeyList::reset() {
    Workbench& workbench = workbench_;  // the list may go while a box is open
    keys().resetKey(selected_);
    if (!keys().save(selected_))
        workbench.report(kKeyNotSaved, MB_ICONEXCLAMATION, keys().getKey(selected_));
    workbench.keysChanged();
}

}  // namespace

void showKeyList(Workbench& workbench) {
    if (!KeyList::theList) {
        auto list = std::make_unique<KeyList>(workbench);
        if (!list->open()) return;
        KeyList::theList = list.release();  // goes with its window
    }
    KeyList::theList->show();
}

void closeKeyList() {
    if (KeyList::theList) KeyList::theList->close();
}

void refreshKeyList() {
    if (KeyList::theList) KeyList::theList->refresh();
}
