// What can be asked and done about a file by its name: whether it is there, may be written, and its
// backup.
#include <memory>
#include <string>

#include "file/file_system.h"
#include "file/replacement.h"
#include "platform/scoped_file.h"
#include "toolbox/files.h"

using toolbox::files;
using toolbox::platform::ErrorCode;
using toolbox::platform::ScopedFile;

namespace {

constexpr std::uint32_t kCopiedAtOnce = 256 * 1024;

/// True when a new file can be made in a folder, given with its separator. Takes another name while
/// there is a file, or a link, of the probe's.
bool canCreateIn(const std::string& folder) {
    constexpr int kTries = 100;
    std::string probe = folder + "tmp123yz.$$$";
    for (int tries = 0; tries < kTries; ++tries) {
        ScopedFile file(files(), probe.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                        CREATE_NEW);
        if (file.valid()) {
            file.close();
            files().remove(probe.c_str());
            return true;
        }
        if (file.error() != ERROR_FILE_EXISTS) return false;
        probe = folder + "tmp" + toolbox::digitsOfChance() + ".$$$";
    }
    return false;
}

ErrorCode copyBytes(ScopedFile& from, toolbox::SharedFile& to) {
    const auto buffer = std::make_unique_for_overwrite<char[]>(kCopiedAtOnce);
    for (;;) {
        std::uint32_t got = 0;
        std::uint32_t written = 0;
        if (const ErrorCode error = from.read(buffer.get(), kCopiedAtOnce, got)) return error;
        if (got == 0) return ERROR_SUCCESS;
        if (const ErrorCode error = to.write(buffer.get(), got, written)) return error;
        if (written < got) return ERROR_DISK_FULL;
    }
}

/// Puts a copy of a regular file in the place of `backup`.
ErrorCode replaceByCopy(const std::string& source, const std::string& backup) {
    constexpr std::chrono::milliseconds kPause{2};
    std::unique_ptr<ScopedFile> from;
    ErrorCode error = toolbox::patiently(kPause, [&] {
        from = std::make_unique<ScopedFile>(files(), source.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                            OPEN_EXISTING);
        return from->error();
    });
    toolbox::Replacement copy;
    if (error == ERROR_SUCCESS) error = copy.create(backup, source.c_str());
    if (error == ERROR_SUCCESS) error = copyBytes(*from, copy.file());
    if (error != ERROR_SUCCESS) return error;
    // A backup without its file's times and attributes is still one.
    (void)copy.file().takeFacts(from->handle());
    return copy.putInPlace();
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
    std::string source;
    const ErrorCode error = files().followLinks(name, source);
    return error == ERROR_SUCCESS ? replaceByCopy(source, backup.str()) : error;
}

RWCString APIFile::backupName(const char* name) {
    std::string backup = name ? name : "";
    const std::size_t dot = backup.rfind('.');
    if (dot != std::string::npos && dot + 4 >= backup.size()) backup.resize(dot);
    return backup + ".bak";
}
