// Small text files that several processes read and replace as a whole.
//
// Readers take no lock: at every moment the name stands for a complete file. Writers take turns by
// a lock on the file itself; as a writer puts a new file in the old one's place, who gets the lock
// looks whether it still holds the file that the name stands for.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

#include "platform/posix/file_names.h"

namespace toolbox::platform::posix {

/// A file as it was when it was read.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;  ///< -1: there was no file
    timespec modified{};
    timespec changed{};
    bool settled = false;  ///< any later change shows in the times above

    /// True when the file is sure to hold the bytes that the stamp was taken with.
    [[nodiscard]] bool stillHolds(const FileStamp& now) const;
};

[[nodiscard]] FileStamp stampOf(const std::string& path);

/// A file with more bytes than this is not one of settings, and is refused: its lines would take
/// many times as much memory.
inline constexpr std::size_t kMostSharedBytes = 16 * 1024 * 1024;

/// Reads a regular file whole. A missing one is ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND, one
/// of more than kMostSharedBytes ERROR_FILE_TOO_LARGE; `bytes` is empty on failure.
[[nodiscard]] ErrorCode readWhole(const std::string& path, std::string& bytes);

/// The right to replace a file, held until the object dies.
class ReplaceLock {
  public:
    ReplaceLock() = default;
    ~ReplaceLock() { release(); }
    ReplaceLock(const ReplaceLock&) = delete;
    ReplaceLock& operator=(const ReplaceLock&) = delete;

    /// Waits a few seconds for other writers, then gives ERROR_SHARING_VIOLATION. With `create` a
    /// missing file is made, empty. Read-only files and what is not a file give
    /// ERROR_ACCESS_DENIED.
    [[nodiscard]] ErrorCode acquire(const std::string& path, bool create);

    /// Puts these bytes in the file's place, in one step. On failure the file is as it was.
    [[nodiscard]] ErrorCode replace(std::string_view bytes);

  private:
    [[nodiscard]] ErrorCode openAndLock(bool create);
    void release();

    std::string path_;
    int file_ = -1;
    struct stat facts_ {};
    bool created_ = false;  ///< by acquire(), and still empty
};

}  // namespace toolbox::platform::posix
