// The dialog of a beam: its name, section, span and loads.
#include <algorithm>
#include <string>

#include "dialogs/dialog_window.h"
#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"

namespace {

/// Edits a copy of a beam, which takes the beam's place when the user confirms.
class BeamDialog : public DialogWindow {
  public:
    BeamDialog(Workbench& workbench, const Beam& beam) : workbench_(workbench), beam_(beam) {}

    [[nodiscard]] const Beam& beam() const { return beam_; }

  private:
    void opened() override;
    bool command(int id, int notification) override;
    bool notified(const NMHDR& note) override;

    void fillSections();
    void showLoads();
    void showSelectedLoad();
    [[nodiscard]] bool readLoad(PointLoad& load);
    bool addLoad();
    bool changeLoad();
    void removeLoad();
    /// A load was typed that is not in the list.
    [[nodiscard]] bool isLoadPending() const;
    /// While a load is typed, Enter puts it into the list.
    void chooseDefault();
    /// The user says what becomes of a pending load. False when the dialog stays open.
    [[nodiscard]] bool settlePendingLoad();
    [[nodiscard]] bool enter();

    [[nodiscard]] HWND list() const { return control(IDC_BEAM_LOADS); }
    [[nodiscard]] bool hasSelectedLoad() const { return selectedRow(list()) >= 0; }
    [[nodiscard]] std::size_t selectedLoad() const {
        return static_cast<std::size_t>(selectedRow(list()));
    }

    Workbench& workbench_;
    Beam beam_;
    NumberField span_{IDC_BEAM_SPAN, kSpanRange};
    NumberField uniform_{IDC_BEAM_UNIFORM, kUniformRange};
    NumberField position_{IDC_LOAD_POSITION, kPositionRange};
    NumberField force_{IDC_LOAD_FORCE, kForceRange};
};

void BeamDialog::opened() {
    GMSG::setParent(window());
    GMSG::setCtrlString(IDC_BEAM_NAME, beam_.name.c_str(), static_cast<int>(kNameMax) + 1);
    fillSections();
    span_.show(beam_.span);
    uniform_.show(beam_.uniform);
    addListColumns(list(), {{kPositionHeading, 62}, {kForceHeading, 62, true}});
    showLoads();
    showSelectedLoad();
}

void BeamDialog::fillSections() {
    const HWND combo = control(IDC_BEAM_SECTION);
    for (const Section& section : workbench_.sections())
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(section.designation.c_str()));
    // By the whole text: a designation may be the beginning of another.
    const LRESULT found = SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(beam_.section.c_str()));
    SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
}

void BeamDialog::showLoads() {
    const auto count = static_cast<int>(beam_.loads.size());
    for (int row = ListView_GetItemCount(list()) - 1; row >= count; --row)
        ListView_DeleteItem(list(), row);
    for (int row = 0; row < count; ++row) {
        const PointLoad& load = beam_.loads[static_cast<std::size_t>(row)];
        setListText(list(), row, 0, text(kNumber, load.position));
        setListText(list(), row, 1, text(kNumber, load.force));
    }
}

void BeamDialog::showSelectedLoad() {
    const bool selected = hasSelectedLoad();
    if (selected) {
        position_.show(beam_.loads[selectedLoad()].position);
        force_.show(beam_.loads[selectedLoad()].force);
    } else {
        position_.clear();
        force_.clear();
    }
    enable(IDC_LOAD_CHANGE, selected);
    enable(IDC_LOAD_REMOVE, selected);
}

bool BeamDialog::command(int id, int notification) {
    switch (id) {
        case IDOK:
            if (settlePendingLoad() && enter()) close(true);
            return true;
        case IDC_LOAD_ADD:
            addLoad();
            return true;
        case IDC_LOAD_CHANGE:
            changeLoad();
            return true;
        case IDC_LOAD_REMOVE:
            removeLoad();
            return true;
        case IDC_LOAD_POSITION:
        case IDC_LOAD_FORCE:
            if (notification == EN_KILLFOCUS)
                SendMessageA(window(), DM_SETDEFID, IDOK, 0);
            else if (GetFocus() == control(id))
                chooseDefault();
            return true;
        default:
            return false;
    }
}

