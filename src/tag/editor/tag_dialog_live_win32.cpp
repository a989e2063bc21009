// What the editor of labels shows while something is entered. The values of keys are the
// application's, which may end the dialog when it is asked for them.
#include <algorithm>
#include <cmath>

#include "dialog/dialog_phase_win32.h"
#include "tag/editor/tag_dialog_state_win32.h"
#include "tag/editor/tag_pictures_win32.h"
#include "tag_dialog.h"
#include "toolbox/canvas_device.h"
#include "toolbox/key_dialogs.h"
// Needs the declarations of the system first.
#include <commdlg.h>

using toolbox::detail::Watch;
using toolbox::tag::TagEntries;

namespace {

constexpr unsigned short kFontNames = 1464;
constexpr unsigned short kNoFindings = 1465;
constexpr double kPointsPerInch = 72;
constexpr int kColorButtons[] = {IDC_TAG_TEXT_COLOR, IDC_TAG_BORDER_COLOR, IDC_TAG_FILL_COLOR};

/// The list of keys inserts into the text.
class TokenList : public TvKeyListDialog {
  public:
    TokenList(UDManager& keys, HWND field) : TvKeyListDialog(keys), field_(field) {}

  protected:
    int canInsertTokens() override { return IsWindow(field_); }
    int insertTokens(const CString& tokens) override {
        SendMessageA(field_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(tokens.c_str()));
        return IsWindow(field_);
    }

  private:
    HWND field_;
};

COLORREF refOf(TvColor color) {
    return RGB(color.red, color.green, color.blue);
}

TvDouble lengthIn(const char* units, double least, double greatest) {
    TvDouble number;
    number.setUnits(units);
    number.setLimits(least, greatest);
    return number;
}

/// Around the box and, with a leader, the anchor.
toolbox::PlaneRect boundsOf(const TvTagOnPage& place) {
    toolbox::PlaneRect bounds = place.box;
    if (!place.hasLeader) return bounds;
    bounds.left = std::min(bounds.left, place.anchor.x);
    bounds.top = std::min(bounds.top, place.anchor.y);
    bounds.right = std::max(bounds.right, place.anchor.x);
    bounds.bottom = std::max(bounds.bottom, place.anchor.y);
    return bounds;
}

}  // namespace

void TvTagDialog::State::attach() {
    const HWND window = dialog.getHWND();
    const auto attachAll = [=](auto& buttons, int first, int columns) {
        for (int i = 0; i < static_cast<int>(buttons.size()); ++i) {
            buttons[static_cast<std::size_t>(i)].attach(window, first + i);
            buttons[static_cast<std::size_t>(i)].setTable(
                first, i, static_cast<int>(buttons.size()), columns);
        }
    };
    attachAll(places, IDC_TAG_ALIGN_TOP_LEFT, 3);
    attachAll(borders, IDC_TAG_BORDER_NONE, 2);
    for (std::size_t i = 0; i < colors.size(); ++i) colors[i].attach(window, kColorButtons[i]);
    showPictures();
    if (font.attach(window, IDC_TAG_FONT)) font.fill(kFontNames);
    if (size.attach(window, IDC_TAG_SIZE)) size.setNumber(lengthIn("pt", 0.01, 10000));
    if (width.attach(window, IDC_TAG_WIDTH)) width.setNumber(lengthIn("mm", 0, 35000));
    dialog.enable(IDC_TAG_INSERT_KEY, keys != nullptr);
}

void TvTagDialog::State::showPictures() {
    int i = 0;
    for (auto& each : places) each.setPicture(toolbox::tag::alignmentPicture(i++));
    i = 0;
    for (auto& each : borders) each.setPicture(toolbox::tag::borderPicture(i++));
    for (std::size_t each = 0; each < colors.size(); ++each)
        colors[each].setPicture(toolbox::tag::colorPicture(colorOf(kColorButtons[each])));
}

TvColor& TvTagDialog::State::colorOf(int button) {
    return button == IDC_TAG_TEXT_COLOR     ? draft.font.color
           : button == IDC_TAG_BORDER_COLOR ? draft.line.color
                                            : draft.fill.color;
}

void TvTagDialog::State::show() {
    const Watch self(life);
    TagEntries shown(draft);
    shown.look(dialog.getHWND());
    TvTag seen = draft;
    shown.give(seen);
    dialog.enable(IDC_TAG_WIDTH, shown.wrapped);
    dialog.enable(IDC_TAG_FILL_COLOR, shown.filled);
    seen.anchor = {};
    seen.minScale = seen.maxScale = 0;
    seen.unplaced = false;
    TvTagSet set;
    if (!set.add(seen)) return;
    TvTagLayout laidOut(set, TransMatrix2D(), keys);
    if (self.gone() || !dialog.getHWND() || laidOut.tags().empty()) return;
    sample = std::move(laidOut);
    showProblems(shown.text);
    // Screen readers say it.
    dialog.setText(IDC_TAG_SAMPLE, sample.tags().front().text.windows1252());
    if (const HWND control = dialog.control(IDC_TAG_SAMPLE)) InvalidateRect(control, nullptr, TRUE);
}

