#include <gtest/gtest.h>

#if defined(_WIN32)
#include <future>
#include <string>
#include <thread>
#endif

#include "toolbox/platform.h"

namespace {

TEST(Clipboard, HoldsTheTextSetLast) {
    toolbox::platform::Clipboard& clipboard = *toolbox::platform::current().clipboard;
    for (const char* text : {"$VOLT$", "", "caf\xE9 \x80"}) {
        EXPECT_EQ(clipboard.setText(text), 0u);
        EXPECT_EQ(clipboard.text(), text);
    }
}

#if defined(_WIN32)
/// The clipboard as another program with a window has it.
class OtherProgram {
  public:
    OtherProgram()
        : window_(
              CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        EXPECT_TRUE(OpenClipboard(window_));
    }
    ~OtherProgram() {
        CloseClipboard();
        DestroyWindow(window_);
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    template <class Char>
    std::basic_string<Char> get(UINT format) {
        const HANDLE block = GetClipboardData(format);
        if (!block) return {};
        std::basic_string<Char> text = static_cast<const Char*>(GlobalLock(block));
        GlobalUnlock(block);
        return text;
    }

  private:
    HWND window_;
};

TEST(Clipboard, GivesItsTextToOtherProgramsAndIsClosed) {
    EXPECT_EQ(toolbox::platform::current().clipboard->setText("$LONG$ caf\351"), 0u);
    std::string bytes;
    std::wstring wide;
    std::thread([&] {
        OtherProgram program;
        bytes = program.get<char>(CF_TEXT);
        wide = program.get<wchar_t>(CF_UNICODETEXT);
    }).join();
    EXPECT_EQ(bytes, "$LONG$ caf\351");
    EXPECT_EQ(wide, L"$LONG$ caf\u00E9");
}

TEST(Clipboard, IsLeftAloneWhileAnotherHoldsIt) {
    toolbox::platform::Clipboard& clipboard = *toolbox::platform::current().clipboard;
    EXPECT_EQ(clipboard.setText("before"), 0u);
    std::promise<void> held;
    std::promise<void> tried;
    std::thread holder([&] {
        const OtherProgram program;
        held.set_value();
        tried.get_future().wait();
    });
    held.get_future().wait();
    EXPECT_EQ(clipboard.setText("after"), ERROR_ACCESS_DENIED);
    tried.set_value();
    holder.join();
    EXPECT_EQ(clipboard.text(), "before");
}
#endif

}  // namespace
