// Windows of another program, as a person at the screen finds them: by class, text and place.
// Texts are UTF-8 here, whatever the program works with.
//
// Nothing here waits for a fixed time. waitFor() asks again until there is an answer, and throws
// when that takes longer than anybody would wait.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace session {

/// Something did not come about; the message says what.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[nodiscard]] std::string utf8(const std::wstring& text);
[[nodiscard]] std::wstring wide(const std::string& text);

/// What the window shows: a title, an edit's contents. Empty when it does not answer.
[[nodiscard]] std::string textOf(HWND window);
[[nodiscard]] std::string classOf(HWND window);
[[nodiscard]] bool isShown(HWND window);
/// On the screen.
[[nodiscard]] RECT areaOf(HWND window);
[[nodiscard]] RECT clientOf(HWND window);
[[nodiscard]] POINT middleOf(const RECT& area);
/// Children of any depth, from front to back.
[[nodiscard]] std::vector<HWND> childrenOf(HWND window);
/// The control of a dialog. Throws when there is none.
[[nodiscard]] HWND control(HWND dialog, int id);

inline constexpr std::chrono::seconds kPatience{20};

/// Asks until the answer is true or not null, and returns it.
template <class Ask>
auto waitFor(const std::string& what, Ask ask, std::chrono::milliseconds patience = kPatience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        if (auto answer = ask()) return answer;
        if (std::chrono::steady_clock::now() > end) throw Failure("waited in vain: " + what);
        ::Sleep(10);
    }
}

/// A running program. One that still runs at the end is ended.
class Program {
  public:
    explicit Program(const std::string& commandLine);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Its visible windows on the desktop, topmost first.
    [[nodiscard]] std::vector<HWND> windows() const;
    /// The topmost of them that has the class and takes input, or null.
    [[nodiscard]] HWND find(const std::string& className) const;
    /// Waits for a dialog or message box in front of everything else.
    [[nodiscard]] HWND waitForDialog(const std::string& what) const;
    /// Waits until a window is gone.
    void waitUntilGone(const std::string& what, HWND window) const;

    /// The window that gets the keys; null while it is not one of this program.
    [[nodiscard]] HWND focus() const;
    [[nodiscard]] bool isRunning() const;
    /// Waits for its end.
    [[nodiscard]] DWORD exitCode() const;

  private:
    PROCESS_INFORMATION process_{};
};

}  // namespace session
