#include "platform/posix/expand.h"

#include <utility>

#include "base/lz_expand.h"

namespace toolbox::platform::posix {
namespace {

/// An open file of a file system, closed at the end of the scope.
class Opened {
  public:
    Opened(FileSystem& files, const char* name, std::uint32_t access, std::uint32_t share,
           std::uint32_t disposition)
        : files_(files) {
        if (files_.open(name, access, share, disposition, handle_) != ERROR_SUCCESS)
            handle_ = kNoFile;
    }
    ~Opened() { close(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    [[nodiscard]] bool valid() const { return handle_ != kNoFile; }
    [[nodiscard]] FileHandle handle() const { return handle_; }
    bool close() {
        const FileHandle open = std::exchange(handle_, kNoFile);
        return open == kNoFile || files_.close(open) == ERROR_SUCCESS;
    }

  private:
    FileSystem& files_;
    FileHandle handle_ = kNoFile;
};

}  // namespace

std::int32_t expandFile(FileSystem& files, const char* from, const char* to) {
    const Opened source(files, from, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    if (!source.valid()) return base::kLzBadInput;
    Opened target(files, to, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!target.valid()) return base::kLzBadOutput;

    const auto read = [&](std::span<std::byte> room) -> std::ptrdiff_t {
        std::uint32_t got = 0;
        const auto n = static_cast<std::uint32_t>(room.size());
        const ErrorCode error = files.read(source.handle(), room.data(), n, got);
        return error == ERROR_SUCCESS ? static_cast<std::ptrdiff_t>(got) : -1;
    };
    const auto write = [&](std::span<const std::byte> bytes) {
        std::uint32_t written = 0;
        const auto n = static_cast<std::uint32_t>(bytes.size());
        const ErrorCode error = files.write(target.handle(), bytes.data(), n, written);
        return error == ERROR_SUCCESS && written == n;
    };
    const std::int32_t result = base::expandLz(read, write);
    return target.close() ? result : base::kLzWrite;
}

}  // namespace toolbox::platform::posix
