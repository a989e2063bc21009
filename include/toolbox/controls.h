// Controls of dialogs and other windows (Windows only): edit fields with a rule, combo boxes that
// complete, statics that show values, paths and links, report lists, tool tips, tool bars and the
// status bar.
//
//     TvEdit width;                                  // a member of the dialog's object
//     width.attach(dialog, IDC_WIDTH);               // the template's control, subclassed
//     width.setNumber(beam.width, 0.5);              // a TvDouble; the arrow keys step by 0.5
//     width.setUnits("mm");
//
// An object attaches to a control that exists and takes nothing over: it adds to what the control
// does, what the application had subclassed before or subclasses later goes on working, and the
// parent gets all notifications. Object and window may end in any order: an object whose window is
// gone has none, a window whose object is gone behaves as without it.
//
// Handlers and texts asked for may do anything, also destroy the window and delete the object.
// Everything belongs to the thread of the window. Texts are bytes in Windows-1252. Int results are
// 1 for done or yes and 0 for refused or no; without a window every operation on it is refused.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "toolbox/commands.h"
#include "toolbox/detail/watch.h"
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

/// What all attached objects have in common. A class derived from one of them may handle messages
/// of its own before or after those of the base.
class TB_API TvControl {
  public:
    TvControl() = default;
    TvControl(const TvControl&) = delete;
    TvControl& operator=(const TvControl&) = delete;
    virtual ~TvControl();

    /// Attaches to a control, leaving the one before. 0, and no window, for null, for a window of
    /// another thread and for one of a class that the object is not for.
    int attach(HWND control);
    /// The same with a dialog's control.
    int attach(HWND dialog, int id);
    /// Leaves the control as it would be without the object.
    void detach();
    /// Null when there is none, or it was destroyed.
    [[nodiscard]] HWND getHWND() const { return window_; }

  protected:
    /// Every message of the window. The default passes it on.
    virtual LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// What the window does with a message without the object. The object may be gone after it.
    LRESULT pass(UINT message, WPARAM wParam, LPARAM lParam);
    /// Whether the object is for windows of this class, such as "Edit"; the default takes any.
    [[nodiscard]] virtual int accepts(const char* className) const;
    /// The window is there from now on.
    virtual void attached() {}
    /// The object leaves its window, or that is being destroyed. Classes that replace it detach in
    /// their destructor.
    virtual void detaching() {}

    /// For operations that call back.
    toolbox::detail::Watched<> life_;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR object);
    void leave();

    HWND window_ = nullptr;
};

/// The text of a tip, or of a hint and a tip: a text, a resource text looked up as
/// GMSG::loadString() does when it is needed, or a function that is asked for it then. "hint\ntip"
/// has both, the hint for the status bar; without a line break the text is both.
class TB_API TvTip {
  public:
    TvTip() = default;                                       ///< no text
    TvTip(const char* text) : text_(text) {}                 ///< the text; null is empty
    TvTip(const CString& text) : text_(text) {}              ///< the text
    TvTip(unsigned short resource) : resource_(resource) {}  ///< a resource; 0 is empty
    TvTip(int resource) : TvTip(static_cast<unsigned short>(resource)) {}  ///< the same
    /// A function without arguments that returns a text.
    template <class Ask>
    requires std::is_invocable_r_v<CString, Ask&> TvTip(Ask ask)
        : ask_(std::make_shared<const std::function<CString()>>(std::move(ask))) {}

    /// The whole text. A resource that is missing is the empty one.
    [[nodiscard]] CString text() const;

  private:
    CString text_;
    unsigned short resource_ = 0;
    std::shared_ptr<const std::function<CString()>> ask_;
};

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
/// as tip, and refused by nobody here: that is up to who reads it (TvExchange).
class TB_API TvEdit : public TvControl {
  public:
    TvEdit();
    ~TvEdit() override;

    /// A text's rule, which is copied: its characters, its greatest length, and the rest as the
    /// check of an entry. Characters that it does not allow are left out of a pasted text.
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

/// Tips for what lies in one window, to which it is attached: controls, disabled ones too, and
/// areas. A text is asked for when the pointer has rested; an empty one shows nothing. A text with
/// a hint shows that in the status bar for as long as the pointer is there.
class TB_API TvToolTip : public TvControl {
  public:
    TvToolTip();
    ~TvToolTip() override;

    // A tip for a control, or any window inside the one attached to; it replaces the one before.
    int add(HWND control, const TvTip& tip);
    int add(int controlId, const TvTip& tip);
    /// A tip for an area of the client area, in pixels. `area` is a number of the application's
    /// own; a second call with it moves the area and replaces the tip. Of areas that overlap the
    /// one added last counts; a control in an area goes first.
    int addArea(int area, const RECT& place, const TvTip& tip);
    // 0 when there is no tip for it.
    int remove(HWND control);
    int removeArea(int area);

