// Answers message boxes and dialogs of this thread while a test waits in them (Windows only).
//
//     BoxAnswerer answerer({IDYES});
//     EXPECT_EQ(ShowMsgBox("Title", "Text", MB_YESNO), IDYES);
//     EXPECT_EQ(answerer.seen().at(0).text, "Text");
//
// Boxes are read and answered in the order in which they open, nested ones too. One more than there
// are answers fails the test and is closed, so that no test hangs.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace toolbox::testing {

/// What a box showed.
struct SeenBox {
    HWND owner = nullptr;
    std::string caption;
    std::string text;
    std::vector<int> buttons;  ///< identifiers of the visible buttons, in their order
};

class BoxAnswerer {
  public:
    explicit BoxAnswerer(std::vector<int> answers);
    /// Fails the test when fewer boxes opened than there were answers.
    ~BoxAnswerer();
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    [[nodiscard]] const std::vector<SeenBox>& seen() const { return seen_; }

  private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD);
    void look();
    void answer(HWND box);

    std::vector<int> answers_;
    std::vector<SeenBox> seen_;
    std::vector<HWND> handled_;
    UINT_PTR timer_;
};

}  // namespace toolbox::testing
