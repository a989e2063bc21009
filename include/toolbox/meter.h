// A progress meter (Windows only): a modeless dialog with a caption, two lines of text, a bar, a
// clock of the time elapsed and a cancel button, shown while a job runs in the caller's own thread;
// and with the time left, once it can be told, where the template has a control 2064 for it.
//
//     TarvMeter::setInstance(instance);              // its resources have the dialog "DLG_METER"
//     TarvMeter meter;
//     toolbox::ShownMeter shown(meter, "Computing", 1);
//     meter.setPartsInJob(sections);
//     for (unsigned done = 0; done < sections && !meter.isMeterCancelled(); ++done) {
//         compute(done);
//         meter.setPartsComplete(done + 1);
//     }
//
// The meter lives by the job's calls: every operation first handles the messages that wait for the
// thread, unless said otherwise. Their handlers run inside the call, and may delete the dialog and
// the meter: the call then does nothing more and answers as a meter without dialog, 0 for numbers.
// While isCancelEnabled() the dialog that is active has a dialog's keys: Escape and Enter cancel.
// Where there is no dialog every operation is harmless. Its parent window is disabled while it is
// up.
#pragma once

#include <ctime>

#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/meter.h needs windows: it exists on Windows only"
#endif

/// A meter, with or without its dialog. The creator owns it.
class TB_API TarvMeter {
  public:
    /// Without dialog; handles no messages.
    TarvMeter();
    /// Deletes the dialog.
    virtual ~TarvMeter();
    TarvMeter(const TarvMeter&) = delete;
    TarvMeter& operator=(const TarvMeter&) = delete;

    /// For derived classes: the user cancelled, or a quit message came by. Does nothing.
    virtual void cancelMeter() const;

    // The module with the dialog template; null, as from the start: no dialog can be created.
    static void setInstance(HINSTANCE instance);
    [[nodiscard]] static HINSTANCE getMeterInstance();
    /// 0 switches meters off: createMeter() then creates nothing.
    static void setEnable(int enable);

    // These handle no messages, but createMeter() while it sets the bar up.

    /// Creates the dialog, hidden, in the language of the message service where the template has
    /// it, and disables the parent. 1 when there is a dialog afterwards, also when there was one
    /// before, which stays as it is; 0 when a handler deleted the meter meanwhile.
    int createMeter(const char* caption, int cancelEnabled);
    /// Enables the parent and destroys the dialog.
    void deleteMeter();
    // Enables or disables the button.
    void enableCancel(int enable);
    [[nodiscard]] int isCancelEnabled() const;
    /// Null when there is no dialog.
    [[nodiscard]] HWND getMeterHandle() const;
    /// 1 while there is a dialog.
    [[nodiscard]] int isMeterCreated() const;
    /// The window to disable. One that is null or gone when a dialog is created gives way to the
    /// active window. Set while there is a dialog, it takes the place of the former parent.
    void setParentWindow(HWND parent);
    // The position and the step as they were set, 0 and 1 from the start.
    [[nodiscard]] int getCurPos() const;
    [[nodiscard]] int getStepInc() const;

    // All others do.

    /// Shows the dialog under the wait cursor and disables the parent, or hides it and enables the
    /// parent. The cursor is that of the dialog's window class: the last meter that is hidden or
    /// deleted gives the class its own again.
    void setMeterVisibility(int show);
    /// 1 while the user can see the dialog.
    [[nodiscard]] int isMeterVisible() const;
    /// Copies at most size - 1 characters, terminated, and returns their number; "" without dialog.
    int getCaption(char* out, int size) const;

    /// Line 0 or 1; another is ignored, a null text is empty.
    void setMeterString(unsigned int line, const char* text);
    /// As getCaption(); "" for a line that does not exist.
    int getMeterString(unsigned int line, char* out, int size) const;

    // The bar. Its ends have 16 bits.

    /// The lowest and the highest position.
    void setRange(int low, int high);
    /// high * 65536 + low, the low 16 bits of each.
    [[nodiscard]] unsigned long getRange() const;
    /// What one step adds.
    void setStepInc(int step);
    /// Stores the position. The bar gets it as its step, and does not move.
    void setCurPos(int position);
    /// Advances the bar only.
    void setDeltaPos(int delta);

    // The job in parts.

    /// The bar's range becomes 0 to `parts`. With 0 the position becomes -1, which stands before
    /// the first part.
    void setPartsInJob(unsigned int parts);
    /// 0 without dialog.
    [[nodiscard]] unsigned int getPartsInJob() const;
    /// Steps the bar once for each part up to `parts`; with 0 the count starts again, at one step.
    /// The bar never moves back.
    void setPartsComplete(unsigned int parts);
    /// 0 without dialog.
    [[nodiscard]] int getPartsComplete() const;

    /// Whether the user pressed the button since the dialog was created or the flag was reset.
    [[nodiscard]] int isMeterCancelled() const;
    /// As if the user had not pressed it.
    void resetMeterCancelledFlag();

  protected:
    /// Handles the thread's messages while there is a dialog. A quit message only calls
    /// cancelMeter() and is used up: who needs it later posts it again.
    void dispatch() const;

  private:
    static INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    INT_PTR handleDialog(HWND dialog, UINT message, WPARAM wParam);
    /// dispatch(); false when the meter was deleted by it.
    [[nodiscard]] bool pumped() const;
    void showTimes() const;
    void showTimeLeft(long elapsed) const;
    void showWaitCursor();
    void restoreCursor();
    void release();
    void sendToBar(UINT message, WPARAM wParam, LPARAM lParam) const;

    HWND parent_ = nullptr;
    int showsWaitCursor_ = 0;
    HWND meter_ = nullptr;
    int cancelled_ = 0;
    int rangeLow_ = 0;
    int rangeHigh_ = 10;
    int step_ = 1;
    int position_ = 0;
    std::time_t start_ = 0;
    mutable toolbox::detail::Watched<> life_;
};

namespace toolbox {

/// Creates a meter's dialog and shows it for as long as this lives, whatever ends the job. A dialog
/// that was there before is shown, and stays at the end.
class [[nodiscard]] ShownMeter {
  public:
    /// As TarvMeter::createMeter().
    ShownMeter(TarvMeter& meter, const char* caption, int cancelEnabled)
        : meter_(meter), creates_(!meter.isMeterCreated()) {
        if (meter_.createMeter(caption, cancelEnabled)) meter_.setMeterVisibility(1);
    }
    ~ShownMeter() {
        if (creates_) meter_.deleteMeter();
    }
    ShownMeter(const ShownMeter&) = delete;
    ShownMeter& operator=(const ShownMeter&) = delete;

  private:
    TarvMeter& meter_;
    bool creates_;
};

}  // namespace toolbox
