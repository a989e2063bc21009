// Reading a file in pieces: as much as who goes through it will need, little for who jumps.
#include <algorithm>

#include "toolbox/block_frames.h"

namespace toolbox {
namespace {

/// Who asks for less than this after the last place goes through the file, and may come back as
/// far; who asks for more jumps, and gets a small piece.
constexpr std::uint64_t kNear = 2 * 1024;

}  // namespace

SystemFileSource::SystemFileSource(const char* name)
    : error_(platform::current().files->open(name, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING,
                                             file_)) {
    if (error_ == ERROR_SUCCESS) error_ = platform::current().files->size(file_, size_);
    if (error_ != ERROR_SUCCESS) size_ = 0;
}

SystemFileSource::~SystemFileSource() {
    if (file_ != platform::kNoFile) static_cast<void>(platform::current().files->close(file_));
}

std::size_t SystemFileSource::readAt(std::uint64_t offset, char* buffer, std::size_t n) const {
    std::uint32_t got = 0;
    const platform::ErrorCode error = platform::current().files->readAt(
        file_, offset, buffer, static_cast<std::uint32_t>(n), got);
    return error == ERROR_SUCCESS ? got : 0;
}

FileReader::FileReader(const FileSource& source, Reads reads, Progress progress)
    : source_(source),
      size_(source.size()),
      reads_(reads),
      progress_(std::move(progress)),
      bytes_(std::make_unique_for_overwrite<char[]>(kMost)) {}

void FileReader::load(std::uint64_t offset, std::size_t n) {
    start_ = offset;
    held_ = 0;
    if (stopped_) return;
    held_ = source_.readAt(offset, bytes_.get(), n);
    furthest_ = std::max(furthest_, offset + held_);
    if (progress_ && !progress_(offset)) {
        stopped_ = true;
        held_ = 0;
    }
}

void FileReader::loadNext() {
    const std::uint64_t before = furthest_;
    load(furthest_, kMost);
    // The file became shorter while it was read.
    if (furthest_ == before) stopped_ = true;
}

/// Loads a piece with `n` bytes at `offset`, and more where more will probably be asked for.
void FileReader::loadFor(std::uint64_t offset, std::size_t n) {
    if (reads_ == Reads::everything)
        while (!stopped_ && furthest_ + kMost < offset) loadNext();
    const bool follows = offset + kNear >= asked_ && offset <= asked_ + kNear;
    const bool everything = reads_ == Reads::everything && offset + n > furthest_;
    // The head of a block whose end is asked for is asked for again.
    const auto before =
        static_cast<std::size_t>(n + kNear <= kMost ? std::min<std::uint64_t>(offset, kNear) : 0);
    // Little by little more, for who goes here and there in turns.
    ahead_ = follows ? std::min(kMost, ahead_ * 4) : kSmall;
    if (everything)
        load(std::min(offset - before, furthest_), kMost);
    else if (follows)
        load(offset - before, std::min(kMost, before + std::max(ahead_, n)));
    else
        load(offset, std::max(ahead_, n));
    if (offset + n > start_ + held_) load(offset, kMost);
}

const char* FileReader::at(std::uint64_t offset, std::size_t n) {
    if (stopped_ || n > kMost || offset > size_ || n > size_ - offset) return nullptr;
    if (offset < start_ || offset + n > start_ + held_) loadFor(offset, n);
    asked_ = offset + n;
    const bool isHeld = !stopped_ && offset + n <= start_ + held_;
    return isHeld ? bytes_.get() + (offset - start_) : nullptr;
}

std::size_t FileReader::piece(std::uint64_t offset, std::uint64_t most, const char*& bytes) {
    if (stopped_ || offset >= size_ || most == 0) return 0;
    if (reads_ == Reads::everything)
        while (!stopped_ && furthest_ < offset) loadNext();
    if (offset < start_ || offset >= start_ + held_) {
        load(offset, static_cast<std::size_t>(std::min<std::uint64_t>(kMost, most)));
        if (held_ == 0) return 0;
    }
    asked_ = offset;
    bytes = bytes_.get() + (offset - start_);
    return static_cast<std::size_t>(std::min<std::uint64_t>(most, start_ + held_ - offset));
}

bool FileReader::finish() {
    if (reads_ == Reads::everything)
        while (!stopped_ && furthest_ < size_) loadNext();
    return !stopped_;
}

}  // namespace toolbox
