// Keeps the texts of message boxes instead of showing them.
#pragma once

#include <string>
#include <vector>

#include "toolbox/platform.h"

/// In use from its construction to its end. Every box is answered with `answer`.
class PromptLog final : public toolbox::platform::UserPrompt {
  public:
    int messageBox(HWND, const char* text, const char* caption, unsigned int flags) override {
        shown.emplace_back(text);
        lastCaption = caption;
        lastFlags = flags;
        return answer;
    }
    void fatalExit(const char* text) override { shown.emplace_back(text); }
    bool isWindow(HWND) override { return false; }
    void showWaitCursor(bool wait) override { cursor += wait ? "wait " : "arrow "; }

    std::vector<std::string> shown;
    std::string lastCaption;
    unsigned int lastFlags = 0;
    std::string cursor;  ///< the cursors shown, in order
    int answer = IDOK;

  private:
    toolbox::platform::Replaced<toolbox::platform::UserPrompt> guard_{
        toolbox::platform::current().prompt, *this};
};
