// Drives the workbench from outside, with mouse and keyboard:
//
//     workbench_session WORKBENCH FOLDER
//
// Everything that is written goes to FOLDER, which is made anew. Prints what it did, a line each;
// ends with 0. When something is not as it should be it tells what it saw, leaves a picture of the
// screen and ends with 1. Takes the mouse and the keyboard while it runs.
#include <filesystem>
#include <iostream>

#include "other_windows.h"
#include "screen.h"
#include "story.h"

int main(int count, char** words) {
    namespace fs = std::filesystem;
    if (count != 3) {
        std::cerr << "usage: workbench_session WORKBENCH FOLDER\n";
        return 2;
    }
    // Full names, as a file dialog shows them.
    const auto fullName = [](const char* name) {
        return session::utf8(fs::absolute(name).make_preferred().wstring());
    };
    const std::string folder = fullName(words[2]);
    session::Story story(fullName(words[1]), folder);
    try {
        fs::remove_all(session::wide(folder));
        fs::create_directories(session::wide(folder));
        story.tell();
        return 0;
    } catch (const std::exception& failure) {
        std::cout << "FAILED: " << failure.what() << "\n\nOn the screen:\n" << story.describe();
        session::savePicture(session::wholeScreen(), folder + "\\failure.bmp");
        return 1;
    }
}
