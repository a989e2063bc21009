// The system's clipboard: CF_TEXT, and formats that are registered by their name.
#include <array>
#include <cstring>

#include "base/codec.h"
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

/// A movable block, the program's until the clipboard takes it.
class Block {
  public:
    /// With the bytes of two texts, one after the other; without memory there is none.
    Block(std::string_view first, std::string_view second)
        : block_(GlobalAlloc(GMEM_MOVEABLE, first.size() + second.size())) {
        if (!block_) return;
        auto* const bytes = static_cast<char*>(GlobalLock(block_));
        std::memcpy(bytes, first.data(), first.size());
        if (!second.empty()) std::memcpy(bytes + first.size(), second.data(), second.size());
        GlobalUnlock(block_);
    }
    ~Block() {
        if (block_) GlobalFree(block_);
    }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    explicit operator bool() const { return block_ != nullptr; }
    /// To the clipboard, which is open.
    bool give(UINT format) {
        if (!SetClipboardData(format, block_)) return false;
        block_ = nullptr;
        return true;
    }

  private:
    HGLOBAL block_;
};

/// What is there in a format, with what the system may have added at its end.
std::string bytesOf(UINT format) {
    const OpenClipboardGuard clipboard;
    const HANDLE block = clipboard ? GetClipboardData(format) : nullptr;
    const auto* const held = block ? static_cast<const char*>(GlobalLock(block)) : nullptr;
    if (!held) return {};
    std::string result(held, GlobalSize(block));
    GlobalUnlock(block);
    return result;
}

/// Data begin with their length: the system rounds blocks up.
using Length = std::array<char, sizeof(std::uint32_t)>;

class WindowsClipboard final : public Clipboard {
  public:
    ErrorCode setText(const char* text) override { return set(text, 0, nullptr); }

    std::string text() override {
        std::string text = bytesOf(CF_TEXT);
        text.resize(strnlen(text.c_str(), text.size()));
        return text;
    }

    ErrorCode setData(const char* format, std::string_view bytes, const char* text) override {
        if (bytes.size() > MAXDWORD - sizeof(Length)) return ERROR_NOT_ENOUGH_MEMORY;
        Length length;
        base::store(length.data(), static_cast<std::uint32_t>(bytes.size()));
        Block block({length.data(), length.size()}, bytes);
        return block ? set(text, RegisterClipboardFormatA(format), &block)
                     : ERROR_NOT_ENOUGH_MEMORY;
    }

    std::string data(const char* format) override {
        const std::string held = bytesOf(RegisterClipboardFormatA(format));
        if (held.size() < sizeof(Length)) return {};
        const auto size = base::load<std::uint32_t>(held.data());
        return size <= held.size() - sizeof(Length) ? held.substr(sizeof(Length), size)
                                                    : std::string();
    }

  private:
    static ErrorCode set(const char* text, UINT format, Block* data) {
        const std::string_view bytes = text ? text : "";
        Block block(bytes, std::string_view("", 1));
        if (!block) return ERROR_NOT_ENOUGH_MEMORY;
        const OpenClipboardGuard clipboard;
        if (!clipboard || !EmptyClipboard()) return ERROR_ACCESS_DENIED;
        if ((!data || data->give(format)) && block.give(CF_TEXT)) return ERROR_SUCCESS;
        EmptyClipboard();
        return ERROR_ACCESS_DENIED;
    }
};

}  // namespace

Clipboard& hostClipboard() {
    static WindowsClipboard clipboard;
    return clipboard;
}

}  // namespace toolbox::platform
