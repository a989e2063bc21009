// The system's clipboard: CF_TEXT and CF_ENHMETAFILE.
#include <cstring>

#include "platform/host.h"

namespace toolbox::platform {
namespace {

/// The clipboard, opened for this process until the object dies.
class OpenClipboardGuard {
  public:
    OpenClipboardGuard() : open_(OpenClipboard(nullptr) != 0) {}
    ~OpenClipboardGuard() {
        if (open_) CloseClipboard();
    }
    OpenClipboardGuard(const OpenClipboardGuard&) = delete;
    OpenClipboardGuard& operator=(const OpenClipboardGuard&) = delete;

    explicit operator bool() const { return open_; }

  private:
    bool open_;
};

/// A movable block with the text; null when there is no memory.
HGLOBAL blockWith(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!block) return nullptr;
    std::memcpy(GlobalLock(block), text, size);
    GlobalUnlock(block);
    return block;
}

class WindowsClipboard final : public Clipboard {
  public:
    ErrorCode setText(const char* text) override {
        return set(
            CF_TEXT, [&] { return blockWith(text ? text : ""); }, GlobalFree);
    }

    ErrorCode setPicture(std::string_view metafile) override {
        const auto* bytes = reinterpret_cast<const BYTE*>(metafile.data());
        return set(
            CF_ENHMETAFILE,
            [&] { return SetEnhMetaFileBits(static_cast<UINT>(metafile.size()), bytes); },
            DeleteEnhMetaFile);
    }

    std::string text() override {
        const OpenClipboardGuard clipboard;
        const HANDLE block = clipboard ? GetClipboardData(CF_TEXT) : nullptr;
        const auto* held = block ? static_cast<const char*>(GlobalLock(block)) : nullptr;
        if (!held) return {};
        const std::size_t size = GlobalSize(block);
        std::string result(held, strnlen(held, size));
        GlobalUnlock(block);
        return result;
    }

  private:
    /// Puts what `make` makes there; it is the system's then.
    template <class Make, class Free>
    static ErrorCode set(UINT format, Make make, Free free) {
        const OpenClipboardGuard clipboard;
        if (!clipboard || !EmptyClipboard()) return ERROR_ACCESS_DENIED;
        const auto made = make();
        if (!made) return ERROR_NOT_ENOUGH_MEMORY;
        if (SetClipboardData(format, made)) return ERROR_SUCCESS;
        free(made);
        return ERROR_ACCESS_DENIED;
    }
};

}  // namespace

Clipboard& hostClipboard() {
    static WindowsClipboard clipboard;
    return clipboard;
}

}  // namespace toolbox::platform
