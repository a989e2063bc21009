// The frame window: a line of hints above the documents.
#pragma once

#include "toolbox/strings.h"
#include "toolbox/windowing.h"

class WorkbenchFrame : public MDI {
  public:
    using MDI::MDI;
    void showHint(const CString& hint);

  protected:
    HWND createFramePane() override;
    LRESULT frameWndProc(TarvMess& message) override;

  private:
    HWND pane_ = nullptr;
};
