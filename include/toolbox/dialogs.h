// Dialogs made of templates (Windows only): the base of modal and modeless dialogs, how their
// controls follow when the user sizes them, the places of windows from run to run, and the base of
// tool dialogs with controls of their own.
//
//     class BeamDialog : public TvDialog {
//       public:
//         explicit BeamDialog(Beam& beam) : TvDialog(IDD_BEAM), beam_(beam) {}
//
//       protected:
//         void exchange(TvExchange& fields) override;    // names each field once (exchange.h)
//         void layout(TvDialogLayout& sizes) override {
//             sizes.follow(IDC_NAME, TvDialogLayout::Left | TvDialogLayout::Right);
//         }
//         const char* placeName() override { return "Beam"; }
//     };
//     if (BeamDialog(beam).run(frame)) beam.recompute();
//
// Whose the object is: run() returns when the dialog is closed, so its object may stand on the
// stack. The object of a modeless dialog lives at least as long as its window: it is a member of
// who opens it, whose end closes the dialog, or it is made with new and told deleteWhenClosed().
// Deleting the object closes the dialog at any time; its own operations may do that, too. The
// window goes when it is closed, when its owner goes, or when somebody destroys it.
//
// While an operation of a dialog runs, the dialog is the parent of the message service
// (GMSG::setParent()), so that what is reported stands over it; of a modal dialog that holds all
// the time. Int results are 1 for done or yes and 0 for refused or no. Everything belongs to the
// user-interface thread.
#pragma once

#include <concepts>
#include <memory>
#include <type_traits>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/settings.h"
#include "toolbox/strings.h"
#include "toolbox/tools.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/dialogs.h needs windows: it exists on Windows only"
#endif

class GCOMMBase;
class TvExchange;

namespace toolbox {

/// Number or name of a resource.
class TB_API ResourceName {
  public:
    /// A text; what MAKEINTRESOURCE made of a number is that number.
    ResourceName(const char* name);
    /// A number, as the resource script names it.
    template <class Id>
    requires std::integral<Id> || std::is_enum_v<Id> ResourceName(Id number)
        : number_(static_cast<unsigned short>(number)) {}

    /// As the system's functions take it; as long as this object lives.
    [[nodiscard]] const char* get() const;
    /// For people: the text, or the number after a "#".
    [[nodiscard]] CString text() const;

  private:
    unsigned short number_ = 0;  // 0: the text counts
    CString text_;
};

}  // namespace toolbox

/// Which edges of its dialog each control follows when the user sizes the dialog. A control that is
/// not named stays where it is. Of a control inside a child window of the dialog, the edges are
/// those of that child.
class TB_API TvDialogLayout {
  public:
    /// Edges; together a control that grows (Left | Right) or that moves (Right alone).
    enum Edge : int { Left = 1, Top = 2, Right = 4, Bottom = 8 };

    /// A control named without Left and Right keeps its left edge, without Top and Bottom its top
    /// edge. Named again it follows what was said last.
    void follow(int control, int edges);
    /// For controls that share what is gained: how much of it, in percent, each edge of the control
    /// moves. 0 stays, 100 follows the right or the bottom edge.
    void share(int control, int left, int top, int right, int bottom);

    /// What was said of one control, in percent.
    struct Shares {
        int control;  ///< its number
        // How far each edge moves.
        int left;
        int top;
        int right;
        int bottom;
    };
    /// All that was said.
    [[nodiscard]] const std::vector<Shares>& controls() const { return controls_; }

  private:
    std::vector<Shares> controls_;
};

/// The place of a window, kept in the settings of the message service from run to run. A place that
/// is on no screen is moved onto the nearest one and shrunk when that is smaller; it stays in the
/// settings until the user moves the window, so that it is found again when its screen is back.
/// Sizes are scaled when the screen has another DPI than it had.
class TB_API TvWindowPlace {
  public:
    /// `name` is the entry in the settings' section "Places".
    explicit TvWindowPlace(const toolbox::SettingName& name);

