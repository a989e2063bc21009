// The system's clipboard: CF_TEXT, CF_ENHMETAFILE, and formats that are registered by their name.
#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>

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

/// A movable block with the bytes of two texts, one after the other; null when there is no memory.
HGLOBAL blockWith(std::string_view first, std::string_view second) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, first.size() + second.size());
    if (!block) return nullptr;
    auto* const bytes = static_cast<char*>(GlobalLock(block));
    std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), bytes));
    GlobalUnlock(block);
    return block;
}

/// What the clipboard gets in one format; the program's until the clipboard takes it.
class Item {
  public:
    /// Null when it could not be made.
    Item(UINT format, HANDLE handle) : format_(format), handle_(handle) {}
    ~Item() {
        if (handle_ && format_ == CF_ENHMETAFILE)
            DeleteEnhMetaFile(static_cast<HENHMETAFILE>(handle_));
        else if (handle_)
            GlobalFree(handle_);
    }
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    [[nodiscard]] bool isMade() const { return handle_ != nullptr; }
    /// To the clipboard, which is open.
    [[nodiscard]] bool give() {
        if (!SetClipboardData(format_, handle_)) return false;
        handle_ = nullptr;
        return true;
    }

  private:
    UINT format_;
    HANDLE handle_;
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
    ErrorCode setText(const char* text) override {
        Item item(CF_TEXT, textBlock(text));
        return set({&item});
    }

    ErrorCode setPicture(std::string_view metafile) override {
        const auto* bytes = reinterpret_cast<const BYTE*>(metafile.data());
        Item item(CF_ENHMETAFILE, SetEnhMetaFileBits(static_cast<UINT>(metafile.size()), bytes));
        return set({&item});
    }

    std::string text() override {
        std::string text = bytesOf(CF_TEXT);
        text.resize(strnlen(text.c_str(), text.size()));
        return text;
    }

    ErrorCode setData(const char* format, std::string_view bytes, const char* text) override {
        if (bytes.size() > MAXDWORD - sizeof(Length)) return ERROR_NOT_ENOUGH_MEMORY;
        Length length;
        base::store(length.data(), static_cast<std::uint32_t>(bytes.size()));
        Item data(RegisterClipboardFormatA(format),
                  blockWith({length.data(), length.size()}, bytes));
        Item words(CF_TEXT, textBlock(text));
        return set({&data, &words});
    }

    std::string data(const char* format) override {
        const std::string held = bytesOf(RegisterClipboardFormatA(format));
        if (held.size() < sizeof(Length)) return {};
        const auto size = base::load<std::uint32_t>(held.data());
        return size <= held.size() - sizeof(Length) ? held.substr(sizeof(Length), size)
                                                    : std::string();
    }

  private:
    static HGLOBAL textBlock(const char* text) {
        return blockWith(text ? text : "", std::string_view("", 1));
    }

    /// All of them in place of what is there, or none.
    static ErrorCode set(std::initializer_list<Item*> items) {
        if (!std::ranges::all_of(items, &Item::isMade)) return ERROR_NOT_ENOUGH_MEMORY;
        const OpenClipboardGuard clipboard;
        if (!clipboard || !EmptyClipboard()) return ERROR_ACCESS_DENIED;
        if (std::ranges::all_of(items, &Item::give)) return ERROR_SUCCESS;
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
