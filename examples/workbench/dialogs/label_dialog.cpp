// The dialog of a label: a template, how it reads for its beam, and what is wrong with it.
#include <string>

#include "dialogs/dialog_window.h"
#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"

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
class LabelDialog : public DialogWindow {
  public:
    LabelDialog(Document& document, const Label& label) : document_(document), label_(label) {}

    [[nodiscard]] const Label& label() const { return label_; }

  private:
    void opened() override;
    bool command(int id, int notification) override;

    void showEffect();
    void insertToken();
    [[nodiscard]] ProjectKeys& keys() const { return document_.workbench().keys(); }

    Document& document_;
    Label label_;
};

void LabelDialog::opened() {
    GMSG::setParent(window());
    const RWTValOrderedVector<UINT> all = ProjectKeys::all();
    for (const UINT id : all) {
        const CString item = keys().getKey(id) + " - " + keys().getKeyDesc(id);
        SendDlgItemMessageA(window(), IDC_LABEL_KEY, CB_ADDSTRING, 0,
                            reinterpret_cast<LPARAM>(item.c_str()));
    }
    SendDlgItemMessageA(window(), IDC_LABEL_KEY, CB_SETCURSEL, 0, 0);
    GMSG::setCtrlString(IDC_LABEL_TEXT, label_.text.c_str(), static_cast<int>(kLabelMax) + 1);
    showEffect();
}

bool LabelDialog::command(int id, int notification) {
    switch (id) {
        case IDOK:
            close(true);
            return true;
        case IDC_LABEL_INSERT:
            insertToken();
            return true;
        case IDC_LABEL_TEXT:
            if (notification == EN_CHANGE) showEffect();
            return true;
        default:
            return false;
    }
}

void LabelDialog::showEffect() {
    RWCString entered;
    GMSG::getCtrlString(IDC_LABEL_TEXT, entered, static_cast<int>(kLabelMax) + 1);
    label_.text = entered;
    SetDlgItemTextA(window(), IDC_LABEL_PREVIEW, document_.textOf(label_));
    std::string problems;
    for (const TemplateProblem& problem : keys().checkTemplate(label_.text))
        problems += text(wordsFor(problem.kind), problem.word).str() + "\r\n";
    SetDlgItemTextA(window(), IDC_LABEL_PROBLEM, problems.c_str());
}

void LabelDialog::insertToken() {
    const LRESULT item = SendDlgItemMessageA(window(), IDC_LABEL_KEY, CB_GETCURSEL, 0, 0);
    if (item == CB_ERR) return;
    const CString token =
        "$" + keys().getKey(ProjectKeys::all()[static_cast<std::size_t>(item)]) + "$";
    // In place of what is selected; the field tells of the change.
    SendDlgItemMessageA(window(), IDC_LABEL_TEXT, EM_REPLACESEL, TRUE,
                        reinterpret_cast<LPARAM>(token.c_str()));
}

}  // namespace

bool editLabel(HWND parent, Document& document, Label& label) {
    const DialogPhase phase(document.workbench());
    LabelDialog dialog(document, label);
    if (!dialog.run(parent, IDD_LABEL)) return false;
    label = dialog.label();
    return true;
}