    /// Puts the window where it stood, with the size that it had or, without `withSize`, with that
    /// which it has. A window that is visible is maximized if it was; a hidden one stays hidden,
    /// and wasMaximized() tells how to show it. 0, and the window is left as it is, when nothing is
    /// kept.
    int restore(HWND window, int withSize);
    /// The window stands where the program put it: save() keeps nothing until it is moved.
    void setPut(HWND window);
    /// Keeps the place that the window has while it is neither minimized nor maximized, and whether
    /// it is maximized. Nothing is written while it stands where restore() put it. 0 when it could
    /// not be kept.
    int save(HWND window);
    /// 1 when the window was maximized when its place was kept.
    [[nodiscard]] int wasMaximized() const { return maximized_; }

  private:
    CString name_;
    RECT put_{};  // where the program put it; empty: nowhere
    int maximized_ = 0;
};

/// The base of dialogs. See the head of this file.
class TB_API TvDialog {
  public:
    /// Of the template, French or English by GMSG::language, in the message service's module, in
    /// the application or in the library, whichever has it first. No window yet.
    explicit TvDialog(const toolbox::ResourceName& name);
    /// Closes the dialog; of the operations below none is called any more.
    virtual ~TvDialog();
    TvDialog(const TvDialog&) = delete;
    TvDialog& operator=(const TvDialog&) = delete;

    /// Shows the dialog and returns when it is closed: what close() was given, 1 for confirmed, 0
    /// for cancelled, destroyed, or not made, which the user was told. Meanwhile the program's
    /// other windows take no input. A null owner stands for the process's frame. 0 at once for a
    /// dialog that is open.
    int run(HWND owner);
    /// Shows the dialog and returns its window, which stays until it is closed or `owner` is
    /// destroyed; null when it was not made, which the user was told, or has been closed already.
    /// It is registered with the process's frame, when there is one, for Tab, Enter and Escape;
    /// other message loops ask isDialogMessage(). A template with WS_CHILD becomes a child of
    /// `owner` and is left where it is. Null at once for a dialog that is open.
    HWND open(HWND owner);
    /// Closes it; run() returns `result`. 0 when it is not open.
    int close(int result);

    /// 1 from when the window was made, also after it was closed; 0 when the last run() or open()
    /// could not make it.
    [[nodiscard]] int wasMade() const;
    // While the dialog is open: 1, and 1 when run() shows it.
    [[nodiscard]] int isOpen() const;
    [[nodiscard]] int isModal() const;
    /// Null when the dialog is not open.
    [[nodiscard]] HWND getHWND() const;
    /// Made with new, a dialog deletes itself when its window is gone. One that was never made is
    /// still the caller's.
    void deleteWhenClosed(int on = 1);

    /// A control of the dialog, null when there is none.
    [[nodiscard]] HWND control(int id) const;
    /// Gives a control the focus and selects what a field holds. 0 without such a control.
    int focus(int id);
    /// A control that is disabled hands the focus on first. 0 without such a control.
    int enable(int id, int on);
    // The text of a control, of any length; empty, and 0, without such a control.
    [[nodiscard]] CString getText(int id) const;
    int setText(int id, const CString& text);

    /// The dialog that has this window; null when none has it.
    [[nodiscard]] static TvDialog* find(HWND window);
    /// Reads the fields and, when they are right, confirms, and stays open. 1 when it is confirmed.
    int apply();
    /// The exchange of its fields, to report a fault from confirmed() (TvExchange::fail()); null
    /// when the dialog is not open.
    [[nodiscard]] TvExchange* fields() const;
    /// For message loops that are not the frame's: 1 when the message was one of an open modeless
    /// dialog, which then has handled it.
    static int isDialogMessage(MSG& message);

  protected:
    // What a dialog does. Each operation may close the dialog or delete the object.