bool BeamDialog::notified(const NMHDR& note) {
    if (note.idFrom == IDC_BEAM_LOADS && note.code == LVN_ITEMCHANGED) showSelectedLoad();
    return false;
}

bool BeamDialog::readLoad(PointLoad& load) {
    double span = beam_.span;
    if (!position_.read(load.position) || !force_.read(load.force) || !span_.read(span))
        return false;
    if (load.position <= span) return true;
    GMSG::errorMsg(kLoadOffBeam, MB_ICONEXCLAMATION, load.position, span);
    focus(IDC_LOAD_POSITION);
    return false;
}

bool BeamDialog::addLoad() {
    if (beam_.loads.size() >= kLoadsMax) {
        GMSG::errorMsg(kTooManyLoads, MB_ICONEXCLAMATION, kLoadsMax);
        return false;
    }
    PointLoad load;
    if (!readLoad(load)) return false;
    beam_.loads.push_back(load);
    showLoads();
    selectRow(list(), kEveryRow, false);
    ListView_EnsureVisible(list(), static_cast<int>(beam_.loads.size()) - 1, FALSE);
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
    ListView_DeleteItem(list(), static_cast<int>(removed));
    showSelectedLoad();
}

bool BeamDialog::isLoadPending() const {
    return (position_.isChanged() || force_.isChanged()) &&
           !(position_.isEmpty() && force_.isEmpty());
}

void BeamDialog::chooseDefault() {
    const int button = !isLoadPending() ? IDOK : hasSelectedLoad() ? IDC_LOAD_CHANGE : IDC_LOAD_ADD;
    SendMessageA(window(), DM_SETDEFID, static_cast<WPARAM>(button), 0);
}

bool BeamDialog::settlePendingLoad() {
    if (!isLoadPending()) return true;
    const int answer = GMSG::errorMsg(kPendingLoad, MB_YESNOCANCEL | MB_ICONQUESTION);
    if (!window()) return false;  // destroyed while the user was asked
    switch (answer) {
        case IDYES:
            return hasSelectedLoad() ? changeLoad() : addLoad();
        case IDNO:
            return true;
        default:
            return false;
    }
}

bool BeamDialog::enter() {
    RWCString name;
    GMSG::getCtrlString(IDC_BEAM_NAME, name, static_cast<int>(kNameMax) + 1);
    if (name.view().find_first_not_of(' ') == std::string_view::npos) {
        GMSG::errorMsg(kNameNeeded, MB_ICONEXCLAMATION);
        focus(IDC_BEAM_NAME);
        return false;
    }
    beam_.name = name;
    const LRESULT section = SendDlgItemMessageA(window(), IDC_BEAM_SECTION, CB_GETCURSEL, 0, 0);
    if (section == CB_ERR) {
        GMSG::errorMsg(kNoSection, MB_ICONEXCLAMATION);
        focus(IDC_BEAM_SECTION);
        return false;
    }
    beam_.section = workbench_.sections()[static_cast<std::size_t>(section)].designation;
    if (!span_.read(beam_.span) || !uniform_.read(beam_.uniform)) return false;
    const auto off = std::ranges::find_if(
        beam_.loads, [&](const PointLoad& load) { return load.position > beam_.span; });
    if (off == beam_.loads.end()) return true;
    GMSG::errorMsg(kLoadOffBeam, MB_ICONEXCLAMATION, off->position, beam_.span);
    focus(IDC_BEAM_SPAN);
    return false;
}

}  // namespace

bool editBeam(HWND parent, Workbench& workbench, Beam& beam) {
    const DialogPhase phase(workbench);
    BeamDialog dialog(workbench, beam);
    if (!dialog.run(parent, IDD_BEAM)) return false;
    beam = dialog.beam();
    return true;
}
