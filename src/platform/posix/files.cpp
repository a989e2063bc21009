// Files through system calls. Sharing is kept by advisory locks, and what could block is refused.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <utility>
#include <vector>

#include "base/lz_expand.h"
#include "platform/host.h"
#include "platform/posix/file_copies.h"
#include "platform/posix/file_facts.h"
#include "platform/posix/file_names.h"
#include "platform/posix/new_files.h"

namespace toolbox::platform {
namespace {

using namespace posix;

int descriptorOf(FileHandle file) {
    return static_cast<int>(file);
}

/// Repeats a call that a signal interrupted.
template <class Call>
auto retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// Moves `n` bytes by as many calls as that takes; a call that moves none is the end.
/// `call(done, room)` is read or write from `done` on.
template <class Call>
int transferAll(std::uint32_t n, std::uint32_t& done, Call call) {
    constexpr std::uint32_t kMostPerCall = 1u << 30;  // more overflows a 32-bit ssize_t
    done = 0;
    while (done < n) {
        const ssize_t moved =
            retried([&] { return call(done, std::size_t{std::min(n - done, kMostPerCall)}); });
        if (moved < 0) return errno;
        if (moved == 0) break;
        done += static_cast<std::uint32_t>(moved);
    }
    return 0;
}

/// Closes a descriptor unless it was taken.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] FileHandle take() { return static_cast<FileHandle>(std::exchange(number_, -1)); }

