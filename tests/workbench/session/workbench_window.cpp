#include "workbench_window.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "hands.h"
#include "screen.h"

namespace session {

namespace {

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

const std::string& CopiedTable::cell(std::size_t row, const std::string& header) const {
    const std::size_t index = column(header);
    if (row >= lines.size() || index >= lines[row].size())
        throw Failure("the table has no row " + std::to_string(row));
    return lines[row][index];
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
}

void WorkbenchWindow::waitUntilReady() const {
    waitFor("the frame to take the keys", [&] {
        const HWND focused = program_.focus();
        return IsWindowEnabled(frame_) && focused && GetAncestor(focused, GA_ROOT) == frame_ &&
               !program_.isInMenu();
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
    // Not Alt with the letter: a window that has just appeared may still take the keyboard's state
    // over, in which Alt is not held.
    waitFor("the menu bar", [&] {
        // Like a user presses it again when nothing happens.
        constexpr std::chrono::seconds kAWhile{2};
        press(VK_F10);
        try {
            return waitFor(
                "", [&] { return program_.isInMenu(); }, kAWhile);
        } catch (const Failure&) {
            return false;
        }
    });
    press(static_cast<WORD>(menu));
    waitFor(std::string("the menu ") + menu, [&] { return program_.find("#32768") != nullptr; });
    press(static_cast<WORD>(item));
    waitFor("the end of the menu",
            [&] { return !program_.isInMenu() && !program_.find("#32768"); });
}

void WorkbenchWindow::command(WORD key, std::initializer_list<WORD> held) const {
    waitUntilReady();
    press(key, held);
}

void WorkbenchWindow::activate(WORD key, HWND document) const {
    command(key);
    waitFor("\"" + textOf(document) + "\" in front",
            [&] { return GetWindow(client_, GW_CHILD) == document; });
}

CopiedTable WorkbenchWindow::copyTable() const {
    emptyClipboard();
    command('A', {VK_CONTROL});
    command('C', {VK_CONTROL});
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

RECT WorkbenchWindow::headerItem(HWND table, std::size_t column) const {
    const auto children = childrenOf(table);
    const auto header = std::ranges::find(children, "SysHeader32", classOf);
    if (header == children.end()) throw Failure("the table has no header");
    return program_.headerItem(*header, column);
}

void WorkbenchWindow::answer(HWND dialog, int button) const {
    const std::string title = textOf(dialog);
    click(control(dialog, button));
    program_.waitUntilGone("\"" + title + '"', dialog);
}

void WorkbenchWindow::quit() const {
    command(VK_F4, {VK_MENU});
    waitFor("the end of the program or its question", [&] {
        if (!program_.isRunning()) return true;
        const HWND box = program_.find("#32770");
        // Tool dialogs have no such button.
        if (box && GetDlgItem(box, IDNO)) answer(box, IDNO);
        return false;
    });
    if (const DWORD code = program_.exitCode())
        throw Failure("the workbench has ended with " + std::to_string(code));
}

}  // namespace session
