// Names as the host has them, errno as Windows codes, and patterns.
#include "platform/posix/file_names.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/posix/file_facts.h"

namespace toolbox::platform::posix {

namespace {

std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

}  // namespace

std::string hostPath(const char* name) {
    std::string path = name ? name : "";
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string_view folderOf(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string fullName(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path full = std::filesystem::absolute(path, failed);
    return failed ? path : full.lexically_normal().string();
}

std::string configFolder() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    const bool usable = configured && *configured == '/';
    return (usable ? std::string(configured) : homeFolder() + "/.config") + "/toolbox/";
}

void createFoldersOf(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), kUsersFolder);
}

ErrorCode codeOf(int error, ErrorCode otherwise) {
    switch (error) {
        case 0:
            return ERROR_SUCCESS;
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
        case ELOOP:
            return ERROR_PATH_NOT_FOUND;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        case EACCES:
        case EPERM:
        case EISDIR:
        case ENXIO:  // a pipe or socket that nobody serves
            return ERROR_ACCESS_DENIED;
        case EROFS:
            return ERROR_WRITE_PROTECT;
        case EBADF:
            return ERROR_INVALID_HANDLE;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case EBUSY:
        case ETXTBSY:
        case EWOULDBLOCK:
            return ERROR_SHARING_VIOLATION;
        case EEXIST:
            return ERROR_FILE_EXISTS;
        case ENOSPC:
        case EDQUOT:
            return ERROR_DISK_FULL;
        case ENAMETOOLONG:
            return ERROR_FILENAME_EXCED_RANGE;
        case EFBIG:
        case EOVERFLOW:
            return ERROR_FILE_TOO_LARGE;
        default:
            return otherwise;
    }
}

ErrorCode codeOfName(int error, const std::string& path) {
    if (error == ENOENT) {
        const std::string_view folder = folderOf(path);
        struct stat facts {};
        const bool folderThere = folder.empty() || ::stat(std::string(folder).c_str(), &facts) == 0;
        return folderThere && !path.empty() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
    }
    return codeOf(error);
}

ErrorCode codeOfRename(int error, const std::string& from, const std::string& to) {
    struct stat facts {};
    return codeOfName(error, ::lstat(from.c_str(), &facts) == 0 ? to : from);
}

namespace {

bool matches(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;  // the last '*' seen: where to come back to
    std::size_t resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

bool matchesPattern(std::string_view name, std::string_view pattern) {
    if (matches(name, pattern)) return true;
    return pattern.ends_with(".*") && matches(name, pattern.substr(0, pattern.size() - 2));
}

std::vector<FoundFile> findFiles(const std::string& pattern) {
    const std::string folder(folderOf(pattern));
    const std::string wanted = pattern.substr(folder.size());
    std::vector<FoundFile> found;
    const auto add = [&](const std::string& name) {
        struct stat facts {};
        const std::string path = folder + name;
        // A link that leads nowhere is still a name in the folder.
        if (::stat(path.c_str(), &facts) != 0 && ::lstat(path.c_str(), &facts) != 0) return;
        const bool isFile = S_ISREG(facts.st_mode);
        found.push_back({name, attributesOf(facts),
                         isFile ? static_cast<std::uint64_t>(facts.st_size) : 0, writtenAt(facts)});
    };
    if (wanted.find_first_of("*?") == std::string::npos) {
        if (!wanted.empty()) add(wanted);
        return found;
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(
        ::opendir(folder.empty() ? "." : folder.c_str()), ::closedir);
    if (!listing) return found;
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && matchesPattern(name, wanted)) add(std::string(name));
    }
    std::sort(found.begin(), found.end(),
              [](const FoundFile& a, const FoundFile& b) { return a.name < b.name; });
    return found;
}

}  // namespace toolbox::platform::posix
