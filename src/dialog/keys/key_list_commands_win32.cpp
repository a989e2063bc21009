// What the buttons and keys of the list of keys do. Each application's operation that is called may
// end the dialog.
#include <algorithm>

#include "dialog/keys/key_list_state_win32.h"
#include "dialog/keys/key_texts.h"
#include "key_dialogs.h"
#include "toolbox/platform.h"

using toolbox::detail::Watch;
using toolbox::keys::Ids;

namespace {

RWTValOrderedVector<UINT> vectorOf(const Ids& ids) {
    return RWTValOrderedVector<UINT>(ids);
}

}  // namespace

Ids TvKeyListDialog::State::selection() {
    takeSelection();
    return model.selection();
}

void TvKeyListDialog::State::showButtons() {
    const Watch self(life);
    const int inserts = dialog.canInsertTokens();
    if (self.gone() || !dialog.getHWND()) return;
    const Ids selected = selection();
    const bool some = !selected.empty();
    const bool one = selected.size() == 1;
    const auto chosen = static_cast<std::size_t>(
        std::ranges::count_if(selected, [this](UINT id) { return model.placeOf(id) > 0; }));
    const int check = !chosen                     ? BST_UNCHECKED
                      : chosen == selected.size() ? BST_CHECKED
                                                  : BST_INDETERMINATE;
    SendDlgItemMessageA(dialog.getHWND(), IDC_KEY_LIST_CHOSEN, BM_SETCHECK,
                        static_cast<WPARAM>(check), 0);
    dialog.enable(IDC_KEY_LIST_CHOSEN, some);
    dialog.enable(IDC_KEY_LIST_UP, model.shifted(-1).has_value());
    dialog.enable(IDC_KEY_LIST_DOWN, model.shifted(1).has_value());
    dialog.enable(IDC_KEY_LIST_FORMAT, one);
    dialog.enable(IDC_KEY_LIST_DESCRIPTION, one);
    dialog.enable(IDC_KEY_LIST_RESET, some);
    dialog.enable(IDC_KEY_LIST_COPY, some);
    dialog.enable(IDC_KEY_LIST_INSERT, some && inserts);
}

void TvKeyListDialog::State::choose(const std::optional<Ids>& order) {
    if (!order) return;
    const Watch self(life);
    const int taken = dialog.chooseKeys(vectorOf(*order));
    if (self.gone()) return;
    if (!taken) MessageBeep(MB_OK);
    refresh();
}

void TvKeyListDialog::State::shift(int by) {
    takeSelection();
    choose(model.shifted(by));
}

void TvKeyListDialog::State::toggleChosen() {
    const Ids selected = selection();
    const bool all =
        std::ranges::all_of(selected, [this](UINT id) { return model.placeOf(id) > 0; });
    choose(model.toggled(!all));
}

void TvKeyListDialog::State::edit(bool format) {
    const Watch self(life);
    const Ids selected = selection();
    if (selected.size() != 1) return;
    const UINT id = selected.front();
    const int changed = format ? dialog.editFormat(id) : dialog.editDescription(id);
    if (self.gone() || !changed) return;
    dialog.keysEdited(vectorOf({id}));
    if (!self.gone()) refresh();
}

void TvKeyListDialog::State::reset() {
    const Watch self(life);
    const Ids selected = selection();
    if (selected.empty()) return;
    if (selected.size() > 1) {
        const int answer = toolbox::platform::current().prompt->messageBox(
            dialog.getHWND(),
            toolbox::keys::printed(toolbox::keys::kResetSeveral, static_cast<int>(selected.size())),
            GMSG::getAppTitle(), MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION | MB_TASKMODAL);
        if (self.gone() || answer != IDYES) return;
    }
    Ids changed;
    for (const UINT id : selected) {
        if (dialog.resetKey(id)) changed.push_back(id);
        if (self.gone()) return;
    }
    if (!changed.empty()) dialog.keysEdited(vectorOf(changed));
    if (!self.gone()) refresh();
}

CString TvKeyListDialog::State::tokens() {
    CString text;
    for (const UINT id : selection()) {
        if (!text.empty()) text += ' ';
        text += "$" + manager.getKey(id) + "$";
    }
    return text;
}

void TvKeyListDialog::State::copyTokens() {
    const CString text = tokens();
    if (!text.empty() && toolbox::platform::current().clipboard->setText(text) != ERROR_SUCCESS)
        GMSG::errorMsg(toolbox::keys::kNotCopied, MB_ICONEXCLAMATION);
}

void TvKeyListDialog::State::insertTokens() {
    const Watch self(life);
    const CString text = tokens();
    if (text.empty()) return;
    if (!dialog.insertTokens(text)) MessageBeep(MB_OK);
    if (!self.gone()) post(kShowButtons);
}

void TvKeyListDialog::State::enterFromFilter() {
    if (selection().empty() && model.rowCount() > 0) {
        focused = model.row(0);
        model.select({focused});
        list.show(model, focused);
        post(kShowButtons);
    }
    dialog.focus(IDC_KEY_LIST);
}

bool TvKeyListDialog::State::clicked(int button) {
    switch (button) {
        case IDC_KEY_LIST:
            enterFromFilter();
            return true;
        case IDC_KEY_LIST_CHOSEN:
            toggleChosen();
            return true;
        case IDC_KEY_LIST_UP:
            shift(-1);
            return true;
        case IDC_KEY_LIST_DOWN:
            shift(1);
            return true;
        case IDC_KEY_LIST_FORMAT:
            edit(true);
            return true;
        case IDC_KEY_LIST_DESCRIPTION:
            edit(false);
            return true;
        case IDC_KEY_LIST_RESET:
            reset();
            return true;
        case IDC_KEY_LIST_COPY:
            copyTokens();
            return true;
        case IDC_KEY_LIST_INSERT:
            insertTokens();
            return true;
        default:
            return false;
    }
}

void TvKeyListDialog::State::filterTyped() {
    const HWND edit = dialog.control(IDC_KEY_LIST_FILTER);
    std::string typed(static_cast<std::size_t>(GetWindowTextLengthA(edit)) + 1, '\0');
    typed.resize(static_cast<std::size_t>(
        GetWindowTextA(edit, typed.data(), static_cast<int>(typed.size()))));
    takeSelection();
    filter = CString(typed);
    showRows();
}

void TvKeyListDialog::State::groupChosen() {
    const HWND box = dialog.control(IDC_KEY_LIST_GROUP);
    const LRESULT at = SendMessageA(box, CB_GETCURSEL, 0, 0);
    if (at == CB_ERR) return;
    const LRESULT id = SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(at), 0);
    dialog.showGroup(static_cast<UINT>(id));
}
