// What has no effect is done again after a while, as a user would.
#include "workbench_window.h"

#include <commctrl.h>

#include <algorithm>
#include <iostream>
#include <sstream>

#include "hands.h"
#include "screen.h"

namespace session {
namespace {

/// After which a user does again what had no effect. A window that has just become the active one
/// may take the keyboard's state over, in which a key that is being held is not.
constexpr std::chrono::seconds kAWhile{2};

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

void say(const std::string& line) {
    std::cout << line << std::endl;
}

std::size_t CopiedTable::column(const std::string& header) const {
    const auto isIt = [&](const std::string& text) {
        return text == header || text.starts_with(header + " [");
    };
    if (!lines.empty()) {
        const auto found = std::ranges::find_if(lines.front(), isIt);
        if (found != lines.front().end())
            return static_cast<std::size_t>(found - lines.front().begin());
    }
    throw Failure("the table has no column " + header);
}

const std::string& CopiedTable::cell(const std::string& header) const {
    const std::size_t index = column(header);
    if (lines.size() < 2 || index >= lines[1].size()) throw Failure("the table has no row");
    return lines[1][index];
}

WorkbenchWindow::WorkbenchWindow(const std::string& program, const std::string& settings,
                                 const std::string& more)
    : program_('"' + program + "\" --settings \"" + settings + '"' + more) {
    frame_ = waitFor("the frame", [&] {
        if (!program_.isRunning()) throw Failure("the workbench has ended at once");
        return program_.find("MDIFrame");
    });
    for (const HWND child : childrenOf(frame_)) {
        if (classOf(child) == "MDIClient") client_ = child;
        if (classOf(child) == "Static" && GetParent(child) == frame_) pane_ = child;
    }
    if (!client_ || !pane_) throw Failure("the frame has no documents' area or no line of hints");
    waitUntilReady();
    waitFor("the frame's title", [&] { return !textOf(frame_).empty(); });
    waitFor("a hint", [&] { return !hint().empty(); });
}

void WorkbenchWindow::waitUntilReady() const {
    const auto isReady = [&] {
        const HWND focused = program_.focus();
        return IsWindowEnabled(frame_) && focused && GetAncestor(focused, GA_ROOT) == frame_ &&
               !program_.isInMenu();
    };
    waitFor("the frame to take the keys", [&] {
        if (isSoon(isReady, kAWhile) || !IsWindow(frame_)) return true;
        // A window manager gives the keys to what has just appeared, the palette say.
        if (IsWindowEnabled(frame_)) click(middleOf(areaOf(pane_)));
        return false;
    });
}

void WorkbenchWindow::waitForHint(const std::string& beginning) const {
    waitFor("the hint \"" + beginning + "...\"", [&] { return hint().starts_with(beginning); });
}

HWND WorkbenchWindow::document(const std::string& title) const {
    for (HWND child = GetWindow(client_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (isShown(child) && textOf(child) == title) return child;
    return nullptr;
}

std::vector<std::string> WorkbenchWindow::documents() const {
    std::vector<std::string> titles;
    for (HWND child = GetWindow(client_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (isShown(child)) titles.push_back(textOf(child));
    return titles;
}

HWND WorkbenchWindow::waitForDocument(const std::string& title) const {
    return waitFor("the window \"" + title + '"', [&] { return document(title); });
}

void WorkbenchWindow::waitForNoDocument() const {
    waitFor("every document to be closed", [&] { return documents().empty(); });
}

void WorkbenchWindow::choose(char menu, char item) const {
    waitUntilReady();
    // Not Alt with the letter: see above. What is still changing in the frame ends a menu, too.
    waitFor(std::string("the menu ") + menu, [&] {
        press(VK_F10);
        if (!isSoon([&] { return program_.isInMenu(); }, kAWhile)) return false;
        press(static_cast<WORD>(menu));
        if (isSoon([&] { return program_.find("#32768") != nullptr; }, kAWhile)) return true;
        if (program_.isInMenu()) press(VK_ESCAPE);
        return false;
    });
    press(static_cast<WORD>(item));
    waitFor("the end of the menu",
            [&] { return !program_.isInMenu() && !program_.find("#32768"); });
}

void WorkbenchWindow::command(WORD key) const {
    waitUntilReady();
    press(key);
}

void WorkbenchWindow::commandUntil(const std::string& what, WORD key,
                                   const std::function<bool()>& isDone) const {
    waitFor(what, [&] {
        waitUntilReady();
        press(key, {VK_CONTROL});
        return isSoon(isDone, kAWhile);
    });
}

void WorkbenchWindow::enterMode(WORD digit, const std::string& beginning) const {
    commandUntil("the hint \"" + beginning + "...\"", digit,
                 [&] { return hint().starts_with(beginning); });
}

void WorkbenchWindow::activate(WORD key, HWND document) const {
    command(key);
    waitFor("\"" + textOf(document) + "\" in front",
            [&] { return GetWindow(client_, GW_CHILD) == document; });
}

CopiedTable WorkbenchWindow::copyTable(HWND list) const {
    commandUntil("every row to be selected", 'A', [&] {
        const LRESULT rows = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
        return SendMessageW(list, LVM_GETSELECTEDCOUNT, 0, 0) == rows;
    });
    emptyClipboard();
    commandUntil("the table in the clipboard", 'C', hasClipboardText);
    CopiedTable table;
    std::istringstream text(clipboardText());
    for (std::string line; std::getline(text, line);) {
        if (line.ends_with('\r')) line.pop_back();
        table.lines.emplace_back();
        std::istringstream cells(line + '\t');  // so that an empty last cell counts
        for (std::string cell; std::getline(cells, cell, '\t');)
            table.lines.back().push_back(trimmed(cell));
    }
    return table;
}

RECT WorkbenchWindow::headerItem(HWND table, std::size_t column) {
    const auto children = childrenOf(table);
    const auto header = std::ranges::find(children, "SysHeader32", classOf);
    if (header == children.end()) throw Failure("the table has no header");
    // Columns stand in their order; a list tells their widths across processes, unlike their
    // places.
    const auto width = [&](std::size_t index) {
        return static_cast<LONG>(SendMessageW(children.front(), LVM_GETCOLUMNWIDTH, index, 0));
    };
    RECT item = clientOf(*header);
    for (std::size_t i = 0; i < column; ++i) item.left += width(i);
    item.right = item.left + width(column);
    return item;
}

void WorkbenchWindow::answer(HWND dialog, int button) const {
    const std::string title = textOf(dialog);
    click(middleOf(areaOf(control(dialog, button))));
    program_.waitUntilGone("\"" + title + '"', dialog);
}

void WorkbenchWindow::quit() const {
    waitFor("the end of the program", [&] {
        if (program_.find("MDIFrame")) {
            waitUntilReady();
            press(VK_F4, {VK_MENU});
        }
        return isSoon([&] { return !program_.isRunning(); }, kAWhile);
    });
    if (const DWORD code = program_.exitCode())
        throw Failure("the workbench has ended with " + std::to_string(code));
}

}  // namespace session
