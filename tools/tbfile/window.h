// Reads a file here and there with few calls: a part of it is kept.
#pragma once

#include <functional>
#include <memory>

#include "source.h"

namespace tbfile {

/// The file became shorter while it was read.
struct Shortened {};

class Window {
  public:
    /// What is told how far reading has come, in bytes from the start.
    using Progress = std::function<void(std::uint64_t)>;
    enum class Reads { whatIsAsked, everything };

    /// With Reads::everything, what lies between two places asked for is read too, so that a place
    /// that the device cannot read is found; where there is nothing any more Shortened is thrown.
    explicit Window(const Source& source, Reads reads = Reads::whatIsAsked, Progress progress = {});

    /// `n` bytes at `offset`, at most kMost; null when the file ends before. Valid until the next
    /// call.
    [[nodiscard]] const char* at(std::uint64_t offset, std::size_t n);
    /// The longest piece from `offset` on that is at hand, up to `most` bytes; none at the end.
    [[nodiscard]] std::size_t piece(std::uint64_t offset, std::uint64_t most, const char*& bytes);

    [[nodiscard]] std::uint64_t size() const { return size_; }
    /// Reads up to the end when everything is to be read.
    void finish();

    static constexpr std::size_t kMost = 256 * 1024;

  private:
    static constexpr std::size_t kSmall = 1024;

    void load(std::uint64_t offset, std::size_t n);
    void loadNext();

    const Source& source_;
    std::uint64_t size_;
    Reads reads_;
    Progress progress_;
    std::unique_ptr<char[]> bytes_;
    std::uint64_t start_ = 0;
    std::size_t held_ = 0;
    std::size_t ahead_ = kSmall;  ///< how much is read at once
    std::uint64_t asked_ = 0;     ///< end of what was asked for last
    std::uint64_t furthest_ = 0;  ///< end of what was read, when everything is
};

}  // namespace tbfile
