// The tools of the library (Windows only): a dialog whose buttons are commands, and a menu.
#pragma once

#if !defined(_WIN32)
#error "toolbox/tools.h needs windows: it exists on Windows only"
#endif

#include "toolbox/commands.h"
#include "toolbox/win_types.h"

/// A modeless dialog. A click on a control whose id is a command's number goes to the manager's
/// frame window as WM_COMMAND with that number, as from a menu; the buttons follow the commands'
/// statuses. GCOMMBase::createAndManageToolDlg() creates both; a dialog that the application
/// creates has the procedure that getStdDlgProc() names.
class TB_API ToolDlg : public Tool {
  public:
    /// The dialog is borrowed, and destroyed only when a manager owns the tool; null: no window. It
    /// may be destroyed at any time: the tool has no window then.
    ToolDlg(unsigned long id, HWND dialog);
    ~ToolDlg() override;

    const int* getClassType() const override { return &classType; }
    /// Shows the dialog, with or without making it the active window, or hides it. 0 when there is
    /// no window.
    int setVisibleStatus(int visible, int activate) override;
    /// 1 when the user can see the dialog.
    int isVisible() const override;
    // Tell the dialog by kSetCheck and kSetEnable and return its answer, which is 0 for the
    // library's procedure; 0 when there is no window.
    int setCommandCheckStatus(int commandId, int status) override;
    int setCommandEnableStatus(int commandId, int status) override;

    /// Null when there is none, or it was destroyed.
    [[nodiscard]] HWND getHWND() const;
    /// Enables or disables the whole dialog. 0 when there is no window.
    int setEnableStatus(int status);
    [[nodiscard]] int getEnableStatus() const;

    /// The dialog procedure.
    static DLGPROC getStdDlgProc();

    // Messages to a tool dialog. wParam is the command's number, which is the control's, lParam the
    // status.
    static constexpr UINT kSetCheck = WM_USER + 10;
    static constexpr UINT kSetEnable = WM_USER + 11;

    /// The tag of dialog tools.
    static const int classType;

  private:
    friend class GCOMMBase;

    static INT_PTR CALLBACK ToolDlgDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] int tell(UINT message, int commandId, int status) const;

    HWND dialog_;
};

/// A menu, its submenus included, whose items are ticked and greyed as the commands with their
/// numbers are checked and enabled. The frame gets WM_COMMAND from the system.
class TB_API MenuTool : public Tool {
  public:
    /// Both are borrowed. `owner` is the window whose menu bar the menu is: the bar is drawn again
    /// when an item changes; null for other menus.
    MenuTool(unsigned long id, HMENU menu, HWND owner = nullptr);

    const int* getClassType() const override { return &classType; }
    /// 0: a menu is shown by who opens it.
    int setVisibleStatus(int visible, int activate) override;
    /// 1 when the menu is the menu bar of a visible owner.
    int isVisible() const override;
    // 0 when the menu has no such item.
    int setCommandCheckStatus(int commandId, int status) override;
    int setCommandEnableStatus(int commandId, int status) override;

    /// Shows the statuses that its commands have now: after commands were added, since add() shows
    /// nothing. 1 when the menu has an item for each of them; 0 also when the tool was deleted by
    /// what drawing the menu bar calls.
    int refresh();

    /// The tag of menus.
    static const int classType;

  private:
    int change(int before);

    HMENU menu_;
    HWND owner_;
};
