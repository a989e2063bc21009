#include "platform/posix/expand.h"

#include "base/lz_expand.h"
#include "platform/scoped_file.h"

namespace toolbox::platform::posix {

std::int32_t expandFile(FileSystem& files, const char* from, const char* to) {
    ScopedFile source(files, from, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    if (!source.valid()) return base::kLzBadInput;
    ScopedFile target(files, to, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!target.valid()) return base::kLzBadOutput;

    const auto read = [&](std::span<std::byte> room) -> std::ptrdiff_t {
        std::uint32_t got = 0;
        const ErrorCode error = source.read(room.data(), room.size(), got);
        return error == ERROR_SUCCESS ? static_cast<std::ptrdiff_t>(got) : -1;
    };
    const auto write = [&](std::span<const std::byte> bytes) {
        return target.write(bytes.data(), bytes.size()) == ERROR_SUCCESS;
    };
    const std::int32_t result = base::expandLz(read, write);
    return target.close() == ERROR_SUCCESS ? result : base::kLzWrite;
}

}  // namespace toolbox::platform::posix
