// Controls of dialogs and other windows (Windows only): edit fields with a rule, combo boxes that
// complete, statics that show values, paths and links, report lists. Each attaches to a control
// that exists; the rules of life are those of attached objects (attached_control.h).
//
//     TvEdit width;                                  // a member of the dialog's object
//     width.attach(dialog, IDC_WIDTH);               // the template's control, subclassed
//     width.setNumber(beam.width, 0.5);              // a TvDouble; the arrow keys step by 0.5
//     width.setUnits("mm");
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "toolbox/attached_control.h"
#include "toolbox/bars.h"
#include "toolbox/export.h"
#include "toolbox/formats.h"
#include "toolbox/numbers.h"
#include "toolbox/settings.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/controls.h needs windows: it exists on Windows only"
#endif

#include <commctrl.h>

class TvString;
class UDManager;

namespace toolbox {

/// What a number field asks of its number: TvEdit::setNumber() makes it of a typed one.
struct EditNumber {
    /// The characters of an entry.
    std::function<bool(char)> allows;
    /// Those of an entry that begins with '='; without it there are no formulas.
    std::function<bool(char)> allowsInFormula;
    /// Whether a text is an entry; a reason when it is not.
    std::function<bool(const CString& text, CString* why)> check;
    /// Moves an entry by steps of a size; false when there is none to move, or nothing beyond.
    std::function<bool(CString& text, int steps, double size)> move;
};

}  // namespace toolbox

/// An edit field with a rule. The user types and pastes only what the rule allows; what the program
/// sets is free. A wrong entry is marked at the field's right when the user pauses, with its reason
/// as tip; an empty field is not. Nobody refuses it here: that is up to who reads it (TvExchange).
class TB_API TvEdit : public TvControl {
  public:
    TvEdit();
    ~TvEdit() override;

    /// A text's rule, which is copied: the characters that removeInvalidChars() keeps, its greatest
    /// length, and isValid() as the check of an entry. Characters that it does not allow are left
    /// out of a pasted text.
    void setRule(const TvString& rule);
    /// A number's rule, which is copied. Only characters of numbers can be typed; what is pasted
    /// with any other is refused whole and the reason shown, for leaving some out would make
    /// another number of it; blanks and line ends around it and the field's units at its end do not
    /// count. The up and down arrow keys move the entry by a step, Page Up and Page Down by ten; so
    /// does the wheel while the field has the focus and the pointer is over it. Limits are never
    /// enforced while typing; steps stay within them.
    template <class T>
    void setNumber(const TvNumber<T>& rule, double step = 1);
    /// The same with what the caller provides.
    void setNumber(const toolbox::EditNumber& rule, double step);
    /// Any text again.
    void removeRule();

    /// Units shown at the right inside a single-line field; empty for none.
    void setUnits(const CString& units);
    [[nodiscard]] const CString& getUnits() const;
    /// What an empty field shows while it does not have the focus.
    void setCue(const CString& cue);
    /// Marks the entry as wrong and gives the reason as the field's tip; an empty one ends that.
    /// Any change of the text ends it too.
    void setFault(const CString& why);
    /// Empty while the entry is not marked.
    [[nodiscard]] const CString& getFault() const;
    /// Checks the entry now and marks it; 1 when it is right or there is no rule.
    int check();
    /// How long the user pauses before an entry is checked, in milliseconds; 600 from the start.
    void setPause(unsigned int milliseconds);

    /// Moves a number as the arrow keys do, as an edit of the user. 0 without a number to move.
    int step(int steps);

    /// The object attached to a window; null when there is none.
    [[nodiscard]] static TvEdit* find(HWND control);

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int accepts(const char* className) const override;
    void attached() override;
    void detaching() override;

