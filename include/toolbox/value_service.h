// The value service: texts and numbers of one dialog's controls (Windows only).
//
// The message service's older, smaller sibling. A Val is made in a dialog's procedure, works on
// that dialog's controls, and hands all work to the message service, whose parent is the dialog for
// as long as the Val lives:
//
//     Val values(dialog);
//     if (!values.getReal(IDC_LOAD, load, 0.0, 250.0)) return;   // the user was told
//
// New dialogs use toolbox/exchange.h, which reads strictly, checks the whole form before it stores
// anything, and shows no box. All calls come from the user-interface thread.
#pragma once

#include "toolbox/export.h"
#include "toolbox/messages.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

/// Reads and writes the controls of one dialog. Identifiers of controls and texts have 16 bits.
///
/// The int results are 1 for done and 0 for not. Where there is no such control nothing is put and
/// what is read is empty or 0, as everywhere in the message service; so is it once the dialog is
/// gone.
class TB_API Val {
  public:
    /// Makes the dialog the message service's parent. The dialog may end before the Val.
    explicit Val(HWND dialog);
    /// The message service's parent is again what it was before. Several of them may end in any
    /// order.
    ~Val();
    Val(const Val&) = delete;
    Val& operator=(const Val&) = delete;

    /// The dialog.
    [[nodiscard]] HWND getHWND() const { return dialog_; }

    // Put a text or a number, as the message service does: the first item of a combo box that
    // begins with it is selected. A text is limited to `maxLength` - 1 characters for the user, by
    // 1 and less not at all; a real has `decimals` decimals.
    void setText(unsigned short id, const char* text, int maxLength = 0);
    void setInteger(unsigned short id, long value);
    void setReal(unsigned short id, double value, int decimals);
    /// By the display format of a range text (GMSG::setFormatDouble).
    void setFormattedReal(unsigned short id, double value, unsigned short rangeId);

    /// Appends a blank and the unit to the control's text, unless it ends so already: after a
    /// number, which still reads, or after a label. An empty control shows the unit alone; an empty
    /// unit appends nothing.
    void addUnit(unsigned short id, const char* unit);
    /// The same with a text of the resources.
    void addUnit(unsigned short id, unsigned short unitId);

    /// Copies the control's text, at most `size` - 1 characters of it, and returns its length.
    int getText(unsigned short id, RWCString& out, int size = 256);

    // Read the number at the start of the control's text (GMSG::getLong, GMSG::getDouble: "12 mm"
    // is 12, a text without a number 0) and check it: by a range text (none for 0), or against two
    // limits, which belong to the range. `out` has the number even when it is refused. Then the
    // user was told in a box, the control has the focus, its text is selected, and the result is 0.
    int getInteger(unsigned short id, int& out, unsigned short rangeId = 0);
    int getInteger(unsigned short id, long& out, unsigned short rangeId = 0);
    int getReal(unsigned short id, float& out, unsigned short rangeId = 0);
    int getReal(unsigned short id, double& out, unsigned short rangeId = 0);
    int getInteger(unsigned short id, int& out, int minimum, int maximum);
    int getInteger(unsigned short id, long& out, long minimum, long maximum);
    int getReal(unsigned short id, float& out, double minimum, double maximum);
    int getReal(unsigned short id, double& out, double minimum, double maximum);

    /// Reports a wrong entry: the error `text` of the resources or given as a template, with its
    /// arguments (GMSG::errorMsg), then the control gets the focus with its text selected. Always
    /// 0, so that the caller can return it.
    template <class Text, class... Args>
    int refuse(unsigned short id, const Text& text, const Args&... args) {
        const HWND dialog = dialog_;  // while the box is shown this object may end
        {
            const InParent here(dialog);
            GMSG::errorMsg(text, MB_OK | MB_ICONEXCLAMATION, args...);
        }
        return select(dialog, id);
    }

  private:
    /// A dialog is the message service's parent for its lifetime.
    class TB_API InParent {
      public:
        explicit InParent(HWND dialog);
        ~InParent();
        InParent(const InParent&) = delete;
        InParent& operator=(const InParent&) = delete;

      private:
        HWND dialog_;
        HWND before_;
    };

    static int select(HWND dialog, unsigned short id);
    template <class Number, class Read>
    int get(unsigned short id, Number& out, const Read& read);
    template <class Number>
    int getBetween(unsigned short id, Number& out, Number minimum, Number maximum);

    HWND dialog_;
    HWND before_;  // the parent to go back to
    Val* older_;   // the one made before this, of those that live
};
