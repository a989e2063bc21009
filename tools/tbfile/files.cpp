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

OutputFile::OutputFile(Path target, bool replaces, Watch watch)
    : target_(std::move(target)),
      replaced_(target_),
      replaces_(replaces),
      watch_(std::move(watch)) {
    makeBeside(target_, [this](const Path& name) { return create(name); });
}

OutputFile::OutputFile(Path target, Path replaced, Watch watch)
    : target_(std::move(target)),
      replaced_(std::move(replaced)),
      inFolder_(true),
      watch_(std::move(watch)) {
    if (!create(target_)) throw Failure(Text::exists, {nameOf(target_)});
}

void makeBeside(const Path& target, const std::function<bool(const Path&)>& make) {
    // Names have 255 bytes or characters at most. What an earlier program left behind may have the
    // name of this process.
    constexpr std::size_t kKept = 200;
    constexpr int kAttempts = 1000;
    const Path start = target.parent_path() / target.filename().native().substr(0, kKept);
    const std::string mark = ".~tbfile" + std::to_string(processNumber());
    for (int i = 0; i < kAttempts; ++i) {
        Path name = start;
        name += i == 0 ? mark : mark + '-' + std::to_string(i);
        if (make(name)) return;
    }
    throw Failure(Text::cannotCreate, {nameOf(target), say(Text::reasonExists)});
}

void checkTarget(const Path& target, const Path& input, bool replaces) {
    std::error_code error;
    if (std::filesystem::equivalent(target, input, error))
        throw Failure(Text::outputIsInput, {nameOf(target)});
    if (!target.has_filename())
        throw Failure(Text::cannotCreate, {nameOf(target), say(Text::reasonFolder)});
    const auto status = std::filesystem::symlink_status(target, error);
    if (status.type() == std::filesystem::file_type::none)
        throw Failure(Text::cannotCreate, {nameOf(target), reasonOf(error)});
    if (!std::filesystem::exists(status)) return;
    if (!std::filesystem::is_regular_file(status))
        throw Failure(Text::notReplaced, {nameOf(target)});
    if (!replaces) throw Failure(Text::exists, {nameOf(target)});
}

}  // namespace tbfile
