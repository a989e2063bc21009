// An open file with two kinds of reads: at its position, and at an offset.
#include "file/shared_file.h"

#include "file/file_system.h"

namespace toolbox {

using platform::ErrorCode;
using platform::SeekFrom;

SharedFile::~SharedFile() {
    files().close(handle_);
}

ErrorCode SharedFile::restorePosition() {
    if (!position_) return ERROR_SUCCESS;
    std::uint64_t now = 0;
    const ErrorCode error =
        files().seek(handle_, static_cast<std::int64_t>(*position_), SeekFrom::begin, now);
    if (error == ERROR_SUCCESS) position_.reset();
    return error;
}

ErrorCode SharedFile::read(void* buffer, std::uint32_t n, std::uint32_t& got) {
    got = 0;
    if (const ErrorCode error = restorePosition()) return error;
    return files().read(handle_, buffer, n, got);
}

ErrorCode SharedFile::readAt(std::uint64_t offset, void* buffer, std::uint32_t n,
                             std::uint32_t& got) {
    got = 0;
    if (!position_) {
        std::uint64_t now = 0;
        if (const ErrorCode error = files().seek(handle_, 0, SeekFrom::current, now)) return error;
        position_ = now;
    }
    return files().readAt(handle_, offset, buffer, n, got);
}

ErrorCode SharedFile::write(const void* buffer, std::uint32_t n, std::uint32_t& written) {
    written = 0;
    if (const ErrorCode error = restorePosition()) return error;
    return files().write(handle_, buffer, n, written);
}

ErrorCode SharedFile::seek(std::int64_t distance, SeekFrom from, std::uint64_t& position) {
    if (from == SeekFrom::current) {
        if (position_ && distance == 0) {
            position = *position_;
            return ERROR_SUCCESS;
        }
        if (const ErrorCode error = restorePosition()) return error;
    }
    const ErrorCode error = files().seek(handle_, distance, from, position);
    if (error == ERROR_SUCCESS) position_.reset();
    return error;
}

ErrorCode SharedFile::size(std::uint64_t& bytes) const {
    return files().size(handle_, bytes);
}

ErrorCode SharedFile::flush() const {
    return files().flush(handle_);
}

ErrorCode SharedFile::takeFacts(platform::FileHandle from) const {
    return files().copyFacts(from, handle_);
}

}  // namespace toolbox
