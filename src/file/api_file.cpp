// A file of the system: its error codes, and reads and writes with their reports.
#include <cstring>

#include "file/file_system.h"
#include "file/shared_file.h"
#include "toolbox/files.h"

using toolbox::SharedFile;
using toolbox::platform::ErrorCode;
using toolbox::platform::SeekFrom;

namespace {

constexpr unsigned long kNoOffset = 0xFFFFFFFFul;

bool fitsAnOffset(std::uint64_t position) {
    return position < kNoOffset;
}

/// The length of one transfer, which the system counts in 32 bits.
bool fitsATransfer(unsigned long n) {
    return n <= 0xFFFFFFFFul;
}

}  // namespace

APIFile::APIFile(const char* name, unsigned long access, unsigned long share,
                 unsigned long disposition) {
    const auto rights = static_cast<std::uint32_t>(access);
    const auto sharing = static_cast<std::uint32_t>(share);
    error_ = toolbox::platform::current().files->open(
        name, rights, sharing, static_cast<std::uint32_t>(disposition), handle_);
    if (error_ != ERROR_SUCCESS) {
        handle_ = kNone;
        return;
    }
    file_ = std::make_shared<SharedFile>(handle_);
    name_ = name;
    access_ = rights;
    share_ = sharing;
}

APIFile::APIFile() = default;
APIFile::APIFile(const APIFile&) = default;
APIFile& APIFile::operator=(const APIFile&) = default;
APIFile::~APIFile() = default;

int APIFile::failed(std::uint32_t code) {
    error_ = code;
    return 0;
}

unsigned long APIFile::CurOffset() {
    std::uint64_t position = 0;
    ErrorCode error = file_ ? file_->seek(0, SeekFrom::current, position) : ERROR_INVALID_HANDLE;
    if (error == ERROR_SUCCESS && !fitsAnOffset(position)) error = ERROR_FILE_TOO_LARGE;
    if (error == ERROR_SUCCESS) return static_cast<unsigned long>(position);
    failed(error);
    return kNoOffset;
}

int APIFile::Eof() const {
    return error_ == ERROR_HANDLE_EOF;
}

int APIFile::IsEmpty() {
    unsigned long long bytes = 0;
    return size(bytes) && bytes == 0;
}

int APIFile::SeekTo(long offset) {
    if (!file_) return failed(ERROR_INVALID_HANDLE);
    if (offset < 0) return failed(ERROR_NEGATIVE_SEEK);
    if (!fitsAnOffset(static_cast<std::uint64_t>(offset))) return failed(ERROR_FILE_TOO_LARGE);
    std::uint64_t position = 0;
    const ErrorCode error = file_->seek(offset, SeekFrom::begin, position);
    return error == ERROR_SUCCESS ? 1 : failed(error);
}

int APIFile::SeekToEnd() {
    if (!file_) return failed(ERROR_INVALID_HANDLE);
    std::uint64_t position = 0;
    if (const ErrorCode error = file_->seek(0, SeekFrom::end, position)) return failed(error);
    return fitsAnOffset(position) ? 1 : failed(ERROR_FILE_TOO_LARGE);
}

int APIFile::read(void* buffer, unsigned long n) {
    std::uint32_t got = 0;
    ErrorCode error = ERROR_SUCCESS;
    if (!fitsATransfer(n)) {
        error = ERROR_INVALID_PARAMETER;
    } else {
        error = file_ ? file_->read(buffer, static_cast<std::uint32_t>(n), got)
                      : ErrorCode{ERROR_INVALID_HANDLE};
        if (n > got) std::memset(static_cast<char*>(buffer) + got, 0, n - got);
    }
    if (error == ERROR_SUCCESS && got > 0) return 1;
    failed(error);
    toolbox::reportFileError(error);
    return 0;
}

int APIFile::write(const void* buffer, unsigned long n) {
    std::uint32_t written = 0;
    ErrorCode error = ERROR_INVALID_PARAMETER;
    if (fitsATransfer(n))
        error = file_ ? file_->write(buffer, static_cast<std::uint32_t>(n), written)
                      : ErrorCode{ERROR_INVALID_HANDLE};
    if (error == ERROR_SUCCESS && written < n) error = ERROR_DISK_FULL;
    if (error == ERROR_SUCCESS) return 1;
    failed(error);
    toolbox::reportFileError(error);
    return 0;
}

int APIFile::readAt(unsigned long long offset, void* buffer, unsigned long n, unsigned long& got) {
    got = 0;
    if (!file_) return failed(ERROR_INVALID_HANDLE);
    if (!fitsATransfer(n)) return failed(ERROR_INVALID_PARAMETER);
    std::uint32_t count = 0;
    const ErrorCode error = file_->readAt(offset, buffer, static_cast<std::uint32_t>(n), count);
    if (error != ERROR_SUCCESS) return failed(error);
    got = count;
    return 1;
}

int APIFile::size(unsigned long long& bytes) {
    bytes = 0;
    std::uint64_t found = 0;
    const ErrorCode error = file_ ? file_->size(found) : ErrorCode{ERROR_INVALID_HANDLE};
    if (error != ERROR_SUCCESS) return failed(error);
    bytes = found;
    return 1;
}

int APIFile::flush() {
    const ErrorCode error = file_ ? file_->flush() : ErrorCode{ERROR_INVALID_HANDLE};
    return error == ERROR_SUCCESS ? 1 : failed(error);
}
