// The two pages and their sheet. Each page names its fields once, in exchange(); the library fills
// them, checks them, leads the user to what is wrong, and stores them when everything is right.
#include "beam_sheet.h"

#include "toolbox/controls.h"
#include "toolbox/dialogs.h"
#include "toolbox/exchange.h"

Beam::Beam() {
    name = "B1";
    span = span.defaultValue();
    force = force.defaultValue();
    to = span.value();
    for (TvDouble* const length : {&span, &from, &to}) length->setUnits("m");
    force.setUnits("kN/m");
}

namespace {

/// A field for a number: the arrow keys move it by a step, and its units stand at its right.
class NumberField {
  public:
    void attach(HWND page, int control, const TvDouble& number, double step) {
        edit_.attach(page, control);
        edit_.setNumber(number, step);
        edit_.setUnits(number.units());
    }

  private:
    TvEdit edit_;
};

class BeamPage : public TvPropertyPage {
  public:
    explicit BeamPage(Beam& beam) : TvPropertyPage(IDD_BEAM), beam_(beam) {}

  protected:
    void opened() override {
        span_.attach(getHWND(), IDC_SPAN, beam_.span, 0.5);
        steel_.attach(getHWND(), IDC_STEEL);
        steel_.fill(IDS_STEELS);
    }

    void exchange(TvExchange& fields) override {
        fields.text(IDC_NAME, beam_.name);
        fields.number(IDC_SPAN, beam_.span);
        fields.choice(IDC_STEEL, beam_.steel);
        fields.date(IDC_DATE, beam_.checked);
    }

  private:
    Beam& beam_;
    NumberField span_;
    TvComboBox steel_;
};

class LoadPage : public TvPropertyPage {
  public:
    explicit LoadPage(Beam& beam) : TvPropertyPage(IDD_LOAD), beam_(beam) {}

  protected:
    void opened() override {
        force_.attach(getHWND(), IDC_FORCE, beam_.force, 1);
        from_.attach(getHWND(), IDC_FROM, beam_.from, 0.1);
        to_.attach(getHWND(), IDC_TO, beam_.to, 0.1);
    }

    void exchange(TvExchange& fields) override {
        fields.number(IDC_FORCE, beam_.force);
        fields.number(IDC_FROM, beam_.from);
        fields.number(IDC_TO, beam_.to);
        // A rule between fields: it sees what was entered.
        if (beam_.from.value() >= beam_.to.value()) fields.fail(IDC_TO, IDS_END_BEFORE_START);
    }

    /// A rule between pages: the values of all of them are known here.
    int confirmed() override {
        if (beam_.to.value() <= beam_.span.value()) return 1;
        return fields()->fail(IDC_TO, IDS_END_OFF_BEAM, beam_.span.value());
    }

  private:
    Beam& beam_;
    NumberField force_, from_, to_;
};

}  // namespace

bool editBeam(Beam& beam) {
    RWCString title;
    GMSG::getString(IDS_TITLE, title);
    TvPropertySheet sheet(title);
    BeamPage general(beam);
    LoadPage load(beam);
    sheet.add(general);
    sheet.add(load);
    return sheet.run(nullptr) != 0;
}
