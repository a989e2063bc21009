// Rows of the list of keys. What the application is asked for waits until the list has painted: an
// answer may end the dialog.
#include <algorithm>
#include <utility>

#include "dialog/keys/key_list_state_win32.h"
#include "dialog/keys/key_texts.h"
#include "key_dialogs.h"

using toolbox::detail::Watch;
using toolbox::keys::Ids;

TvKeyListDialog::State::State(TvKeyListDialog& owner, UDManager& keys)
    : dialog(owner), manager(keys), model([this](UINT id) {
          return toolbox::keys::KeyTexts{manager.getKey(id), manager.getKeyDesc(id)};
      }) {}

UINT TvKeyListDialog::State::workMessage() {
    static const UINT message = RegisterWindowMessageA("toolbox list of keys");
    return message;
}

void TvKeyListDialog::State::post(Work work) {
    if (!dialog.getHWND() || (posted & work)) return;
    if (PostMessageA(dialog.getHWND(), workMessage(), work, 0)) posted |= work;
}

void TvKeyListDialog::State::doWork(WPARAM work) {
    if (!(posted & work)) return;
    posted &= ~work;
    if (work == kRefresh)
        refresh();
    else if (work == kFill)
        fill();
    else
        showButtons();
}

void TvKeyListDialog::State::refresh() {
    const Watch self(life);
    const RWTValOrderedVector<UINT> chosen = dialog.chosenKeys();
    if (self.gone() || !dialog.getHWND()) return;
    posted &= ~WPARAM{kRefresh};
    drag.end();  // its rows are others
    takeSelection();
    model.setKeys(toolbox::keys::currentKeys());
    model.setChosen(Ids(chosen.begin(), chosen.end()));
    setGroupMembers();
    std::erase_if(said, [this](const auto& each) { return !model.contains(each.first); });
    ageSamples();
    showRows();
}

void TvKeyListDialog::State::setGroupMembers() {
    if (group == kAllKeys) return model.setGroup(std::nullopt);
    const RWTValOrderedVector<UINT> members = manager.getChildList(group, 0);
    model.setGroup(std::unordered_set<UINT>(members.begin(), members.end()));
}

void TvKeyListDialog::State::fillGroups() {
    const HWND box = dialog.control(IDC_KEY_LIST_GROUP);
    if (!box) return;
    SendMessageA(box, CB_RESETCONTENT, 0, 0);
    const auto add = [&](UINT id, const CString& name) {
        const LRESULT at =
            SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
        SendMessageA(box, CB_SETITEMDATA, static_cast<WPARAM>(at), static_cast<LPARAM>(id));
        if (id == group) SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
    };
    add(kAllKeys, toolbox::keys::printed(toolbox::keys::kAllKeysName));
    for (const Group& each : groups) add(each.id, each.name);
    for (const int control : {IDC_KEY_LIST_GROUP_LABEL, IDC_KEY_LIST_GROUP})
        dialog.enable(control, !groups.empty());
}

void TvKeyListDialog::State::showRows() {
    model.setFilter(filter.view());
    model.arrange();
    list.show(model, focused);
    post(kShowButtons);
}

void TvKeyListDialog::State::takeSelection() {
    if (!std::exchange(selectionIsNew, false)) return;
    model.select(list.selectedIds(model));
    focused = list.focusedId(model, focused);
}

void TvKeyListDialog::State::fill() {
    const Watch self(life);
    const auto rows = list.rowsInSight(model);
    const auto isKnown = [this](UINT id) {
        const auto found = said.find(id);
        return found != said.end() && found->second.age == age;
    };
    Ids missing;
    for (std::size_t row = rows.first; row < rows.second; ++row)
        if (!isKnown(model.row(row))) missing.push_back(model.row(row));
    const unsigned now = age;
    for (const UINT id : missing) {
        const CString units(manager.getUnitsStr(id));
        if (self.gone()) return;
        const CString sample = dialog.sampleOf(id);
        if (self.gone()) return;
        said.insert_or_assign(id, Said{units, sample, now});
    }
    if (!missing.empty()) list.redraw(list.rowsInSight(model));
}

CString TvKeyListDialog::State::textOf(UINT id, int column) {
    using namespace toolbox::keys;
    switch (column) {
        case kKey:
            return CString(manager.getKey(id));
        case kDescription:
            return CString(manager.getKeyDesc(id));
        case kHeader:
            return CString(manager.getHeaderStr(id));
        case kPlace: {
            const std::size_t place = model.placeOf(id);
            return place > 0 ? CString(std::to_string(place)) : CString();
        }
        default:
            return saidOf(id, column);
    }
}

CString TvKeyListDialog::State::saidOf(UINT id, int column) {
    const auto found = said.find(id);
    if (found == said.end() || found->second.age != age) post(kFill);
    if (found == said.end()) return {};
    return column == toolbox::keys::kUnits ? found->second.units : found->second.sample;
}

void TvKeyListDialog::State::ageSamples() {
    ++age;
    if (list.getHWND()) InvalidateRect(list.getHWND(), nullptr, FALSE);
}

void TvKeyListDialog::State::answerText(NMLVDISPINFOA& note) {
    LVITEMA& item = note.item;
    const auto row = static_cast<std::size_t>(item.iItem);
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0) return;
    const CString text = row < model.rowCount() ? textOf(model.row(row), item.iSubItem) : CString();
    lstrcpynA(item.pszText, text, item.cchTextMax);
}

LRESULT TvKeyListDialog::State::find(const NMLVFINDITEMA& note) {
    if (!(note.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !note.lvfi.psz) return -1;
    const auto row = model.find(note.lvfi.psz, static_cast<std::size_t>(std::max(note.iStart, 0)));
    return row ? static_cast<LRESULT>(*row) : -1;
}
