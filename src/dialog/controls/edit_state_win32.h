// What an edit field's object holds.
#pragma once

#include <functional>
#include <string>

#include "dialog/controls/edit_rule.h"
#include "dialog/controls/tip_window_win32.h"
#include "dialog/controls/window_text_win32.h"
#include "toolbox/controls.h"

struct TvEdit::State {
    /// The timers of the pause, and of how long a note is shown.
    [[nodiscard]] UINT_PTR timer() const { return reinterpret_cast<UINT_PTR>(this); }
    [[nodiscard]] UINT_PTR noteTimer() const { return timer() + 1; }

    toolbox::controls::EditRule rule;
    std::function<bool(const CString&, CString*)> check;    // none: every text is right
    std::function<bool(CString&, int steps, double)> move;  // none: no number
    double stepSize = 1;
    int longest = 0;  // characters that the rule lets the user type; 0: as many as without it
    CString units;
    CString cue;
    CString fault;
    unsigned int faults = 0;  // how often a fault was set or ended
    UINT pause = 600;

    // Of the window.
    LRESULT limitBefore = 0;
    int marginBefore = 0;
    bool drawsCue = false;  // the system's edit control does not
    toolbox::controls::WheelNotches wheel;
    TvToolTip reason;
    toolbox::controls::TipWindow note;  // why a character or a pasted text was refused
};
