// The list of keys as applications see it, and what its window is told.
#include <algorithm>

#include "dialog/dialog_phase_win32.h"
#include "dialog/keys/description_dialog_win32.h"
#include "dialog/keys/key_list_state_win32.h"
#include "dialog/keys/key_texts.h"
#include "key_dialogs.h"

using toolbox::detail::Watch;
using toolbox::keys::Ids;

TvKeyListDialog::TvKeyListDialog(UDManager& manager)
    : TvDialog("DLG_KEY_LIST"), state_(std::make_unique<State>(*this, manager)) {}

TvKeyListDialog::~TvKeyListDialog() = default;

UDManager& TvKeyListDialog::getManager() const {
    return state_->manager;
}

void TvKeyListDialog::addGroup(UINT gid, const CString& name) {
    if (gid == kAllKeys) return;
    const auto found = std::ranges::find(state_->groups, gid, &State::Group::id);
    if (found == state_->groups.end())
        state_->groups.push_back({gid, name});
    else
        found->name = name;
    state_->fillGroups();
}

int TvKeyListDialog::showGroup(UINT gid) {
    State& state = *state_;
    if (gid != kAllKeys &&
        std::ranges::find(state.groups, gid, &State::Group::id) == state.groups.end())
        return 0;
    state.group = gid;
    state.fillGroups();
    if (!getHWND()) return 1;
    state.takeSelection();
    state.setGroupMembers();
    state.showRows();
    return 1;
}

UINT TvKeyListDialog::getShownGroup() const {
    return state_->group;
}

void TvKeyListDialog::setFilter(const CString& words) {
    state_->filter = words;
    if (!getHWND()) return;
    if (!SetDlgItemTextA(getHWND(), IDC_KEY_LIST_FILTER, words)) state_->showRows();
}

CString TvKeyListDialog::getFilter() const {
    return state_->filter;
}

void TvKeyListDialog::refresh() {
    if (getHWND()) state_->refresh();
}

RWTValOrderedVector<UINT> TvKeyListDialog::getShownKeys() const {
    return RWTValOrderedVector<UINT>(state_->model.ids());
}

RWTValOrderedVector<UINT> TvKeyListDialog::getSelectedKeys() const {
    return RWTValOrderedVector<UINT>(state_->selection());
}

void TvKeyListDialog::setSelectedKeys(const RWTValOrderedVector<UINT>& ids) {
    State& state = *state_;
    state.selectionIsNew = false;
    state.model.select(Ids(ids.begin(), ids.end()));
    const Ids selected = state.model.selection();
    if (!selected.empty()) state.focused = selected.front();
    state.list.show(state.model, state.focused);
    state.post(State::kShowButtons);
}

RWTValOrderedVector<UINT> TvKeyListDialog::chosenKeys() {
    return state_->manager.getSelection();
}

int TvKeyListDialog::chooseKeys(const RWTValOrderedVector<UINT>& ids) {
    if (!ids.isEmpty()) return state_->manager.setSelection(ids);
    state_->manager.resetSelection();
    return 1;
}

CString TvKeyListDialog::sampleOf(UINT id) {
    UDManager& manager = state_->manager;
    const Watch self(state_->life);
    RWCString shown = manager.getFormatedString(id, 1);
    if (!shown.empty() || self.gone()) return CString(shown);
    const UDKeyData data = manager.getKeyData(id);
    if (data.getFormat()->isReal()) {
        RealFormatedValue value;
        value = 1234.5678;
        return CString(manager.getFormatedString(id, value, 1));
    }
    if (data.getFormat()->isNumber()) {
        NumberFormatedValue value;
        value = 1234;
        return CString(manager.getFormatedString(id, value, 1));
    }
    StringFormatedValue value;
    value = RWCString(toolbox::keys::printed(toolbox::keys::kSampleText));
    return CString(manager.getFormatedString(id, value, 1));
}

int TvKeyListDialog::editFormat(UINT id) {
    UDManager& manager = state_->manager;
    UDKeyData data = manager.getKeyData(id);
    {
        const toolbox::dialog::DialogPhase phase(getHWND());
        if (!data.getFormat()->setFormatDlg(getHWND(), data)) return 0;
    }
    if (!manager.setKeyDesc(id, data.getDescStr())) return 0;
    manager.setKeyFormat(id, *data.getFormat());
    return 1;
}

int TvKeyListDialog::editDescription(UINT id) {
    UDManager& manager = state_->manager;
    toolbox::keys::DescriptionDialog dialog(CString(manager.getKey(id)),
                                            CString(manager.getKeyDesc(id)));
    return dialog.run(getHWND()) && manager.setKeyDesc(id, RWCString(dialog.description()));
}

int TvKeyListDialog::resetKey(UINT id) {
    return state_->manager.resetKey(id);
}

