// The dialog of a beam: its name, section, span and loads. The fields of a load, beside the list,
// are exchanged apart from those of the beam.
#include <algorithm>
#include <optional>
#include <string>

#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "toolbox/controls.h"
#include "toolbox/dialogs.h"
#include "toolbox/exchange.h"
#include "toolbox/numbers.h"

namespace {

/// Edits a copy of a beam, which takes the beam's place when the user confirms.
class BeamDialog : public TvDialog {
  public:
    BeamDialog(Workbench& workbench, const Beam& beam);

    [[nodiscard]] const Beam& beam() const { return beam_; }

  protected:
    void opened() override;
    void exchange(TvExchange& fields) override;
    int command(int id, int notification) override;
    LRESULT notified(NMHDR& note) override;
    int confirmed() override;
    void destroyed() override { load_.reset(); }
    void layout(TvDialogLayout& sizes) override;
    const char* placeName() override { return "Beam"; }

  private:
    void attachFields();
    void fillSections();
    void showLoads();
    void showSelectedLoad();
    [[nodiscard]] bool readLoad(PointLoad& load);
    bool addLoad();
    bool changeLoad();
    void removeLoad();
    [[nodiscard]] double enteredSpan() const;
    [[nodiscard]] std::string enteredLoad() const;
    /// A load was typed that is not in the list.
    [[nodiscard]] bool isLoadPending() const;
    /// While a load is typed, Enter puts it into the list.
    void chooseDefault();
    /// The user says what becomes of a pending load. False when the dialog stays open.
    [[nodiscard]] bool settlePendingLoad();

    [[nodiscard]] bool hasSelectedLoad() const { return list_.selectedRow() >= 0; }
    [[nodiscard]] std::size_t selectedLoad() const {
        return static_cast<std::size_t>(list_.selectedRow());
    }

