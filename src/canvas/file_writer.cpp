// A file is whole or not there.
#include "canvas/file_writer.h"

#include <algorithm>

#include "canvas/sentences.h"
#include "file/file_system.h"
#include "file/replacement.h"

namespace toolbox::canvas {
namespace {

platform::ErrorCode createBeside(const char* fileName, Replacement& fresh) {
    std::string target;
    platform::ErrorCode error = ERROR_PATH_NOT_FOUND;
    if (fileName && *fileName) error = files().followLinks(fileName, target);
    const bool isThere = error == ERROR_SUCCESS;
    if (isThere && isReadOnlyFile(target)) return ERROR_ACCESS_DENIED;
    if (!isThere && error != ERROR_FILE_NOT_FOUND) return error;
    return fresh.create(target, isThere ? target.c_str() : nullptr);
}

platform::ErrorCode writeAll(SharedFile& file, std::string_view bytes) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    while (!bytes.empty()) {
        const auto n = static_cast<std::uint32_t>(std::min(bytes.size(), kPiece));
        std::uint32_t written = 0;
        const platform::ErrorCode error = file.write(bytes.data(), n, written);
        if (error != ERROR_SUCCESS) return error;
        if (written < n) return ERROR_DISK_FULL;
        bytes.remove_prefix(n);
    }
    return file.flush();
}

}  // namespace

int writeWhole(const char* fileName, std::string_view bytes, CString* why) {
    Replacement fresh;
    platform::ErrorCode error = createBeside(fileName, fresh);
    if (error == ERROR_SUCCESS) error = writeAll(fresh.file(), bytes);
    if (error == ERROR_SUCCESS) error = fresh.putInPlace();
    if (error != ERROR_SUCCESS) {
        if (why) *why = reasonOf(error);
        return 0;
    }
    // The file is in place whatever this says.
    (void)files().flushFolderOf(fresh.target().c_str());
    return 1;
}

}  // namespace toolbox::canvas
