#include "files.h"

#include <algorithm>
#include <memory>

#include "failure.h"
#include "terminal.h"

namespace tbfile {

Path pathOf(std::string_view utf8) {
#if defined(_WIN32)
    return Path(std::u8string(utf8.begin(), utf8.end()));
#else
    return Path(utf8);
#endif
}

std::string nameOf(const Path& path) {
#if defined(_WIN32)
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
#else
    return path.string();
#endif
}

void OutputFile::copied(std::uint64_t upTo) const {
    stopIfInterrupted();
    if (watch_) watch_(upTo);
}

void OutputFile::copyThrough(const InputFile& from, std::uint64_t offset, std::uint64_t n) {
    constexpr std::uint64_t kPiece = 256 * 1024;
    const auto size = static_cast<std::size_t>(std::min(n, kPiece));
    const auto piece = std::make_unique_for_overwrite<char[]>(size);
    while (n > 0) {
        const std::size_t got = from.readAt(
            offset, piece.get(), static_cast<std::size_t>(std::min<std::uint64_t>(n, size)));
        if (got == 0) throw Failure(Text::shortened, {nameOf(from.path())});
        write(piece.get(), got);
        offset += got;
        n -= got;
        copied(offset);
    }
}

void checkTarget(const Path& target, const Path& input, bool replaces) {
    std::error_code missing;
    if (std::filesystem::equivalent(target, input, missing))
        throw Failure(Text::outputIsInput, {nameOf(target)});
    if (!replaces && std::filesystem::exists(std::filesystem::symlink_status(target, missing)))
        throw Failure(Text::exists, {nameOf(target)});
}

}  // namespace tbfile
