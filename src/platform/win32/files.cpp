// Files through the system calls named for the job, and LZ expansion by the system's library.
#include <io.h>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string>

#include "base/lz_expand.h"
#include "platform/host.h"
#include "platform/scoped_file.h"
#include "platform/win32/file_names.h"
#include "toolbox/win_types.h"
// clang-format off
#include <lzexpand.h>  // stands on the types above
// clang-format on

namespace toolbox::platform {
namespace {

/// Handles have 32 significant bits also where the type has 64.
HANDLE handleOf(FileHandle file) {
    return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(static_cast<std::int32_t>(file)));
}

/// The code of the call that has just failed, never 0.
ErrorCode lastError(ErrorCode otherwise = ERROR_INVALID_PARAMETER) {
    const DWORD code = ::GetLastError();
    return code != ERROR_SUCCESS ? code : otherwise;
}

ErrorCode resultOf(BOOL succeeded, ErrorCode otherwise = ERROR_INVALID_PARAMETER) {
    return succeeded ? ERROR_SUCCESS : lastError(otherwise);
}

/// What an opening call gave, as a handle.
ErrorCode opened(HANDLE file, FileHandle& out) {
    out = kNoFile;
    if (file == INVALID_HANDLE_VALUE) return lastError();
    out = static_cast<FileHandle>(reinterpret_cast<INT_PTR>(file));
    return ERROR_SUCCESS;
}

/// The access list of a file as the system hands it out; empty where there is none to be had.
std::vector<std::byte> accessListOf(const char* name) {
    std::vector<std::byte> list;
    DWORD size = 0;
    const auto get = [&] {
        return ::GetFileSecurityA(name, DACL_SECURITY_INFORMATION, list.data(), size, &size);
    };
    (void)get();
    list.resize(size);
    if (size == 0 || !get()) list.clear();
    return list;
}

/// FoundFile::written of a time; 0 for what lies outside of it.
std::int64_t nanosecondsOf(const FILETIME& time) {
    constexpr std::int64_t k1970 = 116'444'736'000'000'000;  // in the system's 100 ns since 1601
    constexpr std::int64_t kLast = k1970 + std::numeric_limits<std::int64_t>::max() / 100;
    const std::int64_t ticks = std::int64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return ticks < k1970 || ticks > kLast ? 0 : (ticks - k1970) * 100;
}

class WindowsFiles final : public FileSystem {
  public:
    ErrorCode open(const char* name, std::uint32_t access, std::uint32_t share,
                   std::uint32_t disposition, FileHandle& out) override {
        const HANDLE file = ::CreateFileA(nameOf(name), access, share, nullptr, disposition,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        return opened(file, out);
    }

    ErrorCode close(FileHandle file) override {
        if (file == kNoFile) return ERROR_INVALID_HANDLE;  // the system takes it for the process
        return resultOf(::CloseHandle(handleOf(file)));
    }

    ErrorCode read(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t& got) override {
        DWORD count = 0;
        const BOOL succeeded = ::ReadFile(handleOf(file), buffer, n, &count, nullptr);
        got = count;
        return resultOf(succeeded, ERROR_READ_FAULT);
    }

    ErrorCode readAt(FileHandle file, std::uint64_t offset, void* buffer, std::uint32_t n,
                     std::uint32_t& got) override {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD count = 0;
        const BOOL succeeded = ::ReadFile(handleOf(file), buffer, n, &count, &place);
        got = succeeded ? count : 0;
        const ErrorCode error = resultOf(succeeded, ERROR_READ_FAULT);
        // With a position the end of the file is a failure, without one a success.
        return error == ERROR_HANDLE_EOF ? ERROR_SUCCESS : error;
    }

    ErrorCode write(FileHandle file, const void* buffer, std::uint32_t n,
                    std::uint32_t& written) override {
        DWORD count = 0;
        const BOOL succeeded = ::WriteFile(handleOf(file), buffer, n, &count, nullptr);
        written = count;
        return resultOf(succeeded, ERROR_WRITE_FAULT);
    }

    ErrorCode seek(FileHandle file, std::int64_t distance, SeekFrom from,
                   std::uint64_t& position) override {
        const DWORD method = from == SeekFrom::begin     ? FILE_BEGIN
                             : from == SeekFrom::current ? FILE_CURRENT
                                                         : FILE_END;
        LARGE_INTEGER move{};
        LARGE_INTEGER now{};
        move.QuadPart = distance;
        const BOOL succeeded = ::SetFilePointerEx(handleOf(file), move, &now, method);
        if (succeeded) position = static_cast<std::uint64_t>(now.QuadPart);
        return resultOf(succeeded);
    }

    ErrorCode size(FileHandle file, std::uint64_t& bytes) override {
        LARGE_INTEGER size{};
        const BOOL succeeded = ::GetFileSizeEx(handleOf(file), &size);
        if (succeeded) bytes = static_cast<std::uint64_t>(size.QuadPart);
        return resultOf(succeeded);
    }

    ErrorCode flush(FileHandle file) override {
        return resultOf(::FlushFileBuffers(handleOf(file)), ERROR_WRITE_FAULT);
    }

    bool exists(const char* name) override {
        WIN32_FIND_DATAA entry;
        const HANDLE search = ::FindFirstFileA(nameOf(name), &entry);
        if (search == INVALID_HANDLE_VALUE) return false;
        ::FindClose(search);
        return true;
    }

    bool isReadableAndWritable(const char* name) override {
        constexpr int kReadAndWrite = 6;
        return ::_access(nameOf(name), kReadAndWrite) == 0;
    }

    std::vector<FoundFile> find(const char* pattern) override {
        std::vector<FoundFile> found;
        WIN32_FIND_DATAA entry;
        const HANDLE search = ::FindFirstFileA(nameOf(pattern), &entry);
        if (search == INVALID_HANDLE_VALUE) return found;
        do {
            const std::string name = entry.cFileName;
            if (name == "." || name == "..") continue;
            const std::uint64_t high = entry.nFileSizeHigh;
            found.push_back({name, entry.dwFileAttributes, high << 32 | entry.nFileSizeLow,
                             nanosecondsOf(entry.ftLastWriteTime)});
        } while (::FindNextFileA(search, &entry));
        ::FindClose(search);
        return found;
    }

    ErrorCode copy(const char* from, const char* to, bool failIfExists) override {
        return resultOf(::CopyFileA(nameOf(from), nameOf(to), failIfExists));
    }

    ErrorCode replace(const char* from, const char* to) override {
        return resultOf(::MoveFileExA(nameOf(from), nameOf(to),
                                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
    }

    ErrorCode renameNew(const char* from, const char* to) override {
        return resultOf(::MoveFileExA(nameOf(from), nameOf(to), MOVEFILE_WRITE_THROUGH));
    }

    ErrorCode fullName(const char* name, std::string& full) override {
        full = fullPath(name);
        return full.empty() ? ERROR_INVALID_NAME : ERROR_SUCCESS;
    }
    bool isSameFile(const char* one, const char* other) override;

    ErrorCode followLinks(const char* name, std::string& target) override;
    ErrorCode copyFacts(FileHandle from, FileHandle to) override;
    ErrorCode createLike(const char* name, const char* like, std::uint32_t share,
                         FileHandle& out) override;

    ErrorCode remove(const char* name) override { return resultOf(::DeleteFileA(nameOf(name))); }

    ErrorCode createTemporary(const char* prefix, std::string& name) override {
        char folder[MAX_PATH + 1];
        char created[MAX_PATH + 1];
        name.clear();
        const DWORD length = ::GetTempPathA(sizeof folder, folder);
        if (length == 0 || length >= sizeof folder) return lastError(ERROR_PATH_NOT_FOUND);
        if (::GetTempFileNameA(folder, nameOf(prefix), 0, created) == 0) return lastError();
        name = created;
        return ERROR_SUCCESS;
    }

    ErrorCode attributes(const char* name, std::uint32_t& out) override {
        const DWORD found = ::GetFileAttributesA(nameOf(name));
        if (found == INVALID_FILE_ATTRIBUTES) return lastError();
        out = found;
        return ERROR_SUCCESS;
    }

    ErrorCode setAttributes(const char* name, std::uint32_t attributes) override {
        return resultOf(::SetFileAttributesA(nameOf(name), attributes));
    }

    std::string currentFolder() override {
        std::string folder(::GetCurrentDirectoryA(0, nullptr), '\0');
        if (folder.empty()) return folder;
        folder.resize(::GetCurrentDirectoryA(static_cast<DWORD>(folder.size()), folder.data()));
        return folder;
    }

    ErrorCode setCurrentFolder(const char* name) override {
        return resultOf(::SetCurrentDirectoryA(nameOf(name)));
    }

    ErrorCode createFolder(const char* name) override {
        const std::string path = fullPath(name);
        ErrorCode error = ERROR_INVALID_NAME;
        // The parts that are there already, drives and shares among them, refuse in ways of their
        // own.
        for (std::size_t end = path.find('\\'); !path.empty(); end = path.find('\\', end + 1)) {
            const BOOL made = ::CreateDirectoryA(path.substr(0, end).c_str(), nullptr);
            error = resultOf(made);
            if (end == std::string::npos) break;
        }
        const DWORD found = ::GetFileAttributesA(path.c_str());
        const bool isFolder =
            found != INVALID_FILE_ATTRIBUTES && (found & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return isFolder ? ErrorCode{ERROR_SUCCESS} : error;
    }

    ErrorCode diskFree(const char* root, std::uint32_t& sectorsPerCluster,
                       std::uint32_t& bytesPerSector, std::uint32_t& freeClusters) override {
        DWORD sectors = 0;
        DWORD bytes = 0;
        DWORD freeCount = 0;
        DWORD total = 0;
        const BOOL succeeded =
            ::GetDiskFreeSpaceA(nameOf(root), &sectors, &bytes, &freeCount, &total);
        sectorsPerCluster = sectors;
        bytesPerSector = bytes;
        freeClusters = freeCount;
        return resultOf(succeeded);
    }

    std::int32_t expandCopy(const char* from, const char* to) override;

  private:
    std::optional<base::LzHeader> compressedHeader(const char* name);
};

bool WindowsFiles::isSameFile(const char* one, const char* other) {
    const auto identity = identityOf(one);
    if (const auto second = identityOf(other); identity && second) return identity == second;
    std::wstring names[] = {wideFullName(one), wideFullName(other)};
    for (std::wstring& name : names) ::CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    return names[0] == names[1];
}

ErrorCode WindowsFiles::followLinks(const char* name, std::string& target) {
    target = nameOf(name);
    const DWORD found = ::GetFileAttributesA(nameOf(name));
    if (found == INVALID_FILE_ATTRIBUTES) return lastError();
    if (found & FILE_ATTRIBUTE_DIRECTORY) return ERROR_ACCESS_DENIED;
    if (!(found & FILE_ATTRIBUTE_REPARSE_POINT)) return ERROR_SUCCESS;
    const HANDLE file =
        ::CreateFileA(nameOf(name), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return lastError();
    std::string path(MAX_PATH, '\0');
    DWORD length = 0;
    for (;;) {
        length = ::GetFinalPathNameByHandleA(file, path.data(), static_cast<DWORD>(path.size()), 0);
        if (length < path.size()) break;
        path.resize(length + 1);
    }
    const ErrorCode error = resultOf(length > 0);
    ::CloseHandle(file);
    path.resize(length);
    if (error == ERROR_SUCCESS) target = withoutPrefix(path);
    return error;
}

ErrorCode WindowsFiles::createLike(const char* name, const char* like, std::uint32_t share,
                                   FileHandle& out) {
    std::vector<std::byte> list;
    out = kNoFile;
    if (like && ::GetFileAttributesA(like) != INVALID_FILE_ATTRIBUTES) {
        ::SetLastError(ERROR_SUCCESS);
        list = accessListOf(like);
        if (list.empty() && ::GetLastError() == ERROR_ACCESS_DENIED) return ERROR_ACCESS_DENIED;
    }
    SECURITY_ATTRIBUTES rights{sizeof rights, list.data(), FALSE};
    const HANDLE file =
        ::CreateFileA(nameOf(name), GENERIC_READ | GENERIC_WRITE, share,
                      list.empty() ? nullptr : &rights, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    return opened(file, out);
}

ErrorCode WindowsFiles::copyFacts(FileHandle from, FileHandle to) {
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!::GetFileInformationByHandle(handleOf(from), &facts)) return lastError();
    constexpr DWORD kCopied = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                              FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    FILE_BASIC_INFO copied{};  // a time of 0 stays as it is
    copied.LastAccessTime.LowPart = facts.ftLastAccessTime.dwLowDateTime;
    copied.LastAccessTime.HighPart = static_cast<LONG>(facts.ftLastAccessTime.dwHighDateTime);
    copied.LastWriteTime.LowPart = facts.ftLastWriteTime.dwLowDateTime;
    copied.LastWriteTime.HighPart = static_cast<LONG>(facts.ftLastWriteTime.dwHighDateTime);
    copied.FileAttributes = facts.dwFileAttributes & kCopied;
    if (copied.FileAttributes == 0) copied.FileAttributes = FILE_ATTRIBUTE_NORMAL;
    return resultOf(
        ::SetFileInformationByHandle(handleOf(to), FileBasicInfo, &copied, sizeof copied));
}

/// A file opened for the expansion calls; negative when it could not be.
class ExpandedFile {
  public:
    ExpandedFile(const char* name, WORD mode) {
        // With a whole path, for a bare name is otherwise searched along the program path first.
        std::string path = fullPath(name);
        OFSTRUCT facts{};
        facts.cBytes = sizeof facts;
        if (path.size() < OFS_MAXPATHNAME) number_ = ::LZOpenFileA(path.data(), &facts, mode);
    }
    ~ExpandedFile() {
        if (number_ >= 0) ::LZClose(number_);
    }
    ExpandedFile(const ExpandedFile&) = delete;
    ExpandedFile& operator=(const ExpandedFile&) = delete;

    [[nodiscard]] INT number() const { return number_; }

  private:
    INT number_ = base::kLzBadInput;
};

std::int32_t WindowsFiles::expandCopy(const char* from, const char* to) {
    const auto header = compressedHeader(from);
    if (header && header->algorithm != 'A') return base::kLzUnknownAlgorithm;
    const ExpandedFile source(from, OF_READ);
    if (source.number() < 0) return source.number();
    const ExpandedFile target(to, OF_CREATE);
    if (target.number() < 0) return base::kLzBadOutput;
    const LONG copied = ::LZCopy(source.number(), target.number());
    // Below the error codes lies a length that does not fit.
    if (copied < base::kLzUnknownAlgorithm) return std::numeric_limits<std::int32_t>::max();
    // Not every system tells that the data ended before what the header announces.
    if (header && copied >= 0 && static_cast<DWORD>(copied) < header->expandedSize)
        return base::kLzRead;
    return copied;
}

std::optional<base::LzHeader> WindowsFiles::compressedHeader(const char* name) {
    std::array<std::byte, base::kLzHeaderSize> start{};
    std::uint32_t got = 0;
    ScopedFile file(*this, name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    if (!file.valid() || file.read(start.data(), start.size(), got) != ERROR_SUCCESS)
        return std::nullopt;
    return base::lzHeader(std::span(start).first(got));
}

}  // namespace

FileSystem& hostFiles() {
    static WindowsFiles files;
    return files;
}

}  // namespace toolbox::platform