void TvKeyListDialog::keysEdited(const RWTValOrderedVector<UINT>& ids) {
    constexpr std::size_t kOneByOne = 20;  // from here on all at once is faster
    constexpr std::size_t kMostNames = 5;
    UDManager& manager = state_->manager;
    Ids failed;
    if (ids.entries() <= kOneByOne)
        std::ranges::copy_if(ids, std::back_inserter(failed),
                             [&](UINT id) { return !manager.saveKey(id); });
    else if (!manager.saveAllKeys())
        failed.assign(ids.begin(), ids.end());
    if (failed.empty()) return;
    CString names;
    for (std::size_t i = 0; i < std::min(failed.size(), kMostNames); ++i)
        names += (i > 0 ? ", " : "") + manager.getKey(failed[i]);
    if (failed.size() > kMostNames) names += "...";
    GMSG::errorMsg(toolbox::keys::kNotSaved, MB_ICONEXCLAMATION, names);
}

int TvKeyListDialog::canInsertTokens() {
    return state_->field.isThere();
}

int TvKeyListDialog::insertTokens(const CString& tokens) {
    return state_->field.insert(tokens);
}

void TvKeyListDialog::opened() {
    State& state = *state_;
    const Watch self(state.life);
    state.posted = 0;
    state.field.look(getHWND());
    state.list.attach(getHWND(), IDC_KEY_LIST);
    state.filterField.attach(getHWND(), IDC_KEY_LIST_FILTER);
    state.list.addKeyColumns();
    state.list.fitColumns();
    state.fillGroups();
    SetDlgItemTextA(getHWND(), IDC_KEY_LIST_FILTER, state.filter);
    state.refresh();
    if (!self.gone() && getHWND()) state.showButtons();
}

int TvKeyListDialog::command(int control, int notification) {
    State& state = *state_;
    if (control == IDC_KEY_LIST_FILTER && notification == EN_CHANGE) {
        state.filterTyped();
        return 1;
    }
    if (control == IDC_KEY_LIST_GROUP && notification == CBN_SELCHANGE) {
        state.groupChosen();
        return 1;
    }
    if (control == IDCANCEL && state.drag.isOn()) {
        state.drag.end();
        return 1;
    }
    return notification == BN_CLICKED && state.clicked(control);
}

LRESULT TvKeyListDialog::notified(NMHDR& note) {
    State& state = *state_;
    if (!note.hwndFrom || note.hwndFrom != state.list.getHWND()) return 0;
    switch (note.code) {
        case LVN_GETDISPINFOA:
            state.answerText(reinterpret_cast<NMLVDISPINFOA&>(note));
            return 0;
        case LVN_ODFINDITEMA:
            return state.find(reinterpret_cast<const NMLVFINDITEMA&>(note));
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            if (state.list.isShowing()) return 0;
            state.selectionIsNew = true;
            state.post(State::kShowButtons);
            return 0;
        case LVN_BEGINDRAG:
            state.takeSelection();
            state.drag.begin(getHWND());
            return 0;
        case NM_DBLCLK:
            if (reinterpret_cast<const NMITEMACTIVATE&>(note).iItem >= 0)
                PostMessageA(getHWND(), WM_COMMAND, IDC_KEY_LIST_FORMAT, 0);
            return 0;
        default:
            return 0;
    }
}

int TvKeyListDialog::handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    State& state = *state_;
    result = 0;
    if (message == State::workMessage()) {
        state.doWork(wParam);
        return 1;
    }
    if (state.drag.take(message, wParam)) {
        state.choose(state.drag.takeOrder());
        return 1;
    }
    if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) {
        state.field.look(getHWND());
        state.ageSamples();
        state.post(State::kShowButtons);
    }
    if (message == WM_CONTEXTMENU && reinterpret_cast<HWND>(wParam) == state.list.getHWND()) {
        state.openMenu({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        return 1;
    }
    if (message == WM_DESTROY) {
        state.drag.end();
        state.list.keepColumns();
        state.takeSelection();
    }
    return 0;
}

void TvKeyListDialog::destroyed() {
    state_->posted = 0;
    state_->said.clear();
}

const char* TvKeyListDialog::placeName() {
    return "KeyList";
}

void TvKeyListDialog::layout(TvDialogLayout& sizes) {
    using Layout = TvDialogLayout;
    sizes.share(IDC_KEY_LIST_FILTER, 0, 0, 50, 0);
    sizes.share(IDC_KEY_LIST_GROUP_LABEL, 50, 0, 50, 0);
    sizes.share(IDC_KEY_LIST_GROUP, 50, 0, 100, 0);
    sizes.follow(IDC_KEY_LIST, Layout::Left | Layout::Top | Layout::Right | Layout::Bottom);
    for (const int button :
         {IDC_KEY_LIST_CHOSEN, IDC_KEY_LIST_UP, IDC_KEY_LIST_DOWN, IDC_KEY_LIST_FORMAT,
          IDC_KEY_LIST_DESCRIPTION, IDC_KEY_LIST_RESET, IDC_KEY_LIST_COPY, IDC_KEY_LIST_INSERT})
        sizes.follow(button, Layout::Right);
    sizes.follow(IDCANCEL, Layout::Right | Layout::Bottom);
}
