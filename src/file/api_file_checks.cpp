#include <string>

#include "file/current_files.h"
#include "file/file_names.h"
#include "platform/scoped_file.h"
#include "toolbox/files.h"

using toolbox::files;
using toolbox::platform::ErrorCode;

namespace {

/// True when a new file can be made in a folder, given with its separator.
bool canCreateIn(const std::string& folder) {
    const std::string probe = folder + "tmp123yz.$$$";
    toolbox::platform::ScopedFile file(files(), probe.c_str(), GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS);
    if (!file.valid()) return false;
    file.close();
    files().remove(probe.c_str());
    return true;
}

/// Removes a file of our own, read-only or not, if it is there.
void discard(const char* name) {
    if (!files().exists(name)) return;
    files().setAttributes(name, FILE_ATTRIBUTE_NORMAL);
    files().remove(name);
}

}  // namespace

int APIFile::Exists(const char* name) {
    return files().exists(name);
}

int APIFile::isReadOnly(const char* name) {
    const std::string path = name ? name : "";
    if (files().exists(path.c_str()) && !files().isReadableAndWritable(path.c_str())) return 1;
    const std::size_t separator = toolbox::lastSeparator(path);
    const std::string folder =
        separator == std::string::npos ? path + '\\' : path.substr(0, separator + 1);
    std::uint32_t attributes = 0;
    if (files().attributes(folder.c_str(), attributes) == ERROR_SUCCESS &&
        !files().isReadableAndWritable(folder.c_str()))
        return 1;
    return !canCreateIn(folder);
}

unsigned long APIFile::createBak(const char* name) {
    const RWCString backup = backupName(name);
    if (backup == name) return ERROR_SHARING_VIOLATION;  // a file is no copy of itself
    const RWCString beside = backup + ".~new";
    discard(beside);
    ErrorCode error = files().copy(name, beside, false);
    if (error == ERROR_SUCCESS) error = files().replace(beside, backup);
    if (error != ERROR_SUCCESS) discard(beside);
    return error;
}

RWCString APIFile::backupName(const char* name) {
    std::string backup = name ? name : "";
    const std::size_t dot = backup.rfind('.');
    if (dot != std::string::npos && dot + 4 >= backup.size()) backup.resize(dot);
    return backup + ".bak";
}
