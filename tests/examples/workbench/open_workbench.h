// The workbench with its frame and an empty project, in this process (Windows only).
#pragma once

#include <functional>

#include "frame/workbench.h"
#include "frame/workbench_frame.h"
#include "support/temp_folder.h"

class OpenWorkbench {
  public:
    OpenWorkbench();
    ~OpenWorkbench();
    OpenWorkbench(const OpenWorkbench&) = delete;
    OpenWorkbench& operator=(const OpenWorkbench&) = delete;

    /// As from the menu.
    void command(int id) const;
    /// Runs the frame's own loop, with its accelerators, until the condition holds; false after
    /// some seconds.
    bool runUntil(const std::function<bool()>& condition) const;
    [[nodiscard]] Workbench& workbench() const { return *workbench_; }
    /// The active one.
    [[nodiscard]] Document& document() const { return *workbench_->activeDocument(); }
    [[nodiscard]] HWND frame() const { return frame_->getFrame(); }
    /// For files, beside the settings.
    [[nodiscard]] const TempFolder& folder() const { return folder_; }
    /// The line above the documents.
    [[nodiscard]] std::string hint() const;

    /// Makes the project's view of a kind, which a command shows, as large as the frame; null when
    /// there is none.
    template <class Kind>
    [[nodiscard]] Kind* maximized(int showCommand) const {
        return dynamic_cast<Kind*>(maximize(showCommand));
    }

  private:
    /// The message service and what else there is one of.
    struct Services {
        Services();
        ~Services();
        GMSG messages;
    };
    [[nodiscard]] WindowObject* maximize(int showCommand) const;

    TempFolder folder_;
    Services services_;
    std::unique_ptr<Workbench> workbench_;
    std::unique_ptr<WorkbenchFrame> frame_;
};
