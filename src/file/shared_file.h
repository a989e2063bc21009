// The open file that copies of an APIFile share.
#pragma once

#include <cstdint>
#include <optional>

#include "toolbox/platform.h"

namespace toolbox {

/// Closes its handle at the end. Keeps the position that sequential calls see apart from where
/// reads at an offset leave the system's: it is put back before the next call that depends on it,
/// and costs nothing where the two kinds are not mixed.
class SharedFile {
  public:
    explicit SharedFile(platform::FileHandle handle) : handle_(handle) {}
    ~SharedFile();
    SharedFile(const SharedFile&) = delete;
    SharedFile& operator=(const SharedFile&) = delete;

    [[nodiscard]] platform::ErrorCode read(void* buffer, std::uint32_t n, std::uint32_t& got);
    [[nodiscard]] platform::ErrorCode readAt(std::uint64_t offset, void* buffer, std::uint32_t n,
                                             std::uint32_t& got);
    [[nodiscard]] platform::ErrorCode write(const void* buffer, std::uint32_t n,
                                            std::uint32_t& written);
    [[nodiscard]] platform::ErrorCode seek(std::int64_t distance, platform::SeekFrom from,
                                           std::uint64_t& position);
    [[nodiscard]] platform::ErrorCode size(std::uint64_t& bytes) const;
    [[nodiscard]] platform::ErrorCode flush() const;
    /// Takes over the times and attributes of another open file.
    [[nodiscard]] platform::ErrorCode takeFacts(platform::FileHandle from) const;

  private:
    platform::ErrorCode restorePosition();

    platform::FileHandle handle_;
    std::optional<std::uint64_t>
        position_;  ///< to put back; none while the system's is the right one
};

}  // namespace toolbox
