// The user of the how-to page's program, who adds a note and closes the document as its system menu
// does:
//
//     notes_user PROGRAM FILE saved      the document goes; the frame is closed
//     notes_user PROGRAM FILE refused    FILE cannot be written: that is said, the document stays
//
// Ends with 0 when it was so. Mouse and keyboard are left alone.
#include <cstring>
#include <iostream>

#include "../examples/workbench/session/other_windows.h"

namespace {

using session::waitFor;

constexpr WPARAM kAdd = 3000;

/// Says OK to message boxes until one that has the text was answered.
void answerBoxes(const session::Program& notes, const char* text) {
    waitFor(std::string("the box with \"") + text + '"', [&] {
        const HWND box = notes.find("#32770");
        if (!box) return false;
        std::string found;
        for (const HWND child : session::childrenOf(box)) found += session::textOf(child);
        SendMessageA(box, WM_COMMAND, IDOK, 0);
        notes.waitUntilGone("the box", box);
        return found.find(text) != std::string::npos;
    });
}

void use(const std::string& program, const std::string& file, bool refused) {
    const session::Program notes('"' + program + "\" \"" + file + '"');
    const HWND frame = waitFor("the frame", [&] { return notes.find("MDIFrame"); });
    const HWND client = FindWindowExA(frame, nullptr, "MDIClient", nullptr);
    const HWND document = waitFor(
        "the document", [&] { return FindWindowExA(client, nullptr, "NotesDocument", nullptr); });
    SendMessageA(frame, WM_COMMAND, kAdd, 0);
    // Refused twice: a document that went in spite of the box shows no second one.
    for (int i = 0; refused && i < 2; ++i) {
        PostMessageA(document, WM_SYSCOMMAND, SC_CLOSE, 0);
        answerBoxes(notes, "cannot be written");
    }
    if (refused) return;
    PostMessageA(document, WM_SYSCOMMAND, SC_CLOSE, 0);
    waitFor("the end of the document", [&] { return !IsWindow(document); });
    PostMessageA(frame, WM_CLOSE, 0, 0);
    if (notes.exitCode() != 0) throw session::Failure("the program has failed");
}

}  // namespace

int main(int count, char** words) {
    if (count != 4) return 2;
    try {
        use(words[1], words[2], !std::strcmp(words[3], "refused"));
        return 0;
    } catch (const session::Failure& failure) {
        std::cout << failure.what() << '\n';
        return 1;
    }
}
