// Files by Windows: new ones are exclusive and have the access list of their input from the start.
#include <algorithm>
#include <array>
#include <utility>

#include "system/files.h"
#include "terminal/failure.h"
#include "terminal/terminal.h"
#include "toolbox/win_types.h"

namespace tbfile {
namespace {

constexpr DWORD kMostPerCall = 1u << 30;

HANDLE handleOf(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

[[noreturn]] void fail(Text text, const Path& path, DWORD code) {
    throw Failure(text, {nameOf(path), reasonOf(static_cast<int>(code))});
}

/// Must be called before anything else asks the system.
[[noreturn]] void failNow(Text text, const Path& path) {
    const DWORD code = ::GetLastError();
    fail(text, path, code);
}

/// Protected, so that the folder of a new file adds nothing. Empty where the system has none.
std::string accessListOf(HANDLE file) {
    DWORD size = 0;
    ::GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string list(size, '\0');
    const bool known = size > 0 && ::GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION,
                                                             list.data(), size, &size);
    if (!known ||
        !::SetSecurityDescriptorControl(list.data(), SE_DACL_PROTECTED, SE_DACL_PROTECTED))
        list.clear();
    return list;
}

bool isLink(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION facts{};
    return ::GetFileInformationByHandle(file, &facts) &&
           (facts.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

}  // namespace

void Access::narrow(const Access&) {}

InputFile::InputFile(Path path, Links links) : path_(std::move(path)) {
    const DWORD flags =
        FILE_ATTRIBUTE_NORMAL | (links == Links::refuse ? FILE_FLAG_OPEN_REPARSE_POINT : 0u);
    const HANDLE opened = ::CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, flags, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_SHARING_VIOLATION) throw Failure(Text::inUse, {nameOf(path_)});
        std::error_code ignored;
        if (links == Links::refuse && std::filesystem::is_symlink(path_, ignored))
            throw Failure(Text::linkRefused, {nameOf(path_)});
        if (std::filesystem::is_directory(path_, ignored))
            throw Failure(Text::notAFile, {nameOf(path_)});
        fail(Text::cannotOpen, path_, code);
    }
    handle_ = reinterpret_cast<std::intptr_t>(opened);
    const bool link = links == Links::refuse && isLink(opened);
    LARGE_INTEGER size{};
    const bool known = ::GetFileType(opened) == FILE_TYPE_DISK && ::GetFileSizeEx(opened, &size);
    if (link || !known) {
        ::CloseHandle(opened);
        throw Failure(link ? Text::linkRefused : Text::notAFile, {nameOf(path_)});
    }
    size_ = static_cast<std::uint64_t>(size.QuadPart);
    access_.list = accessListOf(opened);
}

InputFile::~InputFile() {
    ::CloseHandle(handleOf(handle_));
}

std::size_t InputFile::readAt(std::uint64_t offset, char* buffer, std::size_t n) const {
    std::size_t done = 0;
    while (done < n && offset + done < size_) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset + done);
        place.OffsetHigh = static_cast<DWORD>((offset + done) >> 32);
        DWORD got = 0;
        const auto piece = static_cast<DWORD>(std::min<std::size_t>(n - done, kMostPerCall));
        if (!::ReadFile(handleOf(handle_), buffer + done, piece, &got, &place)) {
            const DWORD code = ::GetLastError();
            if (code != ERROR_HANDLE_EOF) fail(Text::cannotRead, path_, code);
        }
        if (got == 0) break;
        done += got;
    }
    return done;
}

bool OutputFile::create(const Path& name) {
    SECURITY_ATTRIBUTES security{sizeof security, access_.list.data(), FALSE};
    const HANDLE opened =
        ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, access_.list.empty() ? nullptr : &security,
                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS) return false;
        fail(Text::cannotCreate, target_, code);
    }
    handle_ = reinterpret_cast<std::intptr_t>(opened);
    written_ = name;
    return true;
}

/// create() gave it already.
void OutputFile::takeAccess() {}

bool makePrivateFolder(const Path& name, const Path& shown) {
    if (::CreateDirectoryW(name.c_str(), nullptr)) return true;
    const DWORD code = ::GetLastError();
    if (code != ERROR_ALREADY_EXISTS) fail(Text::cannotCreate, shown, code);
    return false;
}

