// What the program's own dialogs share: the way from their window to their object, number fields
// that lose nothing, and lists with columns (Windows only).
#pragma once

#include <initializer_list>

#include "dialogs/common_controls.h"
#include "toolbox/strings.h"

class DialogWindow {
  public:
    DialogWindow() = default;
    virtual ~DialogWindow() = default;
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    /// Opens the dialog in the program's language over `parent`; true when it was confirmed. It is
    /// the message service's parent until something else becomes that.
    bool run(HWND parent, int frenchDialog);

  protected:
    /// A dialog that stays open until it is destroyed. Null when it could not be made.
    HWND open(HWND owner, int frenchDialog);
    /// Ends what run() began.
    void close(bool confirmed) { EndDialog(dialog_, confirmed); }

    /// The dialog has its controls, and is not shown yet.
    virtual void opened() = 0;
    /// IDCANCEL closes a modal dialog unless that is handled here.
    virtual bool command(int control, int notification) = 0;
    virtual bool notified(const NMHDR& note);
    /// The dialog became the active window, or another did.
    virtual void activated(bool /*active*/) {}
    /// The window is gone. May delete the object.
    virtual void destroyed() {}

    [[nodiscard]] HWND window() const { return dialog_; }
    [[nodiscard]] HWND control(int id) const { return GetDlgItem(dialog_, id); }
    /// Gives a control the focus and selects what an edit field holds.
    void focus(int id) const;
    /// A control that is disabled hands the focus on first: it would keep it.
    void enable(int id, bool enabled) const;

  private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM word, LPARAM data);

    HWND dialog_ = nullptr;
};

/// An edit field for a number. It belongs to the message service's parent, and its range text gives
/// the limits and how the number is shown.
class NumberField {
  public:
    NumberField(unsigned short control, unsigned short range) : control_(control), range_(range) {}

    void show(double value);
    void clear();
    [[nodiscard]] bool isEmpty() const { return entered().empty(); }
    /// The user typed into it since it was shown or cleared.
    [[nodiscard]] bool isChanged() const { return entered() != shown_; }

    /// The number entered, with a point or a comma. A field that was not changed gives what was
    /// shown with all its digits. False when it is not a number or beyond the limits: the user was
    /// told, and the field has the focus.
    [[nodiscard]] bool read(double& value);

  private:
    [[nodiscard]] CString entered() const;
    void remember();

    unsigned short control_;
    unsigned short range_;
    double value_ = 0;
    CString shown_;
};

/// Columns of a report list: a heading's text and its width in dialog units; numbers are at the
/// right, but not in the first column: the system keeps that at the left.
struct ListColumn {
    unsigned short heading;
    int width;
    bool isNumber = false;
};

void addListColumns(HWND list, std::initializer_list<ListColumn> columns);
void setListText(HWND list, int row, int column, const CString& text);
/// -1 when there is none, or no list.
[[nodiscard]] int selectedRow(HWND list);
inline constexpr int kEveryRow = -1;
void selectRow(HWND list, int row, bool selected = true);
