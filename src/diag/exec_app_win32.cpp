// Starting programs, and remembering where they were found.
#include <string>

#include "diag/browse_win32.h"
#include "toolbox/platform.h"
#include "toolbox/processes.h"

using namespace toolbox;

namespace {

enum Result : int { kStarted = 1, kNotStarted = 2, kNoProgram = 3 };

constexpr char kSection[] = "programs";

std::string inCapitals(const char* text) {
    std::string capitals = text;
    CharUpperBuffA(capitals.data(), static_cast<DWORD>(capitals.size()));
    return capitals;
}

/// Where the last part of a path begins, after its folders or its drive.
std::size_t nameStart(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/:");
    return separator == std::string::npos ? 0 : separator + 1;
}

/// Adds ".EXE" to a path (in capitals) without an extension; false when it has another one.
bool completeExtension(std::string& path) {
    const std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || dot < nameStart(path)) {
        path += ".EXE";
        return true;
    }
    return path.compare(dot, std::string::npos, ".EXE") == 0;
}

Result start(const std::string& path, char* commandLine, PROCESS_INFORMATION* info) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessA(path.c_str(), commandLine, nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE,
                        nullptr, nullptr, &startup, &started))
        return kNotStarted;
    if (info) {
        *info = started;
    } else {
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
    return kStarted;
}

/// Where the program was found an earlier time; empty when it was not.
std::string rememberedPath(const std::string& name) {
    char path[MAX_PATH] = "";
    GetProfileStringA(kSection, name.c_str(), "", path, sizeof path);
    return path;
}

bool wantsToBrowse(HWND owner, const char* program) {
    return platform::current().prompt->messageBox(
               owner, "The application could not be found. Do you want to browse for it?", program,
               MB_YESNO | MB_ICONQUESTION) == IDYES;
}

}  // namespace

int ExecApp(HWND owner, const char* program, char* commandLine, PROCESS_INFORMATION* info) {
    if (info) *info = {};
    if (!program || !*program) return kNotStarted;
    const std::string name = inCapitals(program);
    std::string path = name;
    if (!completeExtension(path)) return kNoProgram;
    if (start(path, commandLine, info) == kStarted) return kStarted;
    const std::string remembered = rememberedPath(name);
    if (!remembered.empty() && start(remembered, commandLine, info) == kStarted) return kStarted;
    if (!wantsToBrowse(owner, program)) return kNotStarted;
    const std::string chosen = diag::browseForProgram(owner, path.substr(nameStart(path)));
    if (chosen.empty()) return kNotStarted;
    WriteProfileStringA(kSection, name.c_str(), chosen.c_str());
    return start(chosen, commandLine, info);
}
