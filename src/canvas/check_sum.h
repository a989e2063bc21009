// The check sum of stored drawings: CRC-32 as in IEEE 802.3.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace toolbox::canvas {

/// Of the bytes after those that gave `before`; 0 for none.
[[nodiscard]] inline std::uint32_t checkSum(std::string_view bytes, std::uint32_t before = 0) {
    static constexpr auto kTable = [] {
        constexpr std::uint32_t kPolynomial = 0xEDB88320;
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t i = 0; i < table.size(); ++i) {
            std::uint32_t rest = i;
            for (int bit = 0; bit < 8; ++bit) rest = rest & 1 ? rest >> 1 ^ kPolynomial : rest >> 1;
            table[i] = rest;
        }
        return table;
    }();
    std::uint32_t sum = ~before;
    for (const char c : bytes)
        sum = kTable[(sum ^ static_cast<unsigned char>(c)) & 0xFF] ^ sum >> 8;
    return ~sum;
}

}  // namespace toolbox::canvas
