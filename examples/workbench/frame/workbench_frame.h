// The frame window, with the status bar below the documents.
#pragma once

#include "toolbox/controls.h"
#include "toolbox/strings.h"
#include "toolbox/windowing.h"

class Workbench;

/// Its application is the workbench.
class WorkbenchFrame : public MDI {
  public:
    using MDI::MDI;

    /// Comes when there is nothing else in the message loop.
    static constexpr UINT_PTR kIdleTimer = 1;

    /// Once the window is there.
    void createStatusBar();
    /// What the program says of what was done last. The hints of menus stand over it for a moment.
    void showHint(const CString& hint) { bar_.setText(0, hint); }
    /// Empty for none.
    void showCount(const CString& count) { bar_.setText(1, count); }
    [[nodiscard]] HWND statusBar() const { return bar_.getHWND(); }

  protected:
    LRESULT frameWndProc(TarvMess& message) override;

  private:
    /// Null once it was told that the frame is destroyed.
    [[nodiscard]] Workbench* workbench() const;

    TvStatusBar bar_;
};