    /// The window has its controls and is not shown yet. The fields are filled afterwards. The
    /// first control that takes it gets the focus, unless focus() gave it to another.
    virtual void opened();
    /// Names the fields and their values: to fill them, and to read them when OK is chosen.
    virtual void exchange(TvExchange& fields);
    /// A control, a menu or a key has a command; `notification` is what the control says of it (0
    /// for a button: clicked). Non-zero: it is done. Otherwise IDOK reads the fields and, when they
    /// are right, confirms; IDCANCEL cancels.
    virtual int command(int control, int notification);
    /// A control tells something (WM_NOTIFY); what is returned is the answer to it.
    virtual LRESULT notified(NMHDR& note);
    /// The fields are right and their values stored. 0 keeps the dialog open, and the variables get
    /// back what they had.
    virtual int confirmed();
    /// The user cancels. 0 keeps the dialog open.
    virtual int cancelled();
    /// Help is asked for, by F1 or by the caption's question mark: of a control, or of the dialog
    /// (0). 0: there is none; F1 in a modeless dialog is then the frame's.
    virtual int help(int control);
    /// The window is gone, and so are its controls. The object may open it again.
    virtual void destroyed();
    /// Every message of the window, before the others hear of it. Non-zero: it is done, with
    /// `result`.
    virtual int handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    /// Under which name the place is kept from run to run (TvWindowPlace); null, as at first: it is
    /// not, and the dialog stands over the middle of its owner.
    virtual const char* placeName();
    /// Asked before the window is made. A dialog that names controls can be sized, in the
    /// directions in which they follow, down to its template's size; the others cannot.
    virtual void layout(TvDialogLayout& sizes);

    /// How open() shows a window.
    enum class Showing {
        hidden,    ///< not at all; its place is that of its template, or the kept one
        inactive,  ///< the same, without making it the active window
        active     ///< as the active window, with the focus in its first control
    };
    /// What open() does, shown as wanted.
    HWND open(HWND owner, Showing showing);
    /// Makes this the object of a modeless dialog that somebody else created with a procedure of
    /// its own, which hears what this object leaves, but for commands. opened() follows. It can be
    /// sized, as layout() says, until the object leaves it. 0 when this is open, the window is no
    /// dialog, or it has an object.
    int adopt(HWND dialog);

  private:
    struct State;

    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR received(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR handled(UINT message, WPARAM wParam, LPARAM lParam);
    bool prepare(HWND& owner);
    void initialized(HWND window);
    void join();
    void giveBack(HWND window);
    void arrange();
    INT_PTR commanded(int control, int notification);
    void cancel();
    void askedForHelp(const HELPINFO& about);
    void detach();
    void ended();

    std::unique_ptr<State> state_;
};

/// A modeless dialog with commands and controls of its own: a palette. Its buttons whose number is
/// that of a command of the command manager send it to the manager's frame and follow its status,
/// as those of a ToolDlg do; all other controls are the derived class's, as in any dialog. The
/// frame owns it: it stands above it from the moment that it is made. It is shown without becoming
/// the active window; its place is that of its template, or the one kept under placeName().
///
///     CToolDialog palette(IDD_PALETTE);
///     palette.create(manager, TOOL_PALETTE);      // hidden, managed
///     tools.add(palette.getTool());               // then manager.manage(count, records, tools...)
///     palette.show(1);
///
/// Enter reads the fields and confirms without closing; Escape makes the frame the active window;
/// the close button hides the palette, if cancelled() agrees. Without a field it leaves all keys
/// to the frame's accelerators.
class TB_API CToolDialog : public TvDialog {
  public:
    /// As TvDialog's.
    explicit CToolDialog(const toolbox::ResourceName& name);
    /// Ends the window, and the tool that create() made.
    ~CToolDialog() override;

    /// Makes the window, hidden and owned by the manager's frame, and its tool, which the manager
    /// manages. 0 when it is open or could not be made, which the user was told, and when the tool
    /// was refused.
    int create(GCOMMBase& manager, unsigned long toolId);
    /// Takes over the window of a tool, that of createAndManageToolDlg() for one; the tool stays
    /// the caller's. 0 for null, a tool without window, and when this is open.
    int attach(ToolDlg* tool);
    /// Shows the window, without making it the active one, or hides it. 0 without window.
    int show(int visible);

    /// The tool that create() made, owned by this; null without it, and when the window is gone.
    [[nodiscard]] ToolDlg* getTool() const;

  protected:
    /// The tip of a control, "hint\ntip" or one text for both, asked when the mouse rests on it:
    /// the default is the text of the resources that has the number of a command. Empty: none.
    virtual CString toolTip(int control);
    /// Classes that replace it pass on what they leave.
    int handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

  private:
    struct Parts;

    void addTips();
    int commanded(int control, int notification);

    std::unique_ptr<Parts> parts_;
};

#include "toolbox/property_sheets.h"  // pages are dialogs
