// Missing folders are made from the drive down; whether files can be made there is tried out.
#include "settings/settings.h"

#include <windows.h>

#include <string>

#include "toolbox/files.h"

namespace {

void makeFolders(const std::string& full) {
    constexpr std::size_t kBehindDrive = 3;
    for (std::size_t end = full.find('\\', kBehindDrive); end != std::string::npos;
         end = full.find('\\', end + 1))
        CreateDirectoryA(full.substr(0, end).c_str(), nullptr);
    CreateDirectoryA(full.c_str(), nullptr);
}

/// Attributes and rights do not tell: the system decides when a file is made.
bool canMakeFileIn(const std::string& folder) {
    const std::string name = folder + "\\try-" + std::to_string(GetCurrentProcessId()) + ".tmp";
    const HANDLE file = CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

}  // namespace

Settings settingsIn(const CString& folder) {
    std::string place = FullFileName(folder).str();
    while (place.ends_with('\\')) place.pop_back();
    makeFolders(place);
    return {place + "\\workbench.ini", place + "\\workbench.log", canMakeFileIn(place)};
}
