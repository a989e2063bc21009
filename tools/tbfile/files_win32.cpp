#include <algorithm>

#include "failure.h"
#include "files.h"
#include "terminal.h"
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

}  // namespace

InputFile::InputFile(Path path) : path_(std::move(path)) {
    const HANDLE opened = ::CreateFileW(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_SHARING_VIOLATION) throw Failure(Text::inUse, {nameOf(path_)});
        if (std::error_code ignored; std::filesystem::is_directory(path_, ignored))
            throw Failure(Text::notAFile, {nameOf(path_)});
        fail(Text::cannotOpen, path_, code);
    }
    handle_ = reinterpret_cast<std::intptr_t>(opened);
    LARGE_INTEGER size{};
    const bool known = ::GetFileType(opened) == FILE_TYPE_DISK && ::GetFileSizeEx(opened, &size);
    if (!known) {
        ::CloseHandle(opened);
        throw Failure(Text::notAFile, {nameOf(path_)});
    }
    size_ = static_cast<std::uint64_t>(size.QuadPart);
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

void OutputFile::create() {
    const HANDLE opened = ::CreateFileW(beside_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) failNow(Text::cannotCreate, beside_);
    handle_ = reinterpret_cast<std::intptr_t>(opened);
}

void OutputFile::close() {
    ::CloseHandle(handleOf(handle_));
    handle_ = -1;
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
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replaces_ ? MOVEFILE_REPLACE_EXISTING : 0u);
    if (!::MoveFileExW(beside_.c_str(), target_.c_str(), flags)) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_ALREADY_EXISTS) throw Failure(Text::exists, {nameOf(target_)});
        fail(Text::cannotCreate, target_, code);
    }
    beside_.clear();
}

OutputFile::OutputFile(Path target, bool replaces, Watch watch)
    : target_(std::move(target)), replaces_(replaces), watch_(std::move(watch)) {
    beside_ = target_;
    beside_ += L".~tbfile" + std::to_wstring(::GetCurrentProcessId());
    create();
}

OutputFile::~OutputFile() {
    if (handle_ != -1) close();
    if (!beside_.empty()) ::DeleteFileW(beside_.c_str());
}

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
        default:
            return say(Text::reasonOther, {std::to_string(code)});
    }
}

}  // namespace tbfile
