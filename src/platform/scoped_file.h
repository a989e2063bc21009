// A file opened through the seam, closed at the end of the scope.
#pragma once

#include <utility>

#include "toolbox/platform.h"

namespace toolbox::platform {

class ScopedFile {
  public:
    ScopedFile(FileSystem& files, const char* name, std::uint32_t access, std::uint32_t share,
               std::uint32_t disposition)
        : files_(files) {
        error_ = files_.open(name, access, share, disposition, handle_);
        if (error_ != ERROR_SUCCESS) handle_ = kNoFile;
    }
    ~ScopedFile() { close(); }
    ScopedFile(const ScopedFile&) = delete;
    ScopedFile& operator=(const ScopedFile&) = delete;

    /// Why it could not be opened; 0 when it was.
    [[nodiscard]] ErrorCode error() const { return error_; }
    [[nodiscard]] bool valid() const { return handle_ != kNoFile; }
    [[nodiscard]] FileHandle handle() const { return handle_; }

    ErrorCode read(void* buffer, std::size_t n, std::uint32_t& got) {
        return files_.read(handle_, buffer, static_cast<std::uint32_t>(n), got);
    }
    /// Writes everything or fails.
    ErrorCode write(const void* buffer, std::size_t n) {
        std::uint32_t written = 0;
        const ErrorCode error =
            files_.write(handle_, buffer, static_cast<std::uint32_t>(n), written);
        return error == ERROR_SUCCESS && written < n ? ErrorCode{ERROR_DISK_FULL} : error;
    }
    /// For writers, who want to know whether closing failed.
    ErrorCode close() {
        const FileHandle open = std::exchange(handle_, kNoFile);
        return open == kNoFile ? ErrorCode{ERROR_SUCCESS} : files_.close(open);
    }

  private:
    FileSystem& files_;
    FileHandle handle_ = kNoFile;
    ErrorCode error_ = ERROR_SUCCESS;
};

}  // namespace toolbox::platform
