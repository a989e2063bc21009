// Finds the "$"s of a text, eight bytes at a time: words and values are too short for a call of
// memchr() to be worth while.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace toolbox::udkey {

static_assert(std::endian::native == std::endian::little, "the first byte is the lowest");

/// Calls visit(position) for each "$", in their order.
template <class Visit>
void forEachDollar(std::string_view text, Visit visit) {
    constexpr std::uint64_t kEach = 0x0101010101010101U;
    constexpr std::uint64_t kLow = 0x7F * kEach;
    std::size_t at = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + at, 8);
        bytes ^= std::uint64_t{'$'} * kEach;
        // The high bit of each byte that is 0 now.
        std::uint64_t found = ~(((bytes & kLow) + kLow) | bytes | kLow);
        for (; found != 0; found &= found - 1)
            visit(at + static_cast<std::size_t>(std::countr_zero(found)) / 8);
    }
    for (; at < text.size(); ++at)
        if (text[at] == '$') visit(at);
}

}  // namespace toolbox::udkey
