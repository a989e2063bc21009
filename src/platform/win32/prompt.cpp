// Message boxes and the cursor.
#include "platform/host.h"

namespace toolbox::platform {
namespace {

class BoxPrompt final : public UserPrompt {
  public:
    int messageBox(HWND owner, const char* text, const char* caption, unsigned int flags) override {
        return MessageBoxA(owner, text, caption, flags);
    }
    void fatalExit(const char* text) override { FatalAppExitA(0, text); }
    bool isWindow(HWND window) override { return IsWindow(window) != 0; }
    void showWaitCursor(bool wait) override {
        SetCursor(LoadCursor(nullptr, wait ? IDC_WAIT : IDC_ARROW));
    }
};

}  // namespace

UserPrompt& hostPrompt() {
    static BoxPrompt prompt;
    return prompt;
}

}  // namespace toolbox::platform