    Workbench& workbench_;
    Beam beam_;
    TvDouble span_{kSpanRule};
    TvDouble uniform_{kUniformRule};
    TvDouble position_{kPositionRule};
    TvDouble force_{kForceRule};
    TvEdit spanField_;
    TvEdit uniformField_;
    TvEdit positionField_;
    TvEdit forceField_;
    TvListView list_;
    std::optional<TvExchange> load_;  // of the fields of a load
    std::string shownLoad_;           // what they were last filled with
};

BeamDialog::BeamDialog(Workbench& workbench, const Beam& beam)
    : TvDialog(IDD_BEAM), workbench_(workbench), beam_(beam) {
    span_.setUnits("m");
    uniform_.setUnits("kN/m");
    position_.setUnits("m");
    force_.setUnits("kN");
    for (TvDouble* number : {&span_, &uniform_, &position_, &force_}) number->allowFormula(true);
}

void BeamDialog::layout(TvDialogLayout& sizes) {
    for (const int field : {IDC_BEAM_NAME, IDC_BEAM_SECTION})
        sizes.follow(field, TvDialogLayout::Left | TvDialogLayout::Right);
    const int all =
        TvDialogLayout::Left | TvDialogLayout::Top | TvDialogLayout::Right | TvDialogLayout::Bottom;
    for (const int grown : {IDC_BEAM_LOAD_GROUP, IDC_BEAM_LOADS}) sizes.follow(grown, all);
    for (const int beside : {IDC_LOAD_POSITION_LABEL, IDC_LOAD_POSITION, IDC_LOAD_FORCE_LABEL,
                             IDC_LOAD_FORCE, IDC_LOAD_ADD, IDC_LOAD_CHANGE, IDC_LOAD_REMOVE})
        sizes.follow(beside, TvDialogLayout::Right);
    for (const int button : {IDOK, IDCANCEL})
        sizes.follow(button, TvDialogLayout::Right | TvDialogLayout::Bottom);
}

void BeamDialog::opened() {
    load_.emplace(getHWND());
    attachFields();
    fillSections();
    span_ = beam_.span;
    uniform_ = beam_.uniform;
    list_.attach(getHWND(), IDC_BEAM_LOADS);
    list_.addColumns({{text(kPositionHeading), 62, false}, {text(kForceHeading), 62, true}});
    showLoads();
    showSelectedLoad();
}

void BeamDialog::attachFields() {
    constexpr double kLengthStep = 0.1;  // m
    spanField_.attach(getHWND(), IDC_BEAM_SPAN);
    spanField_.setNumber(span_, kLengthStep);
    uniformField_.attach(getHWND(), IDC_BEAM_UNIFORM);
    uniformField_.setNumber(uniform_);
    positionField_.attach(getHWND(), IDC_LOAD_POSITION);
    positionField_.setNumber(position_, kLengthStep);
    forceField_.attach(getHWND(), IDC_LOAD_FORCE);
    forceField_.setNumber(force_);
}

void BeamDialog::fillSections() {
    for (const Section& section : workbench_.sections())
        SendMessageA(control(IDC_BEAM_SECTION), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(section.designation.c_str()));
}

void BeamDialog::exchange(TvExchange& fields) {
    fields.text(IDC_BEAM_NAME, beam_.name, static_cast<int>(kNameMax));
    if (beam_.name.view().find_first_not_of(' ') == std::string_view::npos)
        fields.fail(IDC_BEAM_NAME, kNameNeeded);
    fields.choice(IDC_BEAM_SECTION, beam_.section);
    if (!workbench_.section(beam_.section)) fields.fail(IDC_BEAM_SECTION, kNoSection);
    fields.number(IDC_BEAM_SPAN, span_);
    fields.number(IDC_BEAM_UNIFORM, uniform_);
    const auto off = std::ranges::find_if(
        beam_.loads, [&](const PointLoad& load) { return load.position > span_.value(); });
    if (off != beam_.loads.end())
        fields.fail(IDC_BEAM_SPAN, kLoadOffBeam, off->position, span_.value());
}

int BeamDialog::confirmed() {
    beam_.span = span_.value();
    beam_.uniform = uniform_.value();
    return 1;
}

void BeamDialog::showLoads() {
    const auto count = static_cast<int>(beam_.loads.size());
    for (int row = ListView_GetItemCount(list_.getHWND()) - 1; row >= count; --row)
        ListView_DeleteItem(list_.getHWND(), row);
    for (int row = 0; row < count; ++row) {
        const PointLoad& load = beam_.loads[static_cast<std::size_t>(row)];
        list_.setText(row, 0, position_.print(load.position));
        list_.setText(row, 1, force_.print(load.force));
    }
}

void BeamDialog::showSelectedLoad() {
    const bool selected = hasSelectedLoad();
    if (selected) {
        position_ = beam_.loads[selectedLoad()].position;
        force_ = beam_.loads[selectedLoad()].force;
        load_->fill([this](TvExchange& fields) {
            fields.number(IDC_LOAD_POSITION, position_);
            fields.number(IDC_LOAD_FORCE, force_);
        });
    } else {
        setText(IDC_LOAD_POSITION, "");
        setText(IDC_LOAD_FORCE, "");
    }
    shownLoad_ = enteredLoad();
    enable(IDC_LOAD_CHANGE, selected);
    enable(IDC_LOAD_REMOVE, selected);
}

int BeamDialog::command(int id, int notification) {
    switch (id) {
        case IDOK:
            return !settlePendingLoad();
        case IDC_LOAD_ADD:
            addLoad();
            return 1;
        case IDC_LOAD_CHANGE:
            changeLoad();
            return 1;
        case IDC_LOAD_REMOVE:
            removeLoad();
            return 1;
        case IDC_LOAD_POSITION:
        case IDC_LOAD_FORCE:
            if (notification == EN_KILLFOCUS)
                SendMessageA(getHWND(), DM_SETDEFID, IDOK, 0);
            else if (GetFocus() == control(id))
                chooseDefault();
            return 0;
        default:
            return 0;
    }
}

LRESULT BeamDialog::notified(NMHDR& note) {
    if (note.idFrom == IDC_BEAM_LOADS && note.code == LVN_ITEMCHANGED) showSelectedLoad();
    return 0;
}

double BeamDialog::enteredSpan() const {
    double span = beam_.span;
    span_.scan(getText(IDC_BEAM_SPAN), span, nullptr);
    return span;
}

bool BeamDialog::readLoad(PointLoad& load) {
    const double span = enteredSpan();
    const int read = load_->read([&](TvExchange& fields) {
        fields.number(IDC_LOAD_POSITION, position_);
        fields.number(IDC_LOAD_FORCE, force_);
        if (position_.value() > span)
            fields.fail(IDC_LOAD_POSITION, kLoadOffBeam, position_.value(), span);
    });
    if (!read) return false;
    load = {position_.value(), force_.value()};
    return true;
}

bool BeamDialog::addLoad() {
    if (beam_.loads.size() >= kLoadsMax) {
        fields()->fail(IDC_LOAD_POSITION, kTooManyLoads, kLoadsMax);
        return false;
    }
    PointLoad load;
    if (!readLoad(load)) return false;
    beam_.loads.push_back(load);
    showLoads();
    list_.selectRow(TvListView::kEveryRow, false);
    ListView_EnsureVisible(list_.getHWND(), static_cast<int>(beam_.loads.size()) - 1, FALSE);
    showSelectedLoad();
    focus(IDC_LOAD_POSITION);
    return true;
}

bool BeamDialog::changeLoad() {
    PointLoad load;
    if (!readLoad(load)) return false;
    beam_.loads[selectedLoad()] = load;
    showLoads();
    showSelectedLoad();
    return true;
}

void BeamDialog::removeLoad() {
    const std::size_t removed = selectedLoad();
    beam_.loads.erase(beam_.loads.begin() + static_cast<std::ptrdiff_t>(removed));
    ListView_DeleteItem(list_.getHWND(), static_cast<int>(removed));
    showSelectedLoad();
}

std::string BeamDialog::enteredLoad() const {
    return getText(IDC_LOAD_POSITION).str() + '\n' + getText(IDC_LOAD_FORCE).str();
}

bool BeamDialog::isLoadPending() const {
    const std::string entered = enteredLoad();
    return entered != shownLoad_ && entered != "\n";
}

void BeamDialog::chooseDefault() {
    const int button = !isLoadPending() ? IDOK : hasSelectedLoad() ? IDC_LOAD_CHANGE : IDC_LOAD_ADD;
    SendMessageA(getHWND(), DM_SETDEFID, static_cast<WPARAM>(button), 0);
}

bool BeamDialog::settlePendingLoad() {
    if (!isLoadPending()) return true;
    const int answer = GMSG::errorMsg(kPendingLoad, MB_YESNOCANCEL | MB_ICONQUESTION);
    if (!isOpen()) return false;  // destroyed while the user was asked
    switch (answer) {
        case IDYES:
            return hasSelectedLoad() ? changeLoad() : addLoad();
        case IDNO:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool editBeam(HWND parent, Workbench& workbench, Beam& beam) {
    const DialogPhase phase(workbench);
    BeamDialog dialog(workbench, beam);
    if (!dialog.run(parent)) return false;
    beam = dialog.beam();
    return true;
}
