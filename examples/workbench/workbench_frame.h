// The frame window: a line of hints above the documents.
#pragma once

#include "toolbox/strings.h"
#include "toolbox/windowing.h"

class Workbench;

/// Its application is the workbench.
class WorkbenchFrame : public MDI {
  public:
    using MDI::MDI;
    void showHint(const CString& hint);

  protected:
    HWND createFramePane() override;
    LRESULT frameWndProc(TarvMess& message) override;

  private:
    /// Null once it was told that the frame is destroyed.
    [[nodiscard]] Workbench* workbench() const;

    HWND pane_ = nullptr;
};
