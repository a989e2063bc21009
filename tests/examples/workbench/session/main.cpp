// Drives the workbench from outside, with mouse and keyboard:
//
//     workbench_session [--short] [--patient] WORKBENCH FOLDER
//
// Everything that is written goes to FOLDER, which is made anew. Prints what it did, a line each;
// ends with 0. When something is not as it should be it tells what it saw, leaves a picture of the
// screen and ends with 1. Takes the mouse and the keyboard while it runs.
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>

#include "other_windows.h"
#include "screen.h"
#include "story.h"

namespace {

std::optional<session::Plan> parse(int count, char** words) {
    session::Plan plan;
    int i = 1;
    for (; i < count && !std::strncmp(words[i], "--", 2); ++i) {
        if (!std::strcmp(words[i], "--short"))
            plan.isShort = true;
        else if (!std::strcmp(words[i], "--patient"))
            plan.isPatient = true;
        else
            return std::nullopt;
    }
    if (count - i != 2) return std::nullopt;
    // Full names, as a file dialog shows them.
    const auto fullName = [](const char* name) {
        return session::utf8(std::filesystem::absolute(name).make_preferred().wstring());
    };
    plan.program = fullName(words[i]);
    plan.folder = fullName(words[i + 1]);
    return plan;
}

}  // namespace

int main(int count, char** words) {
    const std::optional<session::Plan> plan = parse(count, words);
    if (!plan) {
        std::cerr << "usage: workbench_session [--short] [--patient] WORKBENCH FOLDER\n";
        return 2;
    }
    session::Story story(*plan);
    try {
        const std::filesystem::path folder = session::wide(plan->folder);
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        story.tell();
        return 0;
    } catch (const std::exception& failure) {
        std::cout << "FAILED: " << failure.what() << "\n\nOn the screen:\n" << story.describe();
        session::savePicture(session::wholeScreen(), plan->folder + "\\failure.bmp");
        return 1;
    }
}
