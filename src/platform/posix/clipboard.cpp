// The paste buffer where there is no window system: what this process keeps.
#include "platform/host.h"

namespace toolbox::platform {
namespace {

class ProcessClipboard final : public Clipboard {
  public:
    ErrorCode setText(const char* text) override { return setData("", {}, text); }
    std::string text() override { return text_; }
    ErrorCode setData(const char* format, std::string_view bytes, const char* text) override {
        text_ = text ? text : "";
        format_ = format;
        bytes_ = bytes;
        return ERROR_SUCCESS;
    }
    std::string data(const char* format) override {
        return format_ == format ? bytes_ : std::string();
    }

  private:
    std::string text_;
    std::string format_;
    std::string bytes_;
};

}  // namespace

Clipboard& hostClipboard() {
    static ProcessClipboard clipboard;
    return clipboard;
}

}  // namespace toolbox::platform