/// What is wrong with tokens, then the characters that no font has.
void TvTagDialog::State::showProblems(const CString& text) {
    const HWND list = dialog.control(IDC_TAG_PROBLEMS);
    if (!list) return;
    problems =
        keys ? keys->checkTemplate(RWCString(text)) : std::vector<toolbox::TemplateProblem>();
    std::vector<CString> lines;
    for (const toolbox::TemplateProblem& each : problems) lines.push_back(tvTagSentence(each));
    const TvText& shown = sample.tags().front().text;
    for (const TvTextFault& each : shown.faults()) {
        const TvCanvasFault fault{TvCanvasFault::Character, 0, each, shown.windows1252()};
        lines.push_back(fault.sentence());
    }
    dialog.enable(IDC_TAG_PROBLEMS, !lines.empty());
    if (lines.empty()) {
        RWCString none;
        GMSG::getString(kNoFindings, none);
        lines.emplace_back(none);
    }
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    for (const CString& line : lines)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
}

/// Leads to the place in the text.
void TvTagDialog::State::selectProblem() {
    const LRESULT at = SendMessageA(dialog.control(IDC_TAG_PROBLEMS), LB_GETCURSEL, 0, 0);
    if (at < 0 || static_cast<std::size_t>(at) >= problems.size()) return;
    const toolbox::TemplateProblem& problem = problems[static_cast<std::size_t>(at)];
    using Kind = toolbox::TemplateProblem::Kind;
    const std::size_t signs = problem.kind == Kind::keyInText  ? 0
                              : problem.kind == Kind::unclosed ? 1
                                                               : 2;
    const HWND text = dialog.control(IDC_TAG_TEXT);
    SendMessageA(text, EM_SETSEL, problem.position,
                 static_cast<LPARAM>(problem.position + problem.word.length() + signs));
    SendMessageA(text, EM_SCROLLCARET, 0, 0);
}

void TvTagDialog::State::chooseColor(int button) {
    static COLORREF offered[16];  // those that the user mixed
    CHOOSECOLORA question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = dialog.getHWND();
    question.rgbResult = refOf(colorOf(button));
    question.lpCustColors = offered;
    question.Flags = CC_RGBINIT | CC_FULLOPEN;
    const Watch self(life);
    bool isChosen = false;
    {
        const toolbox::dialog::DialogPhase phase(dialog.getHWND());
        isChosen = ChooseColorA(&question) != 0;
    }
    if (self.gone() || !dialog.getHWND() || !isChosen) return;
    const COLORREF chosen = question.rgbResult;
    colorOf(button) = {GetRValue(chosen), GetGValue(chosen), GetBValue(chosen)};
    showPictures();
    show();
}

void TvTagDialog::State::insertKeys() {
    if (!keys) return;
    const Watch self(life);
    TokenList list(*keys, dialog.control(IDC_TAG_TEXT));
    list.run(dialog.getHWND());
    if (!self.gone() && dialog.getHWND()) dialog.focus(IDC_TAG_TEXT);
}

void TvTagDialog::State::drawSample(const DRAWITEMSTRUCT& item) const {
    FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    if (sample.tags().empty()) return;
    constexpr double kMargin = 6;  // points
    const toolbox::PlaneRect bounds = boundsOf(sample.tags().front());
    const double wide = bounds.right - bounds.left + 2 * kMargin;
    const double high = bounds.bottom - bounds.top + 2 * kMargin;
    const double areaWidth = item.rcItem.right - item.rcItem.left;
    const double areaHeight = item.rcItem.bottom - item.rcItem.top;
    TvDevicePage page;
    page.scaleX = page.scaleY = std::min({GetDeviceCaps(item.hDC, LOGPIXELSY) / kPointsPerInch,
                                          areaWidth / wide, areaHeight / high});
    page.width = areaWidth / page.scaleX;
    page.height = areaHeight / page.scaleY;
    page.originX = item.rcItem.left;
    page.originY = item.rcItem.top;
    TvDeviceCanvas canvas(item.hDC, page);
    canvas.setTransform(TransMatrix2D().translate((page.width - bounds.left - bounds.right) / 2,
                                                  (page.height - bounds.top - bounds.bottom) / 2));
    sample.draw(canvas);
}
