// Creates files that nobody can slip something under: always exclusively, so that what lies there
// under the name, a link above all, is never followed; and private until they have their rights.
#include "platform/posix/new_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace toolbox::platform::posix {
namespace {

constexpr int kExclusively = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY;
constexpr mode_t kOnlyTheUser = 0600;
constexpr mode_t kAsTheMaskSays = 0666;

/// Gives a new file the access list of an old one. False when that has one and it could not be set.
bool copyAccessList(const std::string& like, int file) {
    constexpr const char* kName = "system.posix_acl_access";
    std::array<char, 4096> list;
    const ssize_t size = ::getxattr(like.c_str(), kName, list.data(), list.size());
    if (size > 0)
        return ::fsetxattr(file, kName, list.data(), static_cast<std::size_t>(size), 0) == 0;
    const bool none = size == 0 || errno == ENODATA || errno == ENOTSUP;
    ::fremovexattr(file, kName);  // what the folder gave it
    return none;
}

/// Gives a new file the rights of an old one: 0, or the errno of setting its mode.
int takeRights(int file, const std::string& like, const struct stat& old) {
    struct stat fresh {};
    if (::fstat(file, &fresh) != 0) return errno;
    const bool sameGroup = fresh.st_gid == old.st_gid || ::fchown(file, -1u, old.st_gid) == 0;
    const bool sameList = copyAccessList(like, file);
    mode_t mode = old.st_mode & 0777;
    // The group's bits were meant for somebody else (or, with a list, for those in it).
    if (!sameGroup || !sameList) mode = (mode & ~mode_t{S_IRWXG}) | ((mode & S_IRWXO) << 3);
    if (::fchmod(file, mode) != 0) {
        // A file system without modes gives every file the same.
        const int error = errno;
        if (::fstat(file, &fresh) != 0 || (fresh.st_mode & 0777) != mode) return error;
    }
    // The owner last: after it this user may have no more to say.
    if (fresh.st_uid != old.st_uid) (void)!::fchown(file, old.st_uid, -1u);
    return 0;
}

std::string temporaryFolder() {
    const char* configured = std::getenv("TMPDIR");
    std::string folder = configured && *configured ? configured : "/tmp";
    if (folder.back() != '/') folder += '/';
    return folder;
}

}  // namespace

ErrorCode followLinks(const std::string& path, std::string& target) {
    constexpr int kMostLinks = 40;  // as many as the system follows
    target = path;
    for (int links = 0; links <= kMostLinks; ++links) {
        struct stat facts {};
        if (::lstat(target.c_str(), &facts) != 0) return codeOfName(errno, target);
        if (!S_ISLNK(facts.st_mode))
            return S_ISREG(facts.st_mode) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
        std::array<char, PATH_MAX> link;
        const ssize_t length = ::readlink(target.c_str(), link.data(), link.size());
        if (length < 0) return codeOfName(errno, target);
        const std::string to(link.data(), static_cast<std::size_t>(length));
        target.resize(to.starts_with('/') ? 0 : folderOf(target).size());
        target += to;
    }
    return ERROR_PATH_NOT_FOUND;
}

int createLike(const std::string& path, const std::string& like) {
    struct stat old {};
    const bool replaces = !like.empty() && ::stat(like.c_str(), &old) == 0 && S_ISREG(old.st_mode);
    const int file = ::open(path.c_str(), kExclusively, replaces ? kOnlyTheUser : kAsTheMaskSays);
    if (file < 0 || !replaces) return file;
    const int error = takeRights(file, like, old);
    if (error == 0) return file;
    ::unlink(path.c_str());
    ::close(file);
    errno = error;
    return -1;
}

ErrorCode renameNew(const std::string& from, const std::string& to) {
    int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // The file system has no such call; a second name is refused as well where it is taken.
        result = ::link(from.c_str(), to.c_str());
        if (result == 0) ::unlink(from.c_str());
    }
    if (result == 0) return ERROR_SUCCESS;
    return errno == EEXIST ? ErrorCode{ERROR_ALREADY_EXISTS} : codeOfRename(errno, from, to);
}

ErrorCode flushFolderOf(const std::string& path) {
    const std::string folder(folderOf(path));
    const int file =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0) return codeOfName(errno, path);
    // Some file systems cannot flush a folder, and have no need to.
    const int error = ::fsync(file) == 0 || errno == EINVAL ? 0 : errno;
    ::close(file);
    return codeOf(error, ERROR_WRITE_FAULT);
}

ErrorCode createTemporaryFile(const char* prefix, std::string& name) {
    constexpr std::size_t kPrefixLength = 3;
    constexpr unsigned kNumbers = 0x10000;
    const std::string start =
        temporaryFolder() + std::string(prefix ? prefix : "").substr(0, kPrefixLength);
    name.clear();
    const auto first = static_cast<unsigned>(std::time(nullptr)) ^ static_cast<unsigned>(getpid());
    for (unsigned i = 0; i < kNumbers; ++i) {
        std::string candidate = start;
        const unsigned number = (first + i) % kNumbers;
        for (int digit = 12; digit >= 0; digit -= 4)
            candidate += "0123456789ABCDEF"[number >> digit & 0xF];
        candidate += ".TMP";
        const int file = ::open(candidate.c_str(), kExclusively, kOnlyTheUser);
        if (file >= 0) {
            ::close(file);
            name = std::move(candidate);
            return ERROR_SUCCESS;
        }
        if (errno != EEXIST) return codeOfName(errno, candidate);
    }
    return ERROR_FILE_EXISTS;
}

}  // namespace toolbox::platform::posix
