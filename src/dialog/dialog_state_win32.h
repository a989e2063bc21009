// What a dialog holds while it is open, and what a modal one keeps on the stack of run().
#pragma once

#include <memory>
#include <optional>

#include "dialog/layout/sizer_win32.h"
#include "dialog/other_windows_win32.h"
#include "dialog/parent_scope.h"
#include "toolbox/detail/watch.h"
#include "toolbox/dialogs.h"
#include "toolbox/exchange.h"

namespace toolbox::dialog {

/// One run() of a modal dialog. It outlives the object, when that is deleted from inside.
class ModalRun {
  public:
    /// The other windows take no input from here on.
    explicit ModalRun(HWND owner);
    ~ModalRun();
    ModalRun(const ModalRun&) = delete;
    ModalRun& operator=(const ModalRun&) = delete;

    /// The window is made, and the message service's parent from here on.
    void begin(HWND window);
    /// Ends the dialog, after those that run over it, which count as cancelled. False when it is
    /// ending already.
    bool end(int result);
    [[nodiscard]] bool isEnding() const { return ending_; }
    [[nodiscard]] bool wasMade() const { return window_ != nullptr; }
    /// What the dialog was ended with; 0 when its window was destroyed.
    [[nodiscard]] int result() const { return result_; }

  private:
    HWND window_ = nullptr;
    int result_ = 0;
    bool ending_ = false;
    HWND owner_;
    bool ownerTakesInput_;
    OtherWindowsOff others_;
    std::optional<ParentScope> parent_;
    HHOOK hook_;
    ModalRun* outer_;
};

}  // namespace toolbox::dialog

struct TvDialog::State {
    explicit State(const toolbox::ResourceName& templateName) : name(templateName) {}

    /// False when an operation has closed the dialog meanwhile.
    [[nodiscard]] bool stays() const { return window && !closing && !(run && run->isEnding()); }

    toolbox::ResourceName name;
    HWND window = nullptr;
    HWND owner = nullptr;                      // as it was given, be it a child window
    DLGPROC before = nullptr;                  // the procedure of an adopted window
    toolbox::dialog::ModalRun* run = nullptr;  // on the stack of run()
    bool made = false;
    bool adopted = false;
    bool widened = false;     // an adopted window got the frame by which users size it
    bool opening = false;     // inside the system's call that makes the window
    bool closing = false;     // asked to close meanwhile
    bool takesFocus = false;  // its first control does when it is opened
    bool deletes = false;
    bool registered = false;  // with the frame
    TvDialogLayout layout;
    std::shared_ptr<toolbox::dialog::Sizer> sizer;  // kept by who uses it
    std::optional<TvWindowPlace> place;
    std::unique_ptr<TvExchange> fields;
    toolbox::detail::Watched<> life;
};