  private:
    struct State;
    void limit();
    LRESULT input(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT typed(WPARAM character, LPARAM data);
    bool pressed(WPARAM key);
    [[nodiscard]] std::string beforeSelection() const;
    void paste(const std::string& text);
    void insert(std::string_view text);
    void refuse(unsigned int reason, const std::string& what);
    LRESULT edited(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool hasMargin() const;
    void layOut();
    LRESULT painted(UINT message, WPARAM wParam, LPARAM lParam);
    void drawMargin(HDC given);
    void drawCue(HDC given);

    std::unique_ptr<State> state_;
};

/// A combo box. Its drop-down list is as wide as its longest entry, and while it is closed the
/// wheel goes to its parent instead of changing the choice.
class TB_API TvComboBox : public TvControl {
  public:
    TvComboBox();
    ~TvComboBox() override;

    // Replace the list's entries, recent ones first, and keep the text of the field. 0 when the
    // list did not take all of them.
    int fill(const std::vector<CString>& texts);
    /// With the parts of a resource text between '|'; 0 when there is no such text.
    int fill(unsigned short resource);
    /// With the descriptions of a manager's matching keys, the key string where there is none.
    int fill(UDManager& keys);

    /// The key chosen, 0xFFFFFFFF when there is none.
    [[nodiscard]] UINT getKey() const;
    /// Chooses a key; 0 when the list does not have it.
    int setKey(UINT id);

    /// Completes what the user types with the first entry that begins so, case ignored; what was
    /// added is selected. Only an insertion at the end completes: after Backspace and Delete the
    /// text is what is left. On from the start; without an edit field nothing is completed.
    void setCompletion(int on);

    /// Keeps recent entries as settings (GMSG::getProfile()), "entry1" the newest, at most 50, and
    /// puts those that are stored at the head of the list. Texts that a setting cannot keep, empty
    /// ones among them, are not remembered.
    void setRecent(const toolbox::SettingName& section, const CString& entry, int most = 10);
    /// The field's text becomes the newest recent entry; call it when the dialog is confirmed. 0
    /// when it cannot be kept or stored.
    int remember();

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int accepts(const char* className) const override;
    void attached() override;
    void detaching() override;

  private:
    struct State;
    int put();
    void widen();
    void setListWidth();

    std::unique_ptr<State> state_;
};

/// A static text that shows a value, a path or a link.
class TB_API TvStatic : public TvControl {
  public:
    TvStatic();
    ~TvStatic() override;

    /// Shows a value as its format prints it, without blanks around it, and its units. The control
    /// is an ordinary static again.
    int setValue(FormatedValue& value, const CString& units = CString());
    /// Shows a path shortened in the middle where it is too long, the whole one as a tip then. The
    /// window's text is the whole path.
    int setPath(const CString& path);
    /// Makes the control a link, which the user follows by a click, by Enter and by Space; Tab
    /// reaches it. `follow` is then called; without one the parent gets WM_COMMAND with the
    /// control's number and STN_CLICKED. '&' is an ordinary character.
    int setLink(const CString& text, std::function<void()> follow = {});

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int accepts(const char* className) const override;
    void detaching() override;

  private:
    struct State;
    void become(int kind);
    void go();
    void draw(HDC context);
    LRESULT painted(UINT message, WPARAM context);
    LRESULT hit(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT linked(UINT message, WPARAM wParam, LPARAM lParam);

    std::unique_ptr<State> state_;
};

/// A list with columns (LVS_REPORT). Rows and columns count from 0.
class TB_API TvListView : public TvControl {
  public:
    /// A column. Numbers are at its right, but not in column 0: the system keeps that at the left.
    struct Column {
        CString heading;        ///< its title
        int width = 0;          ///< in dialog units; 0: as wide as the title
        bool isNumber = false;  ///< at the right
    };
    static constexpr int kEveryRow = -1;  ///< for selectRow()

    ~TvListView() override;

    /// Appends columns. Rows are selected as a whole and divided by lines.
    int addColumns(const std::vector<Column>& columns);
    /// Of the columns, in pixels.
    [[nodiscard]] std::vector<int> columnWidths() const;
    /// Gives the columns the widths that saveWidths() kept, on a screen of another DPI scaled. 0,
    /// and they stay as they are, when none are kept of as many columns.
    int restoreWidths(const toolbox::SettingName& name);
    /// Keeps the widths in the settings of the message service from run to run: an entry of the
    /// section "Columns". 0 when they could not be kept.
    int saveWidths(const toolbox::SettingName& name) const;
    /// Sets the text of a cell. The row after the last one is appended, by its column 0.
    int setText(int row, int column, const CString& text);
    /// Empty where there is no cell.
    [[nodiscard]] CString getText(int row, int column) const;
    /// The first row selected, -1 when there is none.
    [[nodiscard]] int selectedRow() const;
    /// The rows selected, in their order.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Selects a row and brings it into view, or deselects it.
    int selectRow(int row, bool selected = true);

  protected:
    [[nodiscard]] int accepts(const char* className) const override;
};

template <class T>
void TvEdit::setNumber(const TvNumber<T>& rule, double step) {
    struct Numbers {
        TvNumber<T> number;
        TvNumber<T> plain;      // without formulas
        TvNumber<T> unlimited;  // what is beyond the limits can be moved
    };
    const auto made = std::make_shared<Numbers>(Numbers{rule, rule, rule});
    made->plain.allowFormula(false);
    made->unlimited.setToDefaults();
    toolbox::EditNumber asked;
    asked.allows = [made](char c) { return made->plain.allows(c); };
    if (rule.allowsFormula())
        asked.allowsInFormula = [made](char c) { return made->number.allows(c); };
    asked.check = [made](const CString& text, CString* why) {
        T value{};
        return made->number.scan(text, value, why);
    };
    asked.move = [made](CString& text, int steps, double size) {
        T value{};
        if (!made->unlimited.scan(text, value, nullptr)) return false;
        const T moved = made->number.step(value, steps, size);
        if (moved == value) return false;
        text = made->number.print(moved);
        return true;
    };
    setNumber(asked, step);
    if (!rule.units().empty()) setUnits(rule.units());
}
