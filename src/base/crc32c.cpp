// By tables 16 bytes at a time, by the instruction a word at a time. The instruction takes three
// cycles but one can begin in each, so long stretches go as three streams side by side; what a
// stream's sum becomes when as many bytes follow as the next stream has is looked up in tables.
// Where the processor multiplies polynomials of 128 bits in pairs, long stretches are folded first:
// the remainder of what was read is moved 256 bytes on, which leaves 256 bytes with the same sum.
#include "base/crc32c.h"

#include <array>

#include "base/codec.h"

#if defined(__x86_64__) || defined(__i386__)
#include <nmmintrin.h>
#define TOOLBOX_HAS_CRC32 1
#endif
// Compilers for Windows do not keep the stack aligned for such registers.
#if defined(__x86_64__) && !defined(_WIN32)
#include <immintrin.h>
#define TOOLBOX_HAS_FOLDING 1
#endif

namespace toolbox::base {
namespace {

constexpr std::uint32_t kPolynomial = 0x82F63B78;  // reflected
using Table = std::array<std::uint32_t, 256>;

constexpr std::size_t kTables = 16;

/// tables[k][b]: what the byte b does to the sum when k more bytes follow it.
constexpr std::array<Table, kTables> makeTables() {
    std::array<Table, kTables> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ (sum & 1 ? kPolynomial : 0);
        tables[0][byte] = sum;
    }
    for (std::size_t k = 1; k < kTables; ++k)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t sum = tables[k - 1][byte];
            tables[k][byte] = (sum >> 8) ^ tables[0][sum & 0xFF];
        }
    return tables;
}

constexpr auto kByteTables = makeTables();

std::uint32_t oneByte(std::uint32_t sum, char byte) {
    return (sum >> 8) ^ kByteTables[0][(sum ^ static_cast<unsigned char>(byte)) & 0xFF];
}

/// What the four bytes of `word` do to the sum when `after` more bytes follow them.
std::uint32_t fourBytes(std::uint32_t word, std::size_t after) {
    return kByteTables[after + 3][word & 0xFF] ^ kByteTables[after + 2][(word >> 8) & 0xFF] ^
           kByteTables[after + 1][(word >> 16) & 0xFF] ^ kByteTables[after][word >> 24];
}

}  // namespace

std::uint32_t crc32cByTables(std::span<const char> bytes, std::uint32_t before) {
    std::uint32_t sum = ~before;
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= kTables; left -= kTables, at += kTables)
        sum = fourBytes(load<std::uint32_t>(at) ^ sum, 12) ^
              fourBytes(load<std::uint32_t>(at + 4), 8) ^
              fourBytes(load<std::uint32_t>(at + 8), 4) ^
              fourBytes(load<std::uint32_t>(at + 12), 0);
    for (; left > 0; --left) sum = oneByte(sum, *at++);
    return ~sum;
}

#if defined(TOOLBOX_HAS_CRC32)
namespace {

#if defined(__x86_64__)
using Word = std::uint64_t;
#else
using Word = std::uint32_t;
#endif

/// The sum as wide as the instruction gives it, so that nothing is narrowed between two.
[[gnu::target("sse4.2"), gnu::always_inline]] inline Word oneWord(Word sum, const char* at) {
#if defined(__x86_64__)
    return _mm_crc32_u64(sum, load<Word>(at));
#else
    return _mm_crc32_u32(sum, load<Word>(at));
#endif
}

/// Moves a sum over a fixed number of zero bytes: tables[k] has what byte k of the sum becomes.
using Shift = std::array<Table, 4>;

constexpr std::uint32_t overZeros(std::uint32_t sum, std::size_t count) {
    for (; count > 0; --count) sum = (sum >> 8) ^ kByteTables[0][sum & 0xFF];
    return sum;
}

constexpr Shift shiftOver(std::size_t count) {
    std::array<std::uint32_t, 32> ofBit{};
    for (std::size_t bit = 0; bit < 32; ++bit) ofBit[bit] = overZeros(1u << bit, count);
    Shift shift{};
    for (std::size_t k = 0; k < 4; ++k)
        for (std::size_t byte = 0; byte < 256; ++byte)
            for (std::size_t bit = 0; bit < 8; ++bit)
                if (byte >> bit & 1) shift[k][byte] ^= ofBit[8 * k + bit];
    return shift;
}

std::uint32_t shifted(const Shift& shift, std::uint32_t sum) {
    return shift[0][sum & 0xFF] ^ shift[1][(sum >> 8) & 0xFF] ^ shift[2][(sum >> 16) & 0xFF] ^
           shift[3][sum >> 24];
}

/// Sums three streams of `Bytes` each while there are as many.
template <std::size_t Bytes>
[[gnu::target("sse4.2")]] std::uint32_t byThrees(std::uint32_t sum, const char*& at,
                                                 std::size_t& left) {
    static_assert(Bytes % sizeof(Word) == 0);
    static constexpr Shift kShift = shiftOver(Bytes);
    for (; left >= 3 * Bytes; left -= 3 * Bytes, at += 3 * Bytes) {
        Word first = sum;
        Word second = 0;
        Word third = 0;
        for (std::size_t i = 0; i < Bytes; i += sizeof(Word)) {
            first = oneWord(first, at + i);
            second = oneWord(second, at + Bytes + i);
            third = oneWord(third, at + 2 * Bytes + i);
        }
        const auto both =
            shifted(kShift, static_cast<std::uint32_t>(first)) ^ static_cast<std::uint32_t>(second);
        sum = shifted(kShift, both) ^ static_cast<std::uint32_t>(third);
    }
    return sum;
}

[[gnu::target("sse4.2")]] std::uint32_t byInstruction(std::uint32_t sum, const char* at,
                                                      std::size_t left) {
    constexpr std::size_t kLong = 2048;
    constexpr std::size_t kShort = 64;
    sum = byThrees<kLong>(sum, at, left);
    sum = byThrees<kShort>(sum, at, left);
    Word words = sum;
    for (; left >= sizeof(Word); left -= sizeof(Word), at += sizeof(Word))
        words = oneWord(words, at);
    sum = static_cast<std::uint32_t>(words);
    for (; left > 0; --left) sum = _mm_crc32_u8(sum, static_cast<unsigned char>(*at++));
    return sum;
}

#if defined(TOOLBOX_HAS_FOLDING)

constexpr std::size_t kFold = 256;  ///< bytes that are folded at once
constexpr std::size_t kVectors = kFold / sizeof(__m256i);

/// What moves a remainder on by so many bits: the power of x by the polynomial, reflected.
constexpr long long powerOfX(std::size_t exponent) {
    std::uint32_t power = 0x80000000;
    for (; exponent > 0; --exponent) power = (power >> 1) ^ (power & 1 ? kPolynomial : 0);
    return static_cast<long long>(power) << 1;
}

[[gnu::target("avx2"), gnu::always_inline]] inline __m256i vectorAt(const char* at) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
}

