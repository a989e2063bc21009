// The paste buffer where there is no window system: a text of this process.
#include "platform/host.h"

namespace toolbox::platform {
namespace {

class ProcessClipboard final : public Clipboard {
  public:
    ErrorCode setText(const char* text) override {
        text_ = text ? text : "";
        return ERROR_SUCCESS;
    }
    std::string text() override { return text_; }

  private:
    std::string text_;
};

}  // namespace

Clipboard& hostClipboard() {
    static ProcessClipboard clipboard;
    return clipboard;
}

}  // namespace toolbox::platform
