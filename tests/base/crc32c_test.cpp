#include "base/crc32c.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

using namespace toolbox::base;

namespace {

// RFC 3720, appendix B.4, and the check value of the catalogues of such sums.
TEST(Crc32c, HasThePublishedValues) {
    std::string rising(32, '\0');
    std::iota(rising.begin(), rising.end(), '\0');
    const std::string falling(rising.rbegin(), rising.rend());
    const struct {
        std::string bytes;
        std::uint32_t sum;
    } cases[] = {{"", 0},
                 {"123456789", 0xE3069283},
                 {std::string(32, '\0'), 0x8A9136AA},
                 {std::string(32, '\xFF'), 0x62A8AB43},
                 {rising, 0x46DD794E},
                 {falling, 0x113FDB5C}};
    for (const auto& [bytes, sum] : cases) {
        EXPECT_EQ(crc32c(bytes), sum);
        EXPECT_EQ(crc32cByTables(bytes), sum);
        if (hasCrc32cInstruction()) {
            EXPECT_EQ(crc32cByInstruction(bytes), sum);
        }
    }
}

TEST(Crc32c, IsTheSameEitherWayAndInPieces) {
    std::string bytes(20000, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    for (std::size_t n = 0; n < bytes.size(); n += 1 + n / 9) {
        const std::span<const char> piece = std::span(bytes).subspan(n % 8, n / 2);
        const std::uint32_t sum = crc32cByTables(piece);
        if (hasCrc32cInstruction()) {
            EXPECT_EQ(crc32cByInstruction(piece), sum) << n;
        }
        const std::size_t half = piece.size() / 3;
        EXPECT_EQ(crc32c(piece.subspan(half), crc32c(piece.first(half))), sum) << n;
    }
}

}  // namespace
