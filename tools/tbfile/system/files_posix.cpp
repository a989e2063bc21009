// Files by POSIX: new ones are exclusive and private until they take over the access of their
// input.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "system/files.h"
#include "terminal/failure.h"
#include "terminal/terminal.h"

namespace tbfile {
namespace {

constexpr std::size_t kMostPerCall = 1u << 30;
/// What is copied inside the system at once: between two pieces the user may end it.
constexpr std::uint64_t kMostInside = 8u << 20;

int descriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

[[noreturn]] void fail(Text text, const Path& path, int code = errno) {
    throw Failure(text, {nameOf(path), reasonOf(code)});
}

template <class Call>
ssize_t retried(Call call) {
    ssize_t result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// How many bytes the system itself copied between these two; 0 when it cannot.
std::uint64_t copyInside(int from, std::uint64_t offset, int to, std::uint64_t n) {
#if defined(__linux__)
    auto at = static_cast<off_t>(offset);
    const ssize_t moved = retried([&] {
        return ::copy_file_range(from, &at, to, nullptr,
                                 static_cast<std::size_t>(std::min(n, kMostInside)), 0);
    });
    return moved > 0 ? static_cast<std::uint64_t>(moved) : 0;
#else
    static_cast<void>(from), static_cast<void>(offset), static_cast<void>(to);
    return std::min<std::uint64_t>(n, 0);
#endif
}

Access accessIn(const struct stat& facts) {
    return {.mode = facts.st_mode & 0777u, .group = facts.st_gid};
}

/// For a file of another group, whose members may no more than all others.
unsigned withoutGroup(unsigned mode) {
    return (mode & ~070u) | ((mode & 07u) << 3 & mode);
}

/// What a file system without groups or permissions refuses leaves the file private.
void giveAccess(int handle, const Access& access, unsigned owner) {
    struct stat made {};
    if (::fstat(handle, &made) != 0) return;
    const bool inGroup =
        made.st_gid == access.group || ::fchown(handle, static_cast<uid_t>(-1), access.group) == 0;
    const unsigned mode = inGroup ? access.mode : withoutGroup(access.mode);
    static_cast<void>(::fchmod(handle, mode | owner));
}

}  // namespace

void Access::narrow(const Access& other) {
    mode &= other.group == group ? other.mode : withoutGroup(other.mode);
}

InputFile::InputFile(Path path, Links links) : path_(std::move(path)) {
    const int flags =
        O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (links == Links::refuse ? O_NOFOLLOW : 0);
    const auto opened = retried([&] { return ::open(path_.c_str(), flags); });
    if (opened < 0 && links == Links::refuse && errno == ELOOP)
        throw Failure(Text::linkRefused, {nameOf(path_)});
    // A socket, and a device without a driver.
    if (opened < 0 && (errno == ENXIO || errno == ENODEV))
        throw Failure(Text::notAFile, {nameOf(path_)});
    if (opened < 0) fail(Text::cannotOpen, path_);
    handle_ = opened;
    struct stat facts {};
    const bool known = ::fstat(descriptor(handle_), &facts) == 0;
    const int error = errno;
    const bool regular = known && S_ISREG(facts.st_mode);
    // The library's writers hold such a lock; a file system without locks is no obstacle.
    const bool taken =
        regular && ::flock(descriptor(handle_), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (regular && !taken) {
        size_ = static_cast<std::uint64_t>(facts.st_size);
        access_ = accessIn(facts);
        return;
    }
    ::close(descriptor(handle_));
    if (!known) fail(Text::cannotOpen, path_, error);
    throw Failure(taken ? Text::inUse : Text::notAFile, {nameOf(path_)});
}

InputFile::~InputFile() {
    ::close(descriptor(handle_));
}

std::size_t InputFile::readAt(std::uint64_t offset, char* buffer, std::size_t n) const {
    std::size_t done = 0;
    while (done < n) {
        const ssize_t got = retried([&] {
            return ::pread(descriptor(handle_), buffer + done, std::min(n - done, kMostPerCall),
                           static_cast<off_t>(offset + done));
        });
        if (got < 0) fail(Text::cannotRead, path_);
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool OutputFile::create(const Path& name) {
    constexpr mode_t kOwner = S_IRUSR | S_IWUSR;
    const auto opened = retried([&] {
        return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwner);
    });
    if (opened < 0 && errno == EEXIST) return false;
    if (opened < 0) fail(Text::cannotCreate, target_);
    handle_ = opened;
    written_ = name;
    return true;
}

void OutputFile::takeAccess() {
    struct stat replaced {};
    if (::lstat(replaced_.c_str(), &replaced) == 0 && S_ISREG(replaced.st_mode))
        access_.narrow(accessIn(replaced));
    giveAccess(descriptor(handle_), access_, S_IRUSR);
}

bool makePrivateFolder(const Path& name, const Path& shown) {
    if (::mkdir(name.c_str(), S_IRWXU) == 0) return true;
    if (errno != EEXIST) fail(Text::cannotCreate, shown);
    return false;
}

void shareFolder(const Path& folder, const Access& access) {
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle < 0) return;
    // Who may read the files may go through the folder.
    const Access through{.mode = access.mode | (access.mode & 0444u) >> 2, .group = access.group};
    giveAccess(handle, through, S_IRWXU);
    ::close(handle);
}

void OutputFile::close() {
    // Closed it is in any case, but file systems of the network write only now.
    if (::close(descriptor(std::exchange(handle_, -1))) != 0 && errno != EINTR)
        fail(Text::cannotWrite, target_);
}

void OutputFile::write(const void* bytes, std::size_t n) {
    const char* from = static_cast<const char*>(bytes);
    while (n > 0) {
        const ssize_t done =
            retried([&] { return ::write(descriptor(handle_), from, std::min(n, kMostPerCall)); });
        if (done < 0) fail(Text::cannotWrite, target_);
        from += done;
        n -= static_cast<std::size_t>(done);
    }
}

void OutputFile::copy(const InputFile& from, std::uint64_t offset, std::uint64_t n) {
    constexpr std::uint64_t kPays = 64 * 1024;
    while (n >= kPays) {
        const std::uint64_t moved =
            copyInside(descriptor(from.handle_), offset, descriptor(handle_), n);
        if (moved == 0) break;
        offset += moved;
        n -= moved;
        copied(offset);
    }
    copyThrough(from, offset, n);
}

void OutputFile::rewriteStart(const void* bytes, std::size_t n) {
    const auto done = retried([&] { return ::pwrite(descriptor(handle_), bytes, n, 0); });
    if (done != static_cast<ssize_t>(n)) fail(Text::cannotWrite, target_);
}

void OutputFile::finish() {
    if (inFolder_) {
        close();
        written_.clear();
        return;
    }
    // What has no device has nothing to flush.
    if (retried([&] { return ::fsync(descriptor(handle_)); }) != 0 && errno != EINVAL)
        fail(Text::cannotWrite, target_);
    stopIfInterrupted();
    close();
    putInPlace();
    written_.clear();
    syncFolderOf(target_);
}

void OutputFile::putInPlace() {
    if (!replaces_) {
        // A link fails where the name has come to exist meanwhile.
        if (::link(written_.c_str(), target_.c_str()) == 0) {
            ::unlink(written_.c_str());
            return;
        }
        if (errno == EEXIST) throw Failure(Text::exists, {nameOf(target_)});
    }
    if (::rename(written_.c_str(), target_.c_str()) != 0) fail(Text::cannotCreate, target_);
}

OutputFile::~OutputFile() {
    if (handle_ != -1) ::close(descriptor(handle_));
    if (!written_.empty()) ::unlink(written_.c_str());
}

unsigned long processNumber() {
    return static_cast<unsigned long>(::getpid());
}

void syncFiles(const Path& folder, const std::vector<std::string>& names) {
#if defined(__linux__)
    // One by one each would wait for the file system's journal: 6 ms on a disk, for 64 bytes.
    constexpr std::size_t kFew = 4;
    if (names.size() > kFew) {
        const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (handle < 0) fail(Text::cannotOpen, folder);
        const int error = ::syncfs(handle) == 0 ? 0 : errno;
        ::close(handle);
        if (error != 0) fail(Text::cannotWrite, folder, error);
        return;
    }
#endif
    for (const std::string& name : names) {
        const Path file = folder / name;
        const auto handle =
            static_cast<int>(retried([&] { return ::open(file.c_str(), O_RDONLY | O_CLOEXEC); }));
        if (handle < 0) fail(Text::cannotOpen, file);
        const bool synced = retried([&] { return ::fsync(handle); }) == 0 || errno == EINVAL;
        const int error = errno;
        ::close(handle);
        if (!synced) fail(Text::cannotWrite, file, error);
        stopIfInterrupted();
    }
    if (!names.empty()) syncFolderOf(folder / names.front());
}

void syncFolderOf(const Path& file) {
    const Path folder = file.has_parent_path() ? file.parent_path() : Path(".");
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

std::string reasonOf(int code) {
    return reasonOfErrno({code, std::generic_category()});
}

std::string reasonOf(const std::error_code& error) {
    return reasonOfErrno(error);
}

}  // namespace tbfile
