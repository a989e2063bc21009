// The dialog of a label: a template, how it reads for its beam, and what is wrong with it.
#include <string>
#include <vector>

#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "toolbox/controls.h"
#include "toolbox/dialogs.h"
#include "toolbox/exchange.h"

namespace {

using toolbox::TemplateProblem;

unsigned short wordsFor(TemplateProblem::Kind kind) {
    switch (kind) {
        case TemplateProblem::Kind::unknown:
            return kUnknownKey;
        case TemplateProblem::Kind::notMatching:
            return kKeyNotAvailable;
        case TemplateProblem::Kind::unclosed:
            return kUnclosedToken;
        case TemplateProblem::Kind::keyInText:
            break;
    }
    return kKeyOutsideToken;
}

/// Edits a copy of a label, which takes the label's place when the user confirms.
class LabelDialog : public TvDialog {
  public:
    LabelDialog(Document& document, const Label& label)
        : TvDialog(IDD_LABEL), document_(document), label_(label) {}

    [[nodiscard]] const Label& label() const { return label_; }

  protected:
    void opened() override;
    void exchange(TvExchange& fields) override;
    int command(int id, int notification) override;
    void layout(TvDialogLayout& sizes) override;
    const char* placeName() override { return "Label"; }

  private:
    void showEffect();
    void insertToken();
    [[nodiscard]] ProjectKeys& keys() const { return document_.workbench().keys(); }

    Document& document_;
    Label label_;
    TvComboBox keyList_;
};

void LabelDialog::layout(TvDialogLayout& sizes) {
    const int wide = TvDialogLayout::Left | TvDialogLayout::Right;
    for (const int field : {IDC_LABEL_TEXT, IDC_LABEL_KEY, IDC_LABEL_PREVIEW})
        sizes.follow(field, wide);
    sizes.follow(IDC_LABEL_PROBLEM, wide | TvDialogLayout::Top | TvDialogLayout::Bottom);
    sizes.follow(IDC_LABEL_INSERT, TvDialogLayout::Right);
    for (const int button : {IDOK, IDCANCEL})
        sizes.follow(button, TvDialogLayout::Right | TvDialogLayout::Bottom);
}

void LabelDialog::opened() {
    std::vector<CString> items;
    for (const RWTValOrderedVector<UINT> all = ProjectKeys::all(); const UINT id : all)
        items.push_back(keys().getKey(id) + " - " + keys().getKeyDesc(id));
    keyList_.attach(getHWND(), IDC_LABEL_KEY);
    keyList_.fill(items);
    SendMessageA(keyList_.getHWND(), CB_SETCURSEL, 0, 0);
}

void LabelDialog::exchange(TvExchange& fields) {
    CString written = label_.tag.text;
    fields.text(IDC_LABEL_TEXT, written, static_cast<int>(kLabelMax));
    label_.tag.text = written.str();
    if (!fields.isReading()) showEffect();
}

int LabelDialog::command(int id, int notification) {
    if (id == IDC_LABEL_INSERT) return insertToken(), 1;
    if (id == IDC_LABEL_TEXT && notification == EN_CHANGE) showEffect();
    return 0;
}

void LabelDialog::showEffect() {
    Label entered = label_;
    entered.tag.text = getText(IDC_LABEL_TEXT).str();
    setText(IDC_LABEL_PREVIEW, document_.textOf(entered));
    std::string problems;
    for (const TemplateProblem& problem : keys().checkTemplate(entered.tag.text))
        problems += text(wordsFor(problem.kind), problem.word).str() + "\r\n";
    setText(IDC_LABEL_PROBLEM, problems.c_str());
}

void LabelDialog::insertToken() {
    const LRESULT item = SendMessageA(keyList_.getHWND(), CB_GETCURSEL, 0, 0);
    if (item == CB_ERR) return;
    const CString token =
        "$" + keys().getKey(ProjectKeys::all()[static_cast<std::size_t>(item)]) + "$";
    // In place of what is selected; the field tells of the change.
    SendMessageA(control(IDC_LABEL_TEXT), EM_REPLACESEL, TRUE,
                 reinterpret_cast<LPARAM>(token.c_str()));
}

}  // namespace

bool editLabel(HWND parent, Document& document, Label& label) {
    const DialogPhase phase(document.workbench());
    LabelDialog dialog(document, label);
    if (!dialog.run(parent)) return false;
    label = dialog.label();
    return true;
}
