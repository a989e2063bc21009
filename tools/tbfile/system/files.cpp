// What of reading and making files is the same on every system: temporary names, copies through
// memory, which outputs are refused, the reasons of the C library.
#include "system/files.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include "terminal/failure.h"
#include "terminal/terminal.h"

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
    return utf8Of(path.native());
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

OutputFile::OutputFile(Path target, Access access, bool replaces, Watch watch)
    : target_(std::move(target)),
      access_(std::move(access)),
      replaced_(target_),
      replaces_(replaces),
      watch_(std::move(watch)) {
    makeBeside(target_, [this](const Path& name) { return create(name); });
    takeAccess();
}

OutputFile::OutputFile(Path target, Access access, Path replaced, Watch watch)
    : target_(std::move(target)),
      access_(std::move(access)),
      replaced_(std::move(replaced)),
      inFolder_(true),
      watch_(std::move(watch)) {
    if (!create(target_)) throw Failure(Text::exists, {nameOf(target_)});
    takeAccess();
}

void makeBeside(const Path& target, const std::function<bool(const Path&)>& make) {
    // Names have 255 bytes or characters at most. A program that was killed may have left a file
    // with the number of this process.
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

/// For the C library's error numbers, which std::filesystem has on every system.
std::string reasonOfErrno(const std::error_code& error) {
    switch (error.value()) {
        case ENOENT:
        case ENOTDIR:
            return say(Text::reasonMissing);
        case EACCES:
        case EPERM:
        case EROFS:
            return say(Text::reasonDenied);
        case EEXIST:
        case ENOTEMPTY:
            return say(Text::reasonExists);
        case EISDIR:
            return say(Text::reasonFolder);
        case ENOSPC:
#if defined(EDQUOT)
        case EDQUOT:
#endif
            return say(Text::reasonFull);
        case EIO:
            return say(Text::reasonDevice);
        case ENAMETOOLONG:
            return say(Text::reasonLongName);
        case ELOOP:
            return say(Text::reasonLinks);
        case EFBIG:
            return say(Text::reasonLarge);
        case EBUSY:
        case ETXTBSY:
            return say(Text::reasonBusy);
        case EMFILE:
        case ENFILE:
            return say(Text::reasonHandles);
        case ENOMEM:
            return say(Text::noMemory);
        default:
            return otherReason(error.value(), error.message());
    }
}

std::string otherReason(int code, const std::string& english) {
    if (spokenLanguage() == Language::french || english.empty())
        return say(Text::reasonNumber, {std::to_string(code)});
    return say(Text::reasonOther, {std::to_string(code), english});
}

}  // namespace tbfile