void shareFolder(const Path&, const Access&) {}

void OutputFile::close() {
    ::CloseHandle(handleOf(std::exchange(handle_, -1)));
}

void OutputFile::write(const void* bytes, std::size_t n) {
    const char* from = static_cast<const char*>(bytes);
    while (n > 0) {
        DWORD done = 0;
        const auto piece = static_cast<DWORD>(std::min<std::size_t>(n, kMostPerCall));
        if (!::WriteFile(handleOf(handle_), from, piece, &done, nullptr))
            failNow(Text::cannotWrite, target_);
        if (done == 0) fail(Text::cannotWrite, target_, ERROR_DISK_FULL);
        from += done;
        n -= done;
    }
}

void OutputFile::copy(const InputFile& from, std::uint64_t offset, std::uint64_t n) {
    copyThrough(from, offset, n);
}

void OutputFile::rewriteStart(const void* bytes, std::size_t n) {
    OVERLAPPED place{};
    DWORD done = 0;
    if (!::WriteFile(handleOf(handle_), bytes, static_cast<DWORD>(n), &done, &place))
        failNow(Text::cannotWrite, target_);
    const LARGE_INTEGER nowhere{};
    if (!::SetFilePointerEx(handleOf(handle_), nowhere, nullptr, FILE_END))
        failNow(Text::cannotWrite, target_);
}

void OutputFile::finish() {
    if (!::FlushFileBuffers(handleOf(handle_))) failNow(Text::cannotWrite, target_);
    stopIfInterrupted();
    close();
    if (!inFolder_) putInPlace();
    written_.clear();
}

void OutputFile::putInPlace() {
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replaces_ ? MOVEFILE_REPLACE_EXISTING : 0u);
    if (::MoveFileExW(written_.c_str(), target_.c_str(), flags)) return;
    const DWORD code = ::GetLastError();
    if (code == ERROR_ALREADY_EXISTS) throw Failure(Text::exists, {nameOf(target_)});
    fail(Text::cannotCreate, target_, code);
}

OutputFile::~OutputFile() {
    if (handle_ != -1) ::CloseHandle(handleOf(handle_));
    if (!written_.empty()) ::DeleteFileW(written_.c_str());
}

unsigned long processNumber() {
    return ::GetCurrentProcessId();
}

// finish() flushed each file: the system flushes all of a device for its administrators only.
void syncFiles(const Path&, const std::vector<std::string>&) {}

// The system's journal has the names.
void syncFolderOf(const Path&) {}

namespace {

/// The system's own text, in the program's language where the system has it.
std::string systemText(int code) {
    std::array<wchar_t, 512> text{};
    const WORD language = spokenLanguage() == Language::french
                              ? MAKELANGID(LANG_FRENCH, SUBLANG_DEFAULT)
                              : MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT);
    DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, static_cast<DWORD>(code), language, text.data(),
                                  static_cast<DWORD>(text.size()), nullptr);
    // It ends its sentences, and its lines.
    while (size > 0 && (text[size - 1] <= L' ' || text[size - 1] == L'.')) --size;
    return utf8Of({text.data(), size});
}

}  // namespace

std::string reasonOf(int code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
            return say(Text::reasonMissing);
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
            return say(Text::reasonDenied);
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return say(Text::reasonExists);
        case ERROR_HANDLE_DISK_FULL:
        case ERROR_DISK_FULL:
            return say(Text::reasonFull);
        case ERROR_CRC:
        case ERROR_READ_FAULT:
            return say(Text::reasonDevice);
        case ERROR_FILENAME_EXCED_RANGE:
            return say(Text::reasonLongName);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            return say(Text::reasonBusy);
        case ERROR_TOO_MANY_OPEN_FILES:
            return say(Text::reasonHandles);
        default:
            break;
    }
    const std::string text = systemText(code);
    return text.empty() ? say(Text::reasonNumber, {std::to_string(code)})
                        : say(Text::reasonOther, {std::to_string(code), text});
}

std::string reasonOf(const std::error_code& error) {
    return error.category() == std::system_category() ? reasonOf(error.value())
                                                      : reasonOfErrno(error);
}

}  // namespace tbfile
