// Expansion of files compressed with Windows' own LZ compression (names such as "setup.dl_").
//
// Layout: 14 bytes of header (signature, 'A', the character dropped from the name, the expanded
// size in 4 bytes), then groups of a flag byte and eight items, lowest bit first: 1 is a literal
// byte, 0 two bytes that repeat 3 to 18 bytes of the last 4096.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace toolbox::base {

// The codes of LZCopy.
inline constexpr std::int32_t kLzBadInput = -1;   ///< the source cannot be opened
inline constexpr std::int32_t kLzBadOutput = -2;  ///< the destination cannot be created
inline constexpr std::int32_t kLzRead = -3;       ///< reading fails, or the data ends too early
inline constexpr std::int32_t kLzWrite = -4;
inline constexpr std::int32_t kLzUnknownAlgorithm = -8;

inline constexpr std::size_t kLzHeaderSize = 14;

struct LzHeader {
    char algorithm;
    std::uint32_t expandedSize;
};
/// The header at the start of a file; nothing when the file is not compressed.
[[nodiscard]] std::optional<LzHeader> lzHeader(std::span<const std::byte> start);

/// Fills the span as far as there is data and returns the count, negative on failure.
using LzSource = std::function<std::ptrdiff_t(std::span<std::byte>)>;
/// Takes all the bytes; false on failure.
using LzSink = std::function<bool(std::span<const std::byte>)>;

/// Copies a source to a sink, expanding it when it is compressed. Returns the bytes written (at
/// most 0x7FFFFFFF, which then stands for more), or a negative code. Never writes more than the
/// header announces; bytes after the end of the data are ignored.
[[nodiscard]] std::int32_t expandLz(const LzSource& source, const LzSink& sink);

}  // namespace toolbox::base
