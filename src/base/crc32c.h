// CRC-32C, the cyclic redundancy check of Castagnoli's polynomial 0x1EDC6F41, as iSCSI uses it (RFC
// 3720, section 12.1): reflected, begun and ended with all bits inverted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace toolbox::base {

/// The check sum of bytes. `before` is the sum of what stands before them, so that pieces can be
/// summed one after another. Uses the processor's own instruction where it has one.
[[nodiscard]] std::uint32_t crc32c(std::span<const char> bytes, std::uint32_t before = 0);

// The two ways that it goes, for tests and benchmarks.
/// Whether crc32c() leaves the instruction aside. Not to be changed while another thread sums.
void useCrc32cTables(bool on);
[[nodiscard]] std::uint32_t crc32cByTables(std::span<const char> bytes, std::uint32_t before = 0);
/// Whether this processor has the instruction, which crc32cByInstruction() needs.
[[nodiscard]] bool hasCrc32cInstruction();
[[nodiscard]] std::uint32_t crc32cByInstruction(std::span<const char> bytes,
                                                std::uint32_t before = 0);

}  // namespace toolbox::base
