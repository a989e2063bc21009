// The errors collected so far, and what the program is.
#include <string>

#include "dialogs/dialogs.h"
#include "frame/workbench.h"
#include "resources/dialog_texts.h"
#include "resources/resource.h"
#include "toolbox/dialogs.h"
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

class MessagesDialog : public TvDialog {
  public:
    explicit MessagesDialog(const CString& errors) : TvDialog(IDD_MESSAGES), errors_(errors) {}

  protected:
    void opened() override {
        const bool none = errors_.empty();
        const std::string shown = withLineEnds(none ? text(kNoMessages).view() : errors_.view());
        setText(IDC_MESSAGES, shown.c_str());
        // The newest is at the end.
        SendMessageA(control(IDC_MESSAGES), EM_SETSEL, shown.size(),
                     static_cast<LPARAM>(shown.size()));
        SendMessageA(control(IDC_MESSAGES), EM_SCROLLCARET, 0, 0);
        enable(IDC_CLEAR, !none);
    }
    int command(int id, int) override { return id == IDC_CLEAR && close(1); }
    void layout(TvDialogLayout& sizes) override {
        sizes.follow(IDC_MESSAGES, TvDialogLayout::Left | TvDialogLayout::Top |
                                       TvDialogLayout::Right | TvDialogLayout::Bottom);
        for (const int button : {IDC_CLEAR, IDCANCEL})
            sizes.follow(button, TvDialogLayout::Right | TvDialogLayout::Bottom);
    }
    const char* placeName() override { return "Messages"; }

  private:
    CString errors_;
};

class AboutDialog : public TvDialog {
  public:
    explicit AboutDialog(const CString& log) : TvDialog(IDD_ABOUT), log_(log) {}

  protected:
    void opened() override {
        constexpr int kBits = 8 * static_cast<int>(sizeof(void*));
        constexpr int kStandard = static_cast<int>(__cplusplus / 100 % 100);
        const CString lines = text(kAboutLines, toolbox::versionText(), kBits, kStandard, log_);
        setText(IDC_ABOUT_TEXT, withLineEnds(lines.view()).c_str());
    }

  private:
    CString log_;
};

}  // namespace

bool showMessages(HWND parent, Workbench& workbench, const CString& errors) {
    const DialogPhase phase(workbench);
    return MessagesDialog(errors).run(parent) != 0;
}

void showAbout(HWND parent, Workbench& workbench) {
    const DialogPhase phase(workbench);
    AboutDialog(workbench.settings().log).run(parent);
}
