// Reading a file whole, and replacing it under a lock that every writer takes.
#include "platform/posix/shared_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/posix/file_facts.h"
#include "platform/posix/new_files.h"

namespace toolbox::platform::posix {
namespace {

constexpr int kNonBlocking = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;  // a FIFO must not stop us
bool sameTime(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/// File times advance in steps of some milliseconds: two changes within one step look the same, so
/// what was read that soon after a change may already be out of date.
bool isSettled(const timespec& changed) {
    constexpr long kStep = 20;  // milliseconds
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const auto seconds = now.tv_sec - changed.tv_sec;
    if (seconds < 0 || seconds > 1) return seconds > 1;
    return static_cast<long>(seconds) * 1000 + (now.tv_nsec - changed.tv_nsec) / 1'000'000 > kStep;
}

/// Writes all bytes; an errno or 0.
int writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        if (written == 0) return ENOSPC;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

/// Creates the file that will take the place of `replaced`: its descriptor, or -1 with errno. What
/// a killed process left under the usual name is removed; a name that cannot be had is passed by.
int createBeside(const std::string& replaced, std::string& fresh) {
    constexpr int kNames = 100;
    const std::string folder(folderOf(replaced));
    const std::string usual = folder + "." + replaced.substr(folder.size()) + ".saving";
    ::unlink(usual.c_str());
    for (int i = 0;; ++i) {
        fresh = i == 0 ? usual : usual + std::to_string(i);
        const int file = createLike(fresh, replaced);
        if (file >= 0 || errno != EEXIST || i == kNames) return file;
    }
}

}  // namespace

bool FileStamp::stillHolds(const FileStamp& now) const {
    if (size < 0 || now.size < 0) return size < 0 && now.size < 0;
    return settled && device == now.device && inode == now.inode && size == now.size &&
           sameTime(modified, now.modified) && sameTime(changed, now.changed);
}

FileStamp stampOf(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return {};
    return {facts.st_dev,  facts.st_ino,  facts.st_size,
            facts.st_mtim, facts.st_ctim, isSettled(facts.st_ctim)};
}

ErrorCode readWhole(const std::string& path, std::string& bytes) {
    bytes.clear();
    const int file = ::open(path.c_str(), O_RDONLY | kNonBlocking);
    if (file < 0) return codeOfName(errno, path);
    struct stat facts {};
    ErrorCode result = ERROR_SUCCESS;
    if (::fstat(file, &facts) != 0 || !S_ISREG(facts.st_mode))
        result = ERROR_ACCESS_DENIED;
    else if (static_cast<std::uint64_t>(facts.st_size) > kMostSharedBytes)
        result = ERROR_FILE_TOO_LARGE;
    else
        bytes.reserve(static_cast<std::size_t>(facts.st_size) + 1);
    char buffer[1 << 16];
    while (result == ERROR_SUCCESS) {
        const ssize_t got = ::read(file, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) result = codeOf(errno, ERROR_READ_FAULT);
        if (got <= 0) break;
        bytes.append(buffer, static_cast<std::size_t>(got));
        if (bytes.size() > kMostSharedBytes) result = ERROR_FILE_TOO_LARGE;  // it grew meanwhile
    }
    ::close(file);
    if (result != ERROR_SUCCESS) bytes.clear();
    return result;
}

ErrorCode ReplaceLock::acquire(const std::string& path, bool create) {
    release();
    // A replacement must not cut a link.
    (void)followLinks(path, path_);
    for (;;) {
        if (const ErrorCode error = openAndLock(create); error != ERROR_SUCCESS) {
            release();
            return error;
        }
        struct stat named {};
        if (::stat(path_.c_str(), &named) == 0 && named.st_ino == facts_.st_ino &&
            named.st_dev == facts_.st_dev)
            return ERROR_SUCCESS;
        ::close(file_);  // replaced while this one waited for the lock
        file_ = -1;
        created_ = false;
    }
}

ErrorCode ReplaceLock::openAndLock(bool create) {
    constexpr mode_t kDefaultMode = 0666;
    file_ = ::open(path_.c_str(), O_RDWR | kNonBlocking);
    if (file_ < 0 && errno == ENOENT && create) {
        file_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | kNonBlocking, kDefaultMode);
        created_ = file_ >= 0;
        // Somebody else made it meanwhile: that one will do.
        if (file_ < 0 && errno == EEXIST) file_ = ::open(path_.c_str(), O_RDWR | kNonBlocking);
    }
    if (file_ < 0) return codeOfName(errno, path_);
    if (::fstat(file_, &facts_) != 0 || !S_ISREG(facts_.st_mode) || isReadOnly(facts_))
        return ERROR_ACCESS_DENIED;
    constexpr timespec kPause{0, 1'000'000};
    constexpr int kPatience = 5000;  // pauses
    for (int tries = 0; ::flock(file_, LOCK_EX | LOCK_NB) != 0; ++tries) {
        const int error = errno;
        if ((error != EWOULDBLOCK && error != EINTR) || tries == kPatience) {
            created_ = false;  // whoever has the lock may have filled it
            return codeOf(error, ERROR_WRITE_FAULT);
        }
        ::nanosleep(&kPause, nullptr);
    }
    return ERROR_SUCCESS;
}

ErrorCode ReplaceLock::replace(std::string_view bytes) {
    std::string fresh;
    const int file = createBeside(path_, fresh);
    if (file < 0) return codeOf(errno, ERROR_WRITE_FAULT);
    int error = writeAll(file, bytes);
    // Without this a loss of power can leave the new name without its bytes.
    if (error == 0 && ::fdatasync(file) != 0) error = errno;
    if (::close(file) != 0 && error == 0) error = errno;
    if (error == 0 && ::rename(fresh.c_str(), path_.c_str()) != 0) error = errno;
    if (error != 0) {
        ::unlink(fresh.c_str());
        return codeOf(error, ERROR_WRITE_FAULT);
    }
    created_ = false;
    (void)flushFolderOf(path_);  // the file is whole, old or new, whatever comes of it
    return ERROR_SUCCESS;
}

void ReplaceLock::release() {
    if (file_ < 0) return;
    if (created_) ::unlink(path_.c_str());
    ::close(file_);
    file_ = -1;
    created_ = false;
}

}  // namespace toolbox::platform::posix
