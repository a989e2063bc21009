#include "window.h"

#include <algorithm>

namespace tbfile {
namespace {

/// Who asks for less than this behind the last place goes through the file; who asks for more
/// jumps, and gets a small piece.
constexpr std::uint64_t kNear = 2 * 1024;
constexpr std::size_t kSmall = 1024;

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

const char* Window::at(std::uint64_t offset, std::size_t n) {
    if (n > kMost || offset > size_ || n > size_ - offset) return nullptr;
    if (offset < start_ || offset + n > start_ + held_) {
        if (reads_ == Reads::everything)
            while (furthest_ + kMost < offset) load(furthest_, kMost);
        const bool follows = offset >= asked_ && offset <= asked_ + kNear;
        const bool everything = reads_ == Reads::everything && offset + n > furthest_;
        if (everything)
            load(std::min(offset, furthest_), kMost);
        else
            load(offset, follows ? kMost : std::max(kSmall, n));
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
        while (furthest_ < size_) {
            const std::uint64_t before = furthest_;
            load(furthest_, kMost);
            if (furthest_ == before) return;
        }
}

}  // namespace tbfile
