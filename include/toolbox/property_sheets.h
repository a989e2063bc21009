// Property sheets (Windows only): dialogs of several pages with OK, Cancel and Apply. Part of
// dialogs.h.
//
//     class LoadsPage : public TvPropertyPage {
//       public:
//         explicit LoadsPage(Beam& beam) : TvPropertyPage(IDD_LOADS), beam_(beam) {}
//
//       protected:
//         void exchange(TvExchange& fields) override { fields.number(IDC_FORCE, beam_.force); }
//     };
//     TvPropertySheet sheet("Beam");
//     GeneralPage general(beam);
//     LoadsPage loads(beam);
//     sheet.add(general);
//     sheet.add(loads);
//     if (sheet.run(frame)) beam.recompute();
//
// A page is made when it is shown first; a page that never was takes no part in what follows. The
// user leaves a page only when its fields are right. OK and Apply store the fields of all pages, or
// of none: at a fault, and when a page's confirmed() refuses, its page is shown with the fault, and
// every variable has what it had. Apply is enabled while any field differs from what it was filled
// with, and by changed().
//
// Pages are borrowed, or members of a class derived from the sheet's. Deleting one closes an open
// sheet, which is not told, since it may be on its own end. Sheet and pages may be deleted in any
// of their operations.
#pragma once

#include <memory>

#include "toolbox/dialogs.h"
#include "toolbox/export.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

class TvPropertySheet;

/// A page: a dialog that its sheet opens and closes, whose template has the title of its tab as
/// caption. Of a dialog's operations opened(), exchange(), command(), notified(), help(),
/// destroyed() and handleMessage() are what they are in any dialog. confirmed() is told at OK and
/// at Apply, of every page that was shown, when the fields of all are stored; cancelled() when the
/// user cancels the sheet, which stays open when a page answers 0.
class TB_API TvPropertyPage : public TvDialog {
  public:
    /// As TvDialog; no window yet.
    explicit TvPropertyPage(const toolbox::ResourceName& name);
    /// Closes its sheet and leaves it.
    ~TvPropertyPage() override;

    /// The title of its tab, instead of the template's caption; from the next opening on.
    void setTitle(const CString& title);
    /// The sheet that it was added to; null for none.
    [[nodiscard]] TvPropertySheet* getSheet() const;
    /// Something changed that is no field: Apply is enabled until it was applied.
    void changed();
    /// Closes the sheet, as TvPropertySheet::close(). 0 without an open one.
    int close(int result);

  protected:
    /// The page is the one that is shown.
    virtual void entered();
    /// The user leaves the page for another, or chose OK or Apply; its fields are right, but not
    /// stored. 0 keeps the user here.
    virtual int leaving();

  private:
    struct Link;
    friend struct Link;
    friend class TvPropertySheet;
    // A page is opened by its sheet.
    using TvDialog::open;
    using TvDialog::run;

    std::unique_ptr<Link> link_;
};

/// A sheet. See the head of this file.
class TB_API TvPropertySheet {
  public:
    /// The title of its window. No window yet.
    explicit TvPropertySheet(const CString& title);
    /// Closes the sheet; none of its operations is called any more.
    virtual ~TvPropertySheet();
    TvPropertySheet(const TvPropertySheet&) = delete;
    TvPropertySheet& operator=(const TvPropertySheet&) = delete;

    /// Appends a page. 0 for a page that is in a sheet, or while this one is open.
    int add(TvPropertyPage& page);
    /// The page shown first, from 0; the first one from the start.
    void setStartPage(int index);

    /// Shows the sheet over the middle of its owner and returns when it is closed: what close() was
    /// given; 1 when something was stored, by OK or by Apply before; otherwise 0, also when the
    /// sheet was not made, which the user was told. Meanwhile the program's other windows take no
    /// input. A null owner stands for the process's frame. 0 at once for a sheet that is open or
    /// has no page.
    int run(HWND owner);
    /// Shows the sheet and returns its window, which stays until it is closed or its owner is
    /// destroyed; null when it was not made, which the user was told, or was closed meanwhile. It
    /// is registered with the process's frame, when there is one, for the keys of dialogs and
    /// Ctrl+Tab from page to page; other message loops ask isDialogMessage().
    HWND open(HWND owner);
    /// Closes it without asking and without storing; run() returns `result`. 0 when it is not open.
    int close(int result);
    /// As the button Apply: 1 when everything is stored.
    int apply();

    /// 1 from when the window was made, also after it was closed; 0 when the last run() or open()
    /// could not make it.
    [[nodiscard]] int wasMade() const;
    // While the sheet is open: 1, and 1 when run() shows it.
    [[nodiscard]] int isOpen() const;
    [[nodiscard]] int isModal() const;
    /// Null when the sheet is not open.
    [[nodiscard]] HWND getHWND() const;
    /// The page that is shown, from 0; -1 when the sheet is not open.
    [[nodiscard]] int currentPage() const;
    /// Shows a page, when the current one may be left. 0 when it is not shown then.
    int showPage(int index);
    /// Made with new, a sheet deletes itself when its window is gone. One that was never made is
    /// still the caller's.
    void deleteWhenClosed(int on = 1);

    /// For message loops that are not the frame's: 1 when the message was one of an open modeless
    /// sheet, which then has handled it.
    static int isDialogMessage(MSG& message);

  protected:
    // What a sheet does. Each operation may close the sheet or delete anything.

    /// OK (`closing` is 1) or Apply (0) stored the fields of all pages, and each has confirmed.
    virtual void applied(int closing);
    /// The window is gone, and so are those of the pages. The object may open it again.
    virtual void destroyed();

  private:
    struct State;
    friend class TvPropertyPage;

    std::shared_ptr<State> state_;  // also held by the window
};