/// At least kFold bytes.
[[gnu::target("avx2,vpclmulqdq,sse4.2")]] std::uint32_t byFolding(std::uint32_t sum, const char* at,
                                                                  std::size_t left) {
    constexpr std::size_t kBits = kFold * 8;
    constexpr long long kLow = powerOfX(kBits + 32);
    constexpr long long kHigh = powerOfX(kBits - 32);
    const __m256i powers = _mm256_set_epi64x(kHigh, kLow, kHigh, kLow);
    __m256i held[kVectors];
    for (std::size_t i = 0; i < kVectors; ++i) held[i] = vectorAt(at + i * sizeof(__m256i));
    held[0] =
        _mm256_xor_si256(held[0], _mm256_set_epi32(0, 0, 0, 0, 0, 0, 0, static_cast<int>(sum)));
    for (at += kFold, left -= kFold; left >= kFold; at += kFold, left -= kFold)
        for (std::size_t i = 0; i < kVectors; ++i) {
            const __m256i low = _mm256_clmulepi64_epi128(held[i], powers, 0x00);
            const __m256i high = _mm256_clmulepi64_epi128(held[i], powers, 0x11);
            const __m256i next = vectorAt(at + i * sizeof(__m256i));
            held[i] = _mm256_xor_si256(_mm256_xor_si256(low, high), next);
        }
    alignas(__m256i) char rest[kFold];
    for (std::size_t i = 0; i < kVectors; ++i)
        _mm256_store_si256(reinterpret_cast<__m256i*>(rest + i * sizeof(__m256i)), held[i]);
    return byInstruction(byInstruction(0, rest, kFold), at, left);
}

bool hasFolding() {
    static const bool kHas = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("vpclmulqdq");
    return kHas;
}

#endif

}  // namespace

bool hasCrc32cInstruction() {
    return __builtin_cpu_supports("sse4.2");
}

std::uint32_t crc32cByInstruction(std::span<const char> bytes, std::uint32_t before) {
#if defined(TOOLBOX_HAS_FOLDING)
    constexpr std::size_t kWorthIt = 4 * kFold;
    if (bytes.size() >= kWorthIt && hasFolding())
        return ~byFolding(~before, bytes.data(), bytes.size());
#endif
    return ~byInstruction(~before, bytes.data(), bytes.size());
}
#else
bool hasCrc32cInstruction() {
    return false;
}

std::uint32_t crc32cByInstruction(std::span<const char> bytes, std::uint32_t before) {
    return crc32cByTables(bytes, before);
}
#endif

namespace {

using Way = std::uint32_t (*)(std::span<const char> bytes, std::uint32_t before);

/// The processor is asked at the first use, which may be before this file's variables are made.
Way& way() {
    static Way chosen = hasCrc32cInstruction() ? crc32cByInstruction : crc32cByTables;
    return chosen;
}

}  // namespace

void useCrc32cTables(bool on) {
    way() = on || !hasCrc32cInstruction() ? crc32cByTables : crc32cByInstruction;
}

std::uint32_t crc32c(std::span<const char> bytes, std::uint32_t before) {
    return way()(bytes, before);
}

}  // namespace toolbox::base
