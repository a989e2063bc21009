// Small operations on files and folders by name.
#include <cstring>
#include <string>

#include "base/lz_expand.h"
#include "file/file_system.h"
#include "toolbox/files.h"

namespace base = toolbox::base;
using toolbox::files;

namespace {

void copyText(char* out, std::string_view text) {
    text.copy(out, text.size());
    out[text.size()] = '\0';
}

}  // namespace

unsigned long GetDiskFree(char drive) {
    const char root[] = {drive, ':', '\\', '\0'};
    std::uint32_t sectors = 0;
    std::uint32_t bytes = 0;
    std::uint32_t clusters = 0;
    if (files().diskFree(root, sectors, bytes, clusters) != ERROR_SUCCESS) return 0;
    return sectors * bytes * clusters;
}

int GetCurDir(char* out) {
    constexpr std::size_t kRoom = 260;
    const std::string folder = files().currentFolder();
    const bool fits = !folder.empty() && folder.size() < kRoom;
    copyText(out, fits ? folder : "");
    return fits;
}

int SelectDir(const char* dir, void* /*unused*/) {
    return files().setCurrentFolder(dir) == ERROR_SUCCESS;
}

void SepDirFile(const char* path, char* dir, char* file) {
    const std::string whole = path ? path : "";  // the parts may be written over the path itself
    const std::size_t separator = toolbox::lastSeparator(whole);
    const bool split = separator != std::string::npos;
    copyText(dir, split ? whole.substr(0, separator) : "");
    copyText(file, split ? whole.substr(separator + 1) : whole);
}

int ExistsFile(const char* name) {
    return APIFile::Exists(name);
}

RWCString FullFileName(const char* name) {
    std::string full;
    return files().fullName(name, full) == ERROR_SUCCESS ? full : std::string(name ? name : "");
}

int IsSameFile(const char* one, const char* other) {
    return files().isSameFile(one, other);
}

unsigned long GetFileSize(const char* pattern) {
    std::uint32_t sum = 0;
    for (const auto& file : files().find(pattern)) {
        const auto low = static_cast<std::uint32_t>(file.size);
        const auto high = static_cast<std::uint32_t>(file.size >> 32);
        sum += low + high;
    }
    return sum;
}

long FileCopy(const char* from, const char* to) {
    if (files().exists(to)) return 0;
    const std::int32_t copied = files().expandCopy(from, to);
    if (copied < 0) {
        // What was begun goes; when either file could not be opened there is nothing of ours.
        if (copied != base::kLzBadInput && copied != base::kLzBadOutput) files().remove(to);
        return copied;
    }
    std::uint32_t attributes = 0;
    if (files().attributes(from, attributes) == ERROR_SUCCESS)
        files().setAttributes(to, attributes);
    return copied;
}

void KillFile(const char* pattern) {
    toolbox::platform::UserPrompt& prompt = *toolbox::platform::current().prompt;
    prompt.showWaitCursor(true);
    for (const auto& file : files().find(pattern)) files().remove(file.name.c_str());
    prompt.showWaitCursor(false);
}
