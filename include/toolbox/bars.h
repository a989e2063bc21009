// Tips, the status bar and tool bars (Windows only). Their rules of life are those of attached
// objects (attached_control.h).
//
//     bar.create(frame);
//     bar.setPanes({{.characters = 0}, {.characters = 12, .alignment = TvStatusBar::AtRight}});
//     mdi.setStatusBar(bar.getHWND());         // the documents keep clear of it
//     tools.create(frame);
//     tools.setPictures(instance, IDB_TOOLS);
//     tools.addButton(ID_LINE, 0, IDS_LINE);   // "Draws a line\nLine"
//     tools.setStatusBar(bar.getHWND());       // which shows "Draws a line"
#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "toolbox/attached_control.h"
#include "toolbox/commands.h"
#include "toolbox/strings.h"

#if !defined(_WIN32)
#error "toolbox/bars.h needs windows: it exists on Windows only"
#endif

#include <commctrl.h>

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
    [[nodiscard]] int gripWidth() const;
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
    /// Null when there is none, or it was destroyed.
    [[nodiscard]] HWND getHWND() const;

    /// Pictures from a bitmap resource: a strip of pictures `width` pixels wide at 96 DPI, 0 for as
    /// wide as high, enlarged for other resolutions. The colour of its top left point is
    /// transparent. 0 when there is no such bitmap; the bar keeps what it has.
    int setPictures(HINSTANCE module, int bitmap, int width = 0);
    /// Pictures of an image list, which is borrowed and must outlive the window.
    int setPictures(HIMAGELIST list);

    /// Appends a button. The picture's index counts from 0; the tip may have a hint.
    int addButton(int command, int picture, const TvTip& tip = TvTip());
    /// Appends a gap.
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
};
