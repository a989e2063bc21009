// The editor of labels as applications see it, and what its window is told.
#include "tag/editor/tag_dialog_state_win32.h"
#include "tag_dialog.h"

using toolbox::detail::Watch;
using toolbox::tag::TagEntries;

TvTagDialog::TvTagDialog(const TvTag& tag, TokenizerUDManager* keys)
    : TvDialog("DLG_TAG"), state_(std::make_unique<State>(*this, tag, keys)) {}

TvTagDialog::~TvTagDialog() = default;

const TvTag& TvTagDialog::getTag() const {
    return state_->tag;
}

void TvTagDialog::opened() {
    state_->draft = state_->tag;
    state_->attach();
}

void TvTagDialog::exchange(TvExchange& fields) {
    State& state = *state_;
    const bool isReading = fields.isReading();
    if (!isReading) state.entries = TagEntries(state.draft);
    state.entries.exchange(fields);
    if (!isReading) {
        state.isFilled = true;
        return state.show();
    }
    TvTag read = state.draft;
    state.entries.give(read);
    CString why;
    if (!fields.faultControl() && !read.check(&why)) fields.fail(IDC_TAG_FROM_SCALE, why);
}

int TvTagDialog::confirmed() {
    State& state = *state_;
    state.entries.give(state.draft);
    state.tag = state.draft;
    return 1;
}

void TvTagDialog::destroyed() {
    state_->isFilled = false;
}

int TvTagDialog::command(int control, int notification) {
    State& state = *state_;
    if (!state.isFilled || control == IDOK || control == IDCANCEL) return 0;
    const bool isClick = notification == BN_CLICKED;
    switch (control) {
        case IDC_TAG_PROBLEMS:
            if (notification == LBN_SELCHANGE) state.selectProblem();
            return 1;
        case IDC_TAG_INSERT_KEY:
            if (isClick) state.insertKeys();
            return 1;
        case IDC_TAG_TEXT_COLOR:
        case IDC_TAG_BORDER_COLOR:
        case IDC_TAG_FILL_COLOR:
            if (isClick) state.chooseColor(control);
            return 1;
        default:
            if (isClick || notification == EN_CHANGE || notification == CBN_SELCHANGE) state.show();
            return 1;
    }
}

int TvTagDialog::handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message == WM_SYSCOLORCHANGE) state_->showPictures();
    if (message != WM_DRAWITEM || wParam != IDC_TAG_SAMPLE) return 0;
    state_->drawSample(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    result = TRUE;
    return 1;
}
