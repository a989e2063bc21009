// By a table of the remainders of all bytes.
#include "project/crc32.h"

#include <array>

namespace {

/// x^32 + x^26 + x^23 + x^22 + x^16 + x^12 + x^11 + x^10 + x^8 + x^7 + x^5 + x^4 + x^2 + x + 1,
/// the coefficient of x^31 in bit 0.
constexpr std::uint32_t kPolynomial = 0xEDB88320;

// A byte at a time, with the remainders of all bytes in a table: D. V. Sarwate, "Computation of
// Cyclic Redundancy Checks via Table Look-Up", Communications of the ACM 31 (1988), number 8.
constexpr std::array<std::uint32_t, 256> kRemainders = [] {
    std::array<std::uint32_t, 256> remainders{};
    for (std::uint32_t byte = 0; byte < remainders.size(); ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ (rest & 1 ? kPolynomial : 0);
        remainders[byte] = rest;
    }
    return remainders;
}();

}  // namespace

std::uint32_t crc32(std::string_view bytes) {
    std::uint32_t rest = 0xFFFFFFFF;
    for (const char byte : bytes)
        rest = rest >> 8 ^ kRemainders[(rest ^ static_cast<unsigned char>(byte)) & 0xFF];
    return ~rest;
}
