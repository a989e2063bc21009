// Boxes where there is no window system: the text goes to standard error and the answer is the
// button that changes nothing.
#include <cstdio>
#include <cstdlib>

#include "platform/host.h"

namespace toolbox::platform {
namespace {

int cautiousAnswer(unsigned int flags) {
    switch (flags & 0xF) {
        case MB_OKCANCEL:
        case MB_YESNOCANCEL:
            return IDCANCEL;
        case MB_YESNO:
            return IDNO;
        default:
            return IDOK;
    }
}

class ConsolePrompt final : public UserPrompt {
  public:
    int messageBox(HWND, const char* text, const char* caption, unsigned int flags) override {
        if (caption && *caption) std::fprintf(stderr, "%s: ", caption);
        std::fprintf(stderr, "%s\n", text ? text : "");
        return cautiousAnswer(flags);
    }
    void fatalExit(const char* text) override {
        std::fprintf(stderr, "%s\n", text ? text : "");
        std::fflush(nullptr);
        std::_Exit(1);
    }
    bool isWindow(HWND) override { return false; }
    void showWaitCursor(bool) override {}
};

}  // namespace

UserPrompt& hostPrompt() {
    static ConsolePrompt prompt;
    return prompt;
}

}  // namespace toolbox::platform