  private:
    int number_;
};

int openFlags(std::uint32_t access, std::uint32_t disposition) {
    int flags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;  // a pipe of the name must not stop us
    const bool writes = access & GENERIC_WRITE;
    const bool reads = access & GENERIC_READ;
    flags |= writes ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY;
    if (disposition == CREATE_NEW) flags |= O_CREAT | O_EXCL;
    if (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS) flags |= O_CREAT;
    return flags;
}

/// Takes the lock that stands for a share mode: who denies writing and only reads shares it with
/// its like; a writer that denies other writers, and who denies reading, has it alone. Locks bind
/// those who take one, in this process and in others. A file system without locks is no obstacle.
bool lockAgainstOthers(int file, std::uint32_t access, std::uint32_t share) {
    int operation = LOCK_NB;
    if (!(share & FILE_SHARE_READ) || ((access & GENERIC_WRITE) && !(share & FILE_SHARE_WRITE)))
        operation |= LOCK_EX;
    else if (!(share & FILE_SHARE_WRITE))
        operation |= LOCK_SH;
    else
        return true;
    return retried([&] { return ::flock(file, operation); }) == 0 || errno != EWOULDBLOCK;
}

bool isSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Empties a file that was opened, once nobody else turned out to be using it. One that was opened
/// for reading only is opened again for this, and must still be the same.
ErrorCode truncateOpened(int file, const std::string& path, const struct stat& facts, bool writes) {
    Descriptor again(writes ? -1 : ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    if (!writes) {
        struct stat now {};
        if (again.get() < 0) return codeOfName(errno, path);
        if (::fstat(again.get(), &now) != 0 || !isSameFile(now, facts))
            return ERROR_SHARING_VIOLATION;
    }
    const int result = retried([&] { return ::ftruncate(writes ? file : again.get(), 0); });
    return result == 0 ? ERROR_SUCCESS : codeOf(errno, ERROR_WRITE_FAULT);
}

/// Lets calls on a device wait for it, which opening it did not do.
void waitFromNowOn(int device) {
    const int flags = ::fcntl(device, F_GETFL);
    if (flags >= 0) ::fcntl(device, F_SETFL, flags & ~O_NONBLOCK);
}

bool startsWithDrive(const std::string& path) {
    const int letter = path.empty() ? 0 : path[0] | 0x20;
    return letter >= 'a' && letter <= 'z' && path[1] == ':';
}

class PosixFiles final : public FileSystem {
  public:
    ErrorCode open(const char* name, std::uint32_t access, std::uint32_t share,
                   std::uint32_t disposition, FileHandle& out) override {
        out = kNoFile;
        const bool writes = access & GENERIC_WRITE;
        if (disposition < CREATE_NEW || disposition > TRUNCATE_EXISTING ||
            (disposition == TRUNCATE_EXISTING && !writes))
            return ERROR_INVALID_PARAMETER;
        const std::string path = hostPath(name);
        Descriptor file(
            retried([&] { return ::open(path.c_str(), openFlags(access, disposition), 0666); }));
        if (file.get() < 0) return codeOfName(errno, path);

        struct stat facts {};
        if (::fstat(file.get(), &facts) != 0) return codeOf(errno);
        const bool isDevice = S_ISCHR(facts.st_mode) || S_ISBLK(facts.st_mode);
        if (!S_ISREG(facts.st_mode) && !isDevice) return ERROR_ACCESS_DENIED;
        if (isDevice) waitFromNowOn(file.get());
        const bool empties = disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
        if ((writes || empties) && isReadOnly(facts)) return ERROR_ACCESS_DENIED;
        if (!lockAgainstOthers(file.get(), access, share)) return ERROR_SHARING_VIOLATION;
        if (empties && S_ISREG(facts.st_mode) && facts.st_size > 0)
            if (const ErrorCode error = truncateOpened(file.get(), path, facts, writes))
                return error;
        out = file.take();
        return ERROR_SUCCESS;
    }

    ErrorCode close(FileHandle file) override {
        // Linux frees the descriptor also when the call is interrupted: it is not repeated.
        return ::close(descriptorOf(file)) == 0 || errno == EINTR
                   ? ERROR_SUCCESS
                   : codeOf(errno, ERROR_WRITE_FAULT);
    }

    ErrorCode read(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t& got) override {
        const int error = transferAll(n, got, [&](std::uint32_t done, std::size_t room) {
            return ::read(descriptorOf(file), static_cast<char*>(buffer) + done, room);
        });
        return transferCode(file, error, ERROR_READ_FAULT);
    }

    ErrorCode readAt(FileHandle file, std::uint64_t offset, void* buffer, std::uint32_t n,
                     std::uint32_t& got) override {
        got = 0;
        constexpr auto kLast = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
        if (offset > kLast - n) return ERROR_NEGATIVE_SEEK;
        const int error = transferAll(n, got, [&](std::uint32_t done, std::size_t room) {
            return ::pread(descriptorOf(file), static_cast<char*>(buffer) + done, room,
                           static_cast<off_t>(offset + done));
        });
        return transferCode(file, error, ERROR_READ_FAULT);
    }

    ErrorCode write(FileHandle file, const void* buffer, std::uint32_t n,
                    std::uint32_t& written) override {
        const int error = transferAll(n, written, [&](std::uint32_t done, std::size_t room) {
            return ::write(descriptorOf(file), static_cast<const char*>(buffer) + done, room);
        });
        return transferCode(file, error, ERROR_WRITE_FAULT);
    }

    ErrorCode seek(FileHandle file, std::int64_t distance, SeekFrom from,
                   std::uint64_t& position) override {
        const int whence = from == SeekFrom::begin     ? SEEK_SET
                           : from == SeekFrom::current ? SEEK_CUR
                                                       : SEEK_END;
        const off_t now = ::lseek(descriptorOf(file), static_cast<off_t>(distance), whence);
        if (now < 0) return codeOf(errno, ERROR_NEGATIVE_SEEK);
        position = static_cast<std::uint64_t>(now);
        return ERROR_SUCCESS;
    }

    ErrorCode size(FileHandle file, std::uint64_t& bytes) override {
        struct stat facts {};
        if (::fstat(descriptorOf(file), &facts) != 0) return codeOf(errno);
        bytes = static_cast<std::uint64_t>(facts.st_size);
        return ERROR_SUCCESS;
    }

    ErrorCode flush(FileHandle file) override {
        const int result = retried([&] { return ::fsync(descriptorOf(file)); });
        // What is on no device, as /dev/null, has nothing to flush.
        return result == 0 || errno == EINVAL ? ERROR_SUCCESS : codeOf(errno, ERROR_WRITE_FAULT);
    }

    bool exists(const char* name) override { return !findFiles(hostPath(name)).empty(); }

    bool isReadableAndWritable(const char* name) override {
        const std::string path = hostPath(name);
        struct stat facts {};
        return ::stat(path.c_str(), &facts) == 0 && !isReadOnly(facts) &&
               ::access(path.c_str(), R_OK | W_OK) == 0;
    }

    std::vector<FoundFile> find(const char* pattern) override {
        return findFiles(hostPath(pattern));
    }

    ErrorCode copy(const char* from, const char* to, bool failIfExists) override {
        return copyFile(*this, from, to, failIfExists);
    }

    ErrorCode replace(const char* from, const char* to) override {
        const std::string target = hostPath(to);
        struct stat facts {};
        if (::stat(target.c_str(), &facts) == 0 && isReadOnly(facts)) return ERROR_ACCESS_DENIED;
        const std::string source = hostPath(from);
        if (::rename(source.c_str(), target.c_str()) == 0) return ERROR_SUCCESS;
        return codeOfRename(errno, source, target);
    }

    ErrorCode renameNew(const char* from, const char* to) override {
        return posix::renameNew(hostPath(from), hostPath(to));
    }

    ErrorCode fullName(const char* name, std::string& full) override {
        full = posix::fullName(hostPath(name));
        return ERROR_SUCCESS;
    }

    bool isSameFile(const char* one, const char* other) override {
        struct stat facts[2];
        if (::stat(hostPath(one).c_str(), &facts[0]) == 0 &&
            ::stat(hostPath(other).c_str(), &facts[1]) == 0)
            return facts[0].st_dev == facts[1].st_dev && facts[0].st_ino == facts[1].st_ino;
        return posix::fullName(hostPath(one)) == posix::fullName(hostPath(other));
    }

    ErrorCode followLinks(const char* name, std::string& target) override {
        return posix::followLinks(hostPath(name), target);
    }

    ErrorCode createLike(const char* name, const char* like, std::uint32_t share,
                         FileHandle& out) override {
        out = kNoFile;
        const std::string path = hostPath(name);
        Descriptor file(posix::createLike(path, hostPath(like)));
        if (file.get() < 0) return codeOfName(errno, path);
        if (!lockAgainstOthers(file.get(), GENERIC_READ | GENERIC_WRITE, share)) {
            ::unlink(path.c_str());
            return ERROR_SHARING_VIOLATION;
        }
        struct stat facts {};
        if (::fstat(file.get(), &facts) != 0) return codeOf(errno);
        if (facts.st_nlink == 0) return ERROR_FILE_EXISTS;  // removed before it was locked
        out = file.take();
        return ERROR_SUCCESS;
    }

    ErrorCode copyFacts(FileHandle from, FileHandle to) override {
        struct stat facts {};
        if (::fstat(descriptorOf(from), &facts) != 0) return codeOf(errno);
        const timespec times[] = {facts.st_atim, facts.st_mtim};
        (void)::futimens(descriptorOf(to), times);
        return ERROR_SUCCESS;
    }

    ErrorCode flushFolderOf(const char* name) override {
        return posix::flushFolderOf(hostPath(name));
    }

    ErrorCode remove(const char* name) override {
        const std::string path = hostPath(name);
        struct stat facts {};
        if (::lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && isReadOnly(facts))
            return ERROR_ACCESS_DENIED;
        return ::unlink(path.c_str()) == 0 ? ERROR_SUCCESS : codeOfName(errno, path);
    }

    ErrorCode createTemporary(const char* prefix, std::string& name) override {
        return createTemporaryFile(prefix, name);
    }

    ErrorCode attributes(const char* name, std::uint32_t& out) override {
        const std::string path = hostPath(name);
        struct stat facts {};
        if (::stat(path.c_str(), &facts) != 0) return codeOfName(errno, path);
        out = attributesOf(facts);
        return ERROR_SUCCESS;
    }

    ErrorCode setAttributes(const char* name, std::uint32_t attributes) override {
        const std::string path = hostPath(name);
        struct stat facts {};
        if (::stat(path.c_str(), &facts) != 0) return codeOfName(errno, path);
        const bool wanted = attributes & FILE_ATTRIBUTE_READONLY;
        // The attribute of a folder says nothing about what may be done in it.
        if (S_ISDIR(facts.st_mode) || wanted == isReadOnly(facts)) return ERROR_SUCCESS;
        const mode_t mode = wanted ? facts.st_mode & ~kWriteBits : facts.st_mode | S_IWUSR;
        return ::chmod(path.c_str(), mode & 07777) == 0 ? ERROR_SUCCESS : codeOf(errno);
    }

    std::string currentFolder() override {
        std::vector<char> name(256);
        while (!::getcwd(name.data(), name.size())) {
            if (errno != ERANGE) return {};
            name.resize(name.size() * 2);
        }
        return name.data();
    }

    ErrorCode setCurrentFolder(const char* name) override {
        const std::string path = hostPath(name);
        return ::chdir(path.c_str()) == 0 ? ERROR_SUCCESS : codeOfName(errno, path);
    }

    ErrorCode createFolder(const char* name) override {
        const std::string path = posix::fullName(hostPath(name));
        createFoldersOf(path + '/');
        struct stat facts {};
        const bool isThere = ::stat(path.c_str(), &facts) == 0;
        if (isThere && S_ISDIR(facts.st_mode)) return ERROR_SUCCESS;
        if (isThere) return ERROR_ALREADY_EXISTS;
        return ::mkdir(path.c_str(), kUsersFolder) == 0 ? ERROR_SUCCESS : codeOfName(errno, path);
    }

    ErrorCode diskFree(const char* root, std::uint32_t& sectorsPerCluster,
                       std::uint32_t& bytesPerSector, std::uint32_t& freeClusters) override {
        std::string path = hostPath(root);
        // There are no drives here: each letter is the volume of the current folder.
        if (startsWithDrive(path)) path = ".";
        struct statvfs volume {};
        if (retried([&] { return ::statvfs(path.c_str(), &volume); }) != 0)
            return codeOfName(errno, path);
        bytesPerSector = 512;
        sectorsPerCluster =
            std::max<std::uint32_t>(1, static_cast<std::uint32_t>(volume.f_frsize / 512));
        freeClusters =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(volume.f_bavail, 0xFFFFFFFFu));
        return ERROR_SUCCESS;
    }

    std::int32_t expandCopy(const char* from, const char* to) override {
        struct stat facts {};
        if (::stat(hostPath(from).c_str(), &facts) == 0 && !S_ISREG(facts.st_mode))
            return base::kLzBadInput;  // a device may have no end
        return expandFile(*this, from, to);
    }

  private:
    /// A file open for the other direction only gives EBADF too; Windows tells it from no file.
    static ErrorCode transferCode(FileHandle file, int error, ErrorCode otherwise) {
        if (error == EBADF && ::fcntl(descriptorOf(file), F_GETFL) >= 0) return ERROR_ACCESS_DENIED;
        return codeOf(error, otherwise);
    }
};

}  // namespace

FileSystem& hostFiles() {
    static PosixFiles files;
    return files;
}

}  // namespace toolbox::platform