    /// The window of a TvStatusBar, for hints; null for none. Borrowed, and may be destroyed.
    void setStatusBar(HWND bar);
    /// How long the pointer rests before a tip is shown, in milliseconds; the system's from the
    /// start.
    void setDelay(unsigned int milliseconds);
    /// Hides the tip that is shown; it stays hidden until the pointer has left what it is for.
    void hide();
    /// The text of what the pointer is over has changed: hides it and asks for it anew.
    void update();
    /// The window that shows tips, null before the first; for tests and for a look of its own.
    [[nodiscard]] HWND getTipWindow() const;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void detaching() override;

  private:
    struct State;
    struct Tipped;
    void look();
    void moveTo(const Tipped* found);
    void rested();
    std::unique_ptr<State> state_;
};

/// The strip at the bottom of a frame: panes with texts, hints of menu items and tools, progress.
///
///     bar.create(frame);
///     bar.setPanes({{.characters = 0}, {.characters = 12, .alignment = TvStatusBar::AtRight}});
///     mdi.setStatusBar(bar.getHWND());     // the documents keep clear of it
class TB_API TvStatusBar : public TvControl {
  public:
    /// Where a pane's text stands.
    enum Alignment : int { AtLeft = 0, Centered = 1, AtRight = 2 };
    /// A pane.
    struct Pane {
        int characters = 0;            ///< width for so many digits; 0: a share of the rest
        Alignment alignment = AtLeft;  ///< of its text
    };

    TvStatusBar();
    ~TvStatusBar() override;

    /// Creates the bar as a child of a frame, with one pane, and shows the hints of that window's
    /// menus in it. The window is destroyed with the frame, not with the object. A size grip is
    /// shown while the frame is not maximized.
    int create(HWND frame, int controlId = 0);

    /// 1 to 64 panes; their texts are empty.
    int setPanes(const std::vector<Pane>& panes);
    // Panes count from 0; 0 and the empty text for others. A tab or line break counts as a blank.
    int setText(int pane, const CString& text);
    [[nodiscard]] CString getText(int pane) const;

    /// Shows a hint in pane 0 over its text, until an empty one ends that.
    void showHint(const CString& hint);
    /// Where the hint of a menu's command comes from; by default the resource text with its number,
    /// "hint\ntip". Menus that open others and those of the system have none.
    void setHints(std::function<CString(UINT command)> hints);
    /// The same as showHint() for who knows the window only; another window ignores it.
    static void showHintIn(HWND bar, const CString& hint);

    /// Shows progress in a pane, from 0 to 1; what is beyond counts as the nearer end, and not a
    /// number as 0.
    int setProgress(int pane, double part);
    /// The pane shows its text again.
    void endProgress();

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int accepts(const char* className) const override;
    void attached() override;
    void detaching() override;

  private:
    struct State;
    void layOut();
    void show(int pane);
    [[nodiscard]] bool hasPane(int pane) const;
    void placeProgress();
    void showGrip();

    std::unique_ptr<State> state_;
};

/// A tool bar as a tool of the command manager: its buttons are commands, enabled and pressed as
/// these are enabled and checked. A click goes to the manager's frame (without a manager to the
/// bar's parent) as WM_COMMAND with the command's number, as from a menu.
class TB_API TvToolBar : public Tool {
  public:
    /// No window yet; `id` as Tool has it.
    explicit TvToolBar(unsigned long id);
    /// The window stays, its buttons dead.
    ~TvToolBar() override;

    /// Creates the window at the top of a parent. `dpi` is that of the pictures to show, 0 the
    /// screen's. 0 also when there is a window already.
    int create(HWND parent, int controlId = 0, int dpi = 0);
    /// Takes over a tool bar that exists, with its buttons.
    int attach(HWND toolBar);
    [[nodiscard]] HWND getHWND() const;

    /// Pictures from a bitmap resource: a strip of pictures `width` pixels wide at 96 DPI, 0 for as
    /// wide as high, enlarged for other resolutions. The colour of its top left point is
    /// transparent. 0 when there is no such bitmap; the bar keeps what it has.
    int setPictures(HINSTANCE module, int bitmap, int width = 0);
    /// Pictures of an image list, which is borrowed and must outlive the window.
    int setPictures(HIMAGELIST list);

    /// Appends a button. The picture's index counts from 0; the tip may have a hint.
    int addButton(int command, int picture, const TvTip& tip = TvTip());
    int addSeparator();
    /// The window of a TvStatusBar, for hints; see TvToolTip.
    void setStatusBar(HWND bar);
    /// Shows the statuses that its commands have now: after commands were added, since add() shows
    /// nothing. 1 when the bar has a button for each of them; 0 also when the tool was deleted
    /// meanwhile.
    int refresh();

    const int* getClassType() const override { return &classType; }
    /// A bar is never activated.
    int setVisibleStatus(int visible, int activate) override;
    int isVisible() const override;
    // 0 when there is no such button.
    int setCommandCheckStatus(int commandId, int status) override;
    int setCommandEnableStatus(int commandId, int status) override;

    /// The tag of tool bars.
    static const int classType;

  private:
    struct State;
    int setState(int commandId, BYTE bit, int status);
    std::unique_ptr<State> state_;
    toolbox::detail::Watched<> alive_;
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
