// The frame window: a line of hints above the documents.
#pragma once

#include "toolbox/strings.h"
#include "toolbox/windowing.h"

class Workbench;

/// Its application is the workbench.
class WorkbenchFrame : public MDI {
  public:
    using MDI::MDI;
    ~WorkbenchFrame() override;
    void showHint(const CString& hint);
    /// The keys of the commands that edit what is selected are commands, as at first, or they go to
    /// the active window like any other key: for a modeless dialog with its own use for them.
    void setEditingKeys(bool areCommands);

  protected:
    HWND createFramePane() override;
    LRESULT frameWndProc(TarvMess& message) override;

  private:
    /// Null once it was told that the frame is destroyed.
    [[nodiscard]] Workbench* workbench() const;

    HWND pane_ = nullptr;
    HACCEL otherKeys_ = nullptr;  // owned; made when it is needed
};
