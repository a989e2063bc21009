// The exchange of values between a dialog's controls and variables (Windows only).
//
// One function names each field once; by it the dialog is filled, and read again:
//
//     void LoadDialog::exchange(TvExchange& fields) {
//         fields.text(IDC_NAME, name_);
//         fields.number(IDC_FROM, from_);
//         fields.number(IDC_TO, to_);
//         if (from_ >= to_) fields.fail(IDC_TO, kEndBeforeStart);
//     }
//
// Reading stops at the first fault. Its field gets the focus, its text is selected, and a balloon
// beside it says what is wrong; the balloon goes when the user types, leaves the field, or moves or
// closes the dialog. Nothing of a form with a fault is stored: while the function runs each
// variable has what was entered, so that rules between fields see it, and at the first fault all of
// them get back what they had.
//
// A field that the user did not touch gives back the value it was filled with, with all its digits;
// it, too, is checked by its rule. A disabled or hidden field whose entry is wrong does the same.
//
// A control that the template lacks is no fault of the user: the operation is 0, its variable
// stays, the trace tells, with every category, and the other fields are exchanged.
//
// TvDialog and TvPropertyPage own one; it works on any dialog window.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

#include "toolbox/dates.h"
#include "toolbox/export.h"
#include "toolbox/formats.h"
#include "toolbox/messages.h"
#include "toolbox/numbers.h"
#include "toolbox/strings.h"
#include "toolbox/text.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/exchange.h needs windows: it exists on Windows only"
#endif

/// The fields of one dialog, and what they were filled with. It may die before or after the window.
/// All variables must live as long as fill() or read() runs, and until takeBack() where that is
/// used.
class TB_API TvExchange {
  public:
    /// The function that names the fields. It may close and delete anything, this object included;
    /// when the object is gone, the operation that called it ends with 0 and touches no variable
    /// any more.
    using Fields = std::function<void(TvExchange& fields)>;

    /// For a dialog with its controls. Borrowed.
    explicit TvExchange(HWND dialog);
    ~TvExchange();
    TvExchange(const TvExchange&) = delete;
    TvExchange& operator=(const TvExchange&) = delete;

    // What the dialog does with its fields. 1 when it was done; 0 at a fault, which the user sees,
    // and when the dialog or this object went meanwhile. Inside of each other they do nothing: 0.

    /// Shows the variables in their controls and limits what can be typed. A control that shows its
    /// variable already is left alone. A balloon that is shown goes.
    int fill(const Fields& fields);
    /// Stores what was entered, all of it or nothing.
    int read(const Fields& fields);
    /// As read(), but stores nothing in any case: may the user leave this form?
    int verify(const Fields& fields);
    /// The variables of the last read() get back what they had before it. Once, and not after
    /// another fill(), read() or verify().
    void takeBack();

    // Fields. The result is 1 when the field was filled or read; 0 when it was not: there is no
    // such control, its entry is at fault, or another was before. Called outside of the operations
    // above they do nothing.

    // A text, up to the longest that its rule or `limit` allows (0 and less: any length), more
    // than which cannot be typed. Line ends are those of the control. Control characters are
    // refused, but for line ends and tabs in a field of several lines.
    int text(int id, TvString& value);
    int text(int id, CString& value, int limit);
    int text(int id, RWCString& value, int limit);

    // A number by its rule and format, without padding. Its units are not shown; they may be typed
    // after the number.
    int number(int id, TvShort& value);
    int number(int id, TvUShort& value);
    int number(int id, TvLong& value);
    int number(int id, TvULong& value);
    int number(int id, TvFloat& value);
    int number(int id, TvDouble& value);
    // A number without a rule of its own: any, or from `minimum` to `maximum`. Reals are shown with
    // `decimals`, as short as the value needs when that is negative.
    int number(int id, int& value);
    int number(int id, int& value, int minimum, int maximum);
    int number(int id, double& value, int decimals = -1);
    int number(int id, double& value, double minimum, double maximum, int decimals = -1);

    // A check box. The int is 1 or 0, and 2 for the third state of a box that has one, which a bool
    // takes for false.
    int check(int id, bool& value);
    int check(int id, int& value);

    // A group of radio buttons, numbered from 0; -1 when none is chosen. A value beyond the group
    // chooses none, and is given back while none is. All of them must be there.
    int radio(int firstId, int lastId, int& value);
    int radio(std::initializer_list<int> ids, int& value);

    // One entry of a list box (of single selection) or combo box: its place in the list from 0, or
    // its text, upper and lower case told apart. -1, an entry beyond the list, or a text that it
    // does not have choose none, and are given back while none is chosen. In a combo box with an
    // edit field any text may be typed, up to `limit` characters (0: any length); the place of one
    // that the list does not have is -1.
    int choice(int id, int& index);
    int choice(int id, CString& value, int limit = 0);

    /// A date in an edit field or a date picker. In an edit field it is day, month and year in
    /// French and month, day and year in English, the year with four digits, with '/', '-', '.' or
    /// blanks between them; or year, month and day ("2026-08-01"), which is the same everywhere. An
    /// invalid date is shown as an empty field, which is accepted when `mayBeEmpty` (the date is
    /// then year, month and day 0).
    int date(int id, TarvDate& value, bool mayBeEmpty = false);

    /// A formatted value: a number as its format prints it, without padding, or with as many digits
    /// as it needs where the format is too narrow; a string of the format's width at most (or of
    /// the length that it has). Units are shown after a number and may be typed or left out. "No
    /// format" shows nothing and keeps everything.
    int value(int id, FormatedValue& value, const CString& units = CString());

    // Rules between fields. The user is led to the control with the text, which says what is wrong
    // and what is allowed. In fill() and after another fault it does nothing; outside of the
    // operations, after a read(), it takes that back, and shows the fault at once. Always 0.
    // With a text, taken as it is.
    int fail(int id, const CString& text);
    int fail(int id, const char* text) { return fail(id, CString(text)); }
    /// With a template of the resources and its arguments.
    template <toolbox::ResourceId TextId, class... Args>
    int fail(int id, TextId text, const Args&... args) {
        RWCString printed;
        GMSG::getString(static_cast<unsigned short>(text), printed, args...);
        return fail(id, CString(printed));
    }

    /// True while read() or verify() call the function; false in fill().
    [[nodiscard]] bool isReading() const;

    /// 1 when the user changed the field since it was filled; 0 also for a field that was not.
    [[nodiscard]] int isTouched(int id) const;
    /// 1 when any field was changed.
    [[nodiscard]] int isTouched() const;

    /// Control of the last fault since the last fill(), read() or verify(); 0 when there was none.
    [[nodiscard]] int faultControl() const;
    /// What is wrong with it; empty when nothing is.
    [[nodiscard]] CString faultText() const;
    /// Leads the user to the fault again, when there is one: after the dialog, a page say, was
    /// shown. A fault of a hidden dialog is only noted.
    void showFault();
    /// The balloon goes; the fault stays noted.
    void hideFault();
    /// The balloon's window; null while none is shown. For tests and screen readers.
    [[nodiscard]] HWND balloon() const;

    /// The dialog; null when its window is gone.
    [[nodiscard]] HWND getHWND() const;

  private:
    struct State;
    class Run;

    template <class T>
    int typedNumber(int id, TvNumber<T>& value);
    int radioGroup(const std::vector<int>& ids, int& value);

    std::shared_ptr<State> state_;  // also held by the operation that runs
};
