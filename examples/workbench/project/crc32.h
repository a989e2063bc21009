// A checksum that tells whether bytes are those that were written.
#pragma once

#include <cstdint>
#include <string_view>

/// The CRC-32 of IEEE 802.3 (the frame check sequence of clause 3.2.9), least significant bit
/// first, as most file formats use it: 0xCBF43926 for "123456789".
[[nodiscard]] std::uint32_t crc32(std::string_view bytes);
