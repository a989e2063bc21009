// The errors collected so far, and what the program is.
#include <string>

#include "dialogs/dialog_window.h"
#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "toolbox/version.h"

namespace {

/// Edit fields break lines at both characters only.
std::string withLineEnds(std::string_view text) {
    std::string lines;
    for (const char c : text) {
        if (c == '\n' && !lines.ends_with('\r')) lines += '\r';
        lines += c;
    }
    return lines;
}

class MessagesDialog : public DialogWindow {
  public:
    explicit MessagesDialog(const CString& errors) : errors_(errors) {}

  private:
    void opened() override {
        const bool none = errors_.empty();
        const std::string shown = withLineEnds(none ? text(kNoMessages).view() : errors_.view());
        SetDlgItemTextA(window(), IDC_MESSAGES, shown.c_str());
        // The newest is at the end.
        SendDlgItemMessageA(window(), IDC_MESSAGES, EM_SETSEL, shown.size(),
                            static_cast<LPARAM>(shown.size()));
        SendDlgItemMessageA(window(), IDC_MESSAGES, EM_SCROLLCARET, 0, 0);
        enable(IDC_CLEAR, !none);
    }
    bool command(int id, int) override {
        if (id == IDC_CLEAR) close(true);
        return id == IDC_CLEAR;
    }

    CString errors_;
};

class AboutDialog : public DialogWindow {
  public:
    explicit AboutDialog(const CString& log) : log_(log) {}

  private:
    void opened() override {
        constexpr int kBits = 8 * static_cast<int>(sizeof(void*));
        constexpr int kStandard = static_cast<int>(__cplusplus / 100 % 100);
        const CString lines = text(kAboutLines, toolbox::versionText(), kBits, kStandard, log_);
        SetDlgItemTextA(window(), IDC_ABOUT_TEXT, withLineEnds(lines.view()).c_str());
    }
    bool command(int id, int) override {
        if (id == IDOK) close(true);
        return id == IDOK;
    }

    CString log_;
};

}  // namespace

bool showMessages(HWND parent, Workbench& workbench, const CString& errors) {
    const DialogPhase phase(workbench);
    return MessagesDialog(errors).run(parent, IDD_MESSAGES);
}

void showAbout(HWND parent, Workbench& workbench) {
    const DialogPhase phase(workbench);
    AboutDialog(workbench.settings().log).run(parent, IDD_ABOUT);
}
