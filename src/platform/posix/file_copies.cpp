// Copying and expanding files on top of the other calls of a file system.
#include "platform/posix/file_copies.h"

#include <sys/stat.h>

#include <cerrno>
#include <vector>

#include "base/lz_expand.h"
#include "platform/posix/file_names.h"
#include "platform/scoped_file.h"

namespace toolbox::platform::posix {

namespace {

ErrorCode copyBytes(ScopedFile& from, ScopedFile& to) {
    std::vector<char> buffer(256 * 1024);
    for (;;) {
        std::uint32_t got = 0;
        if (const ErrorCode error = from.read(buffer.data(), buffer.size(), got)) return error;
        if (got == 0) return ERROR_SUCCESS;
        if (const ErrorCode error = to.write(buffer.data(), got)) return error;
    }
}

/// A device may have no end.
ErrorCode factsOfRegular(const ScopedFile& file, struct stat& facts) {
    if (::fstat(static_cast<int>(file.handle()), &facts) != 0) return codeOf(errno);
    return S_ISREG(facts.st_mode) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

}  // namespace

ErrorCode copyFile(FileSystem& files, const char* from, const char* to, bool failIfExists) {
    ScopedFile source(files, from, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    if (!source.valid()) return source.error();
    struct stat facts {};
    if (const ErrorCode error = factsOfRegular(source, facts)) return error;
    // The source is locked by now, so that a copy onto itself is refused here.
    ScopedFile target(files, to, GENERIC_WRITE, 0, failIfExists ? CREATE_NEW : CREATE_ALWAYS);
    if (!target.valid()) return target.error();
    if (const ErrorCode error = copyBytes(source, target)) return error;

    const timespec times[] = {facts.st_atim, facts.st_mtim};
    // A file system that keeps neither does not make the copy fail.
    if (::fchmod(static_cast<int>(target.handle()), facts.st_mode & 0777) != 0) errno = 0;
    if (::futimens(static_cast<int>(target.handle()), times) != 0) errno = 0;
    return target.close();
}

std::int32_t expandFile(FileSystem& files, const char* from, const char* to) {
    ScopedFile source(files, from, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    struct stat facts {};
    if (!source.valid() || factsOfRegular(source, facts) != ERROR_SUCCESS) return base::kLzBadInput;
    ScopedFile target(files, to, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!target.valid()) return base::kLzBadOutput;

    const auto read = [&](std::span<std::byte> room) -> std::ptrdiff_t {
        std::uint32_t got = 0;
        const ErrorCode error = source.read(room.data(), room.size(), got);
        return error == ERROR_SUCCESS ? static_cast<std::ptrdiff_t>(got) : -1;
    };
    const auto write = [&](std::span<const std::byte> bytes) {
        return target.write(bytes.data(), bytes.size()) == ERROR_SUCCESS;
    };
    const std::int32_t result = base::expandLz(read, write);
    return target.close() == ERROR_SUCCESS ? result : base::kLzWrite;
}

}  // namespace toolbox::platform::posix
