// The workbench as its user sees it: its windows by their titles, its commands by their keys.
#pragma once

#include <string>
#include <vector>

#include "other_windows.h"

namespace session {

/// Prints a line of what happens.
void say(const std::string& line);

/// A table as the program copies it: the first line has the headers.
struct CopiedTable {
    std::vector<std::vector<std::string>> lines;

    /// The column with this header, not counting the units after it, and the first row's cell in
    /// it. Both throw when there is none.
    [[nodiscard]] std::size_t column(const std::string& header) const;
    [[nodiscard]] const std::string& cell(const std::string& header) const;

    bool operator==(const CopiedTable&) const = default;
};

class WorkbenchWindow {
  public:
    WorkbenchWindow(const std::string& program, const std::string& settings,
                    const std::string& more = {});

    [[nodiscard]] const Program& program() const { return program_; }
    [[nodiscard]] HWND frame() const { return frame_; }
    [[nodiscard]] std::string hint() const { return textOf(pane_); }
    /// Waits until the line above the documents begins with a text.
    void waitForHint(const std::string& beginning) const;

    /// The document window whose title is that, or null.
    [[nodiscard]] HWND document(const std::string& title) const;
    [[nodiscard]] std::vector<std::string> documents() const;
    [[nodiscard]] HWND waitForDocument(const std::string& title) const;
    void waitForNoDocument() const;

    /// Chooses from the menu bar by the keyboard: the letter of the menu, then that of the item.
    void choose(char menu, char item) const;
    /// Presses a key that stands for a command.
    void command(WORD key) const;
    /// Enters a drawing mode by Ctrl and its digit; the hint then begins so.
    void enterMode(WORD digit, const std::string& hint) const;
    /// Brings a document window to the front by a command of its own.
    void activate(WORD key, HWND document) const;

    /// All of a result table, by the commands for it; its window is in front.
    [[nodiscard]] CopiedTable copyTable(HWND list) const;
    /// The header of a column of a result table, on the screen.
    [[nodiscard]] static RECT headerItem(HWND table, std::size_t column);
    /// Answers a message box or dialog by one of its buttons, with the mouse.
    void answer(HWND dialog, int button) const;
    /// Ends the program by Alt and F4; nothing is left to save.
    void quit() const;

  private:
    void waitUntilReady() const;
    /// Presses Ctrl and a key.
    void commandUntil(const std::string& what, WORD key, const std::function<bool()>& isDone) const;

    Program program_;
    HWND frame_ = nullptr;
    HWND client_ = nullptr;
    HWND pane_ = nullptr;
};

}  // namespace session
