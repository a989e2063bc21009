#include "window.h"

#include <algorithm>

namespace tbfile {
namespace {

/// Who asks for less than this behind the last place goes through the file, and may come back as
/// far; who asks for more jumps, and gets a small piece.
constexpr std::uint64_t kNear = 2 * 1024;
}  // namespace

Window::Window(const Source& source, Reads reads, Progress progress)
    : source_(source),
      size_(source.size()),
      reads_(reads),
      progress_(std::move(progress)),
      bytes_(std::make_unique_for_overwrite<char[]>(kMost)) {}

void Window::load(std::uint64_t offset, std::size_t n) {
    start_ = offset;
    held_ = 0;
    held_ = source_.readAt(offset, bytes_.get(), n);
    furthest_ = std::max(furthest_, offset + held_);
    if (progress_) progress_(offset);
}

/// Loads what comes behind all that was read.
void Window::loadNext() {
    const std::uint64_t before = furthest_;
    load(furthest_, kMost);
    if (furthest_ == before) throw Shortened();
}

const char* Window::at(std::uint64_t offset, std::size_t n) {
    if (n > kMost || offset > size_ || n > size_ - offset) return nullptr;
    if (offset < start_ || offset + n > start_ + held_) {
        if (reads_ == Reads::everything)
            while (furthest_ + kMost < offset) loadNext();
        const bool follows = offset + kNear >= asked_ && offset <= asked_ + kNear;
        const bool everything = reads_ == Reads::everything && offset + n > furthest_;
        // The head of a block whose end is asked for is asked for again.
        const auto before = static_cast<std::size_t>(
            n + kNear <= kMost ? std::min<std::uint64_t>(offset, kNear) : 0);
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
    asked_ = offset + n;
    return offset + n <= start_ + held_ ? bytes_.get() + (offset - start_) : nullptr;
}

std::size_t Window::piece(std::uint64_t offset, std::uint64_t most, const char*& bytes) {
    if (offset >= size_ || most == 0) return 0;
    if (offset < start_ || offset >= start_ + held_) {
        load(offset, static_cast<std::size_t>(std::min<std::uint64_t>(kMost, most)));
        if (held_ == 0) return 0;
    }
    asked_ = offset;
    bytes = bytes_.get() + (offset - start_);
    return static_cast<std::size_t>(std::min<std::uint64_t>(most, start_ + held_ - offset));
}

void Window::finish() {
    if (reads_ == Reads::everything)
        while (furthest_ < size_) loadNext();
}

}  // namespace tbfile
