// Where things stand in a block file. Words are 32-bit little-endian.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/codec.h"
#include "toolbox/records.h"

namespace toolbox::blocks {

inline constexpr std::uint32_t kTerminator = 0xFFFFFFFF;
inline constexpr std::uint32_t kIndexId = 0xFFFFFFEF;
inline constexpr std::uint32_t kFormatWritten = 210;
inline constexpr std::uint32_t kOldestFormat = 100;
inline constexpr std::uint32_t kWholeWords = 1;  ///< mask bit: every block is whole words long

inline constexpr std::uint32_t kHeaderBytes = 160;
inline constexpr std::uint32_t kOldHeaderBytes = 156;
inline constexpr std::uint32_t kDescriptionBytes = 128;
inline constexpr std::uint32_t kEntryBytes = 8;

/// Offsets of the header's fields.
namespace field {
inline constexpr std::size_t kVersion = 0;
inline constexpr std::size_t kMask = 4;
inline constexpr std::size_t kDescription = 8;
inline constexpr std::size_t kDates = 136;  ///< creation, time stamp, net
inline constexpr std::size_t kIndexOffset = 148;
inline constexpr std::size_t kFormat = 152;  ///< in format version 100 the terminator
inline constexpr std::size_t kEnd = 156;
}  // namespace field

/// Bytes before and after the data of a block as written.
inline constexpr std::uint32_t kHeadBytes = 4 + kDescriptionBytes + 4;
inline constexpr std::uint32_t kTailBytes = 12;
static_assert(kHeadBytes == RecordBuffer::kRoomBefore && kTailBytes == RecordBuffer::kRoomAfter);

/// The smallest block of any format version.
inline constexpr std::uint32_t kSmallestBlock = 4 + 64 + 4 + 4;

/// No file is made larger: SeekTo takes a signed 32-bit offset on the smallest target.
inline constexpr std::uint64_t kMostBytes = 0x7FFFFFFF;

/// Memory that a length in a file may ask for without the file being asked for its size.
inline constexpr std::uint32_t kAllowance = 1024 * 1024;

/// How a block of some format version is laid out.
struct Layout {
    std::uint32_t description;
    std::uint32_t tail;

    explicit constexpr Layout(std::uint32_t format)
        : description(format >= 210 ? kDescriptionBytes : 64),
          tail(format >= 210 ? 12 : (format >= 200 ? 8 : 4)) {}

    /// From the start of the block's identifier to its data.
    [[nodiscard]] constexpr std::uint32_t head() const { return 4 + description + 4; }
};

/// Copies text into a field that is filled up with zeros; what does not fit is cut.
inline void putText(char* field, std::string_view text) {
    const std::size_t kept = std::min<std::size_t>(text.size(), kDescriptionBytes);
    // A whole field of known size takes a few stores, its rest of unknown size a slow loop.
    std::memset(field, 0, kDescriptionBytes);
    if (kept > 0) std::memcpy(field, text.data(), kept);
}

/// The text of a field: up to its first zero byte.
inline std::string_view textIn(const char* field, std::size_t size) {
    const void* end = std::memchr(field, 0, size);
    return {field, end ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : size};
}

}  // namespace toolbox::blocks
