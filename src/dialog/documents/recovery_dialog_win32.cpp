// A list of unsaved work; what is deleted leaves it at once.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "dialog/documents/document_texts.h"
#include "dialog/documents/work_text.h"
#include "document_dialogs.h"
#include "toolbox/controls.h"
#include "toolbox/detail/watch.h"
#include "toolbox/document_dialogs.h"
#include "toolbox/platform.h"

using toolbox::detail::Watch;
using namespace toolbox::documents;

namespace {

/// The file's own name first: a narrow column cuts the end.
CString nameInList(const TvRecoverable& work) {
    const std::string_view full = work.document.view();
    const std::size_t folder = full.find_last_of("/\\");
    if (folder == std::string_view::npos) return nameOf(work);
    return CString(std::string(full.substr(folder + 1)) + " (" +
                   std::string(full.substr(0, folder)) + ')');
}

}  // namespace

struct TvRecoveryDialog::State {
    State(TvRecoveryDialog& owner, std::vector<TvRecoverable> found)
        : dialog(owner), works(std::move(found)) {}

    void fill();
    void enable();
    void recover();
    void remove();
    [[nodiscard]] std::vector<std::size_t> selected() const;

    TvRecoveryDialog& dialog;
    std::vector<TvRecoverable> works;
    std::vector<TvRecoverable> chosen;
    TvListView list;
    toolbox::detail::Watched<> life;
};

TvRecoveryDialog::TvRecoveryDialog(std::vector<TvRecoverable> works)
    : TvDialog("DLG_RECOVERY"), state_(std::make_unique<State>(*this, std::move(works))) {}

TvRecoveryDialog::~TvRecoveryDialog() = default;

const std::vector<TvRecoverable>& TvRecoveryDialog::works() const {
    return state_->works;
}

const std::vector<TvRecoverable>& TvRecoveryDialog::chosen() const {
    return state_->chosen;
}

void TvRecoveryDialog::layout(TvDialogLayout& sizes) {
    constexpr int kWide = TvDialogLayout::Left | TvDialogLayout::Right;
    sizes.follow(IDC_DOCUMENT_TEXT, kWide);
    sizes.follow(IDC_RECOVERY_LIST, kWide | TvDialogLayout::Top | TvDialogLayout::Bottom);
    for (const int button : {IDC_RECOVERY_RECOVER, IDC_RECOVERY_DELETE, IDCANCEL})
        sizes.follow(button, TvDialogLayout::Right | TvDialogLayout::Bottom);
}

const char* TvRecoveryDialog::placeName() {
    return "Recovery";
}

void TvRecoveryDialog::opened() {
    constexpr int kDocument = 200, kTime = 80, kSize = 48;  // dialog units
    State& state = *state_;
    state.chosen.clear();
    if (!state.list.attach(getHWND(), IDC_RECOVERY_LIST)) return;
    std::vector<CString> headings;
    const CString all = printed(kHeadings);
    for (std::string_view rest = all.view(); !rest.empty();) {
        const std::size_t bar = std::min(rest.find('|'), rest.size());
        headings.emplace_back(rest.substr(0, bar));
        rest.remove_prefix(std::min(bar + 1, rest.size()));
    }
    headings.resize(3);
    state.list.addColumns({{.heading = headings[0], .width = kDocument},
                           {.heading = headings[1], .width = kTime},
                           {.heading = headings[2], .width = kSize, .isNumber = true}});
    state.fill();
    state.list.selectRow(0);
    state.enable();
}

void TvRecoveryDialog::State::fill() {
    SendMessageA(list.getHWND(), LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const TvRecoverable& work : works) {
        const CString name = nameInList(work);
        list.setText(row, 0, work.whole ? name : printed(kDamagedWork, name));
        list.setText(row, 1, timeOf(work));
        list.setText(row++, 2, sizeOf(work));
    }
    enable();
}

std::vector<std::size_t> TvRecoveryDialog::State::selected() const {
    std::vector<std::size_t> found;
    for (const int row : list.selectedRows())
        if (static_cast<std::size_t>(row) < works.size())
            found.push_back(static_cast<std::size_t>(row));
    return found;
}

void TvRecoveryDialog::State::enable() {
    const std::vector<std::size_t> rows = selected();
    const bool anyWhole =
        std::ranges::any_of(rows, [this](std::size_t row) { return works[row].whole; });
    dialog.enable(IDC_RECOVERY_RECOVER, anyWhole ? 1 : 0);
    dialog.enable(IDC_RECOVERY_DELETE, rows.empty() ? 0 : 1);
}

void TvRecoveryDialog::State::recover() {
    chosen.clear();
    for (const std::size_t row : selected())
        if (works[row].whole) chosen.push_back(works[row]);
    if (!chosen.empty()) dialog.close(1);
}

void TvRecoveryDialog::State::remove() {
    const std::vector<std::size_t> rows = selected();
    const HWND window = dialog.getHWND();
    auto& prompt = *toolbox::platform::current().prompt;
    const Watch self(life);
    const int answer = prompt.messageBox(window, printed(kReallyDelete).c_str(),
                                         GMSG::getAppTitle(), MB_YESNO | MB_ICONQUESTION);
    if (answer != IDYES || self.gone() || !dialog.isOpen()) return;
    CString failed;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (TvDocumentFile::discard(works[*row]))
            works.erase(works.begin() + static_cast<std::ptrdiff_t>(*row));
        else
            failed = nameOf(works[*row]);
    }
    fill();
    if (works.empty()) dialog.close(0);
    if (!failed.empty())
        prompt.messageBox(window, printed(kNotDeleted, failed).c_str(), GMSG::getAppTitle(),
                          MB_ICONEXCLAMATION);
}

int TvRecoveryDialog::command(int control, int notification) {
    if (notification != BN_CLICKED) return 0;
    switch (control) {
        case IDOK:
        case IDC_RECOVERY_RECOVER:
            state_->recover();
            return 1;
        case IDC_RECOVERY_DELETE:
            state_->remove();
            return 1;
        default:
            return 0;
    }
}

LRESULT TvRecoveryDialog::notified(NMHDR& note) {
    if (note.idFrom != IDC_RECOVERY_LIST) return 0;
    if (note.code == LVN_ITEMCHANGED) state_->enable();
    if (note.code == NM_DBLCLK) state_->recover();
    return 0;
}
