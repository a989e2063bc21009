// The search for a block that the index does not lead to: a terminator, then the identifier, both
// at whole words from where the search starts.
#include <algorithm>
#include <memory>
#include <new>

#include "file/block/fetch.h"

namespace toolbox::blocks {
namespace {

/// Small enough to stay in a processor's own memory between the system's copy and the search.
constexpr std::uint32_t kChunk = 256 * 1024;
constexpr std::uint32_t kWord = 4;
constexpr std::size_t kGroup = 64;

std::uint32_t wordAt(const char* bytes, std::size_t word) {
    return base::load<std::uint32_t>(bytes + word * kWord);
}

/// Index of the first terminator that `id` follows, among pairs of the words before `count`.
std::optional<std::size_t> findPair(const char* bytes, std::size_t count, std::uint32_t id) {
    std::size_t at = 0;
    // Groups are compared without a branch: as fast whatever the data, and side by side.
    for (; at + kGroup < count; at += kGroup) {
        std::uint32_t hits = 0;
        for (std::size_t i = at; i < at + kGroup; ++i)
            hits |= (wordAt(bytes, i) == kTerminator ? 1u : 0u) &
                    (wordAt(bytes, i + 1) == id ? 1u : 0u);
        if (hits) break;
    }
    for (; at + 1 < count; ++at)
        if (wordAt(bytes, at) == kTerminator && wordAt(bytes, at + 1) == id) return at;
    return std::nullopt;
}

std::uint64_t scanChunks(APIFile& file, std::uint64_t start, std::uint32_t id) {
    const std::uint64_t size = sizeOf(file);
    if (start >= size) return 0;
    const auto piece = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(kChunk, (size - start + kWord) / kWord * kWord));
    const auto chunk = std::make_unique_for_overwrite<char[]>(kWord + piece);
    std::uint32_t carried = 0;  // the last word of a chunk begins the next one
    for (std::uint64_t at = start;;) {
        const std::uint32_t got = readAt(file, at, chunk.get() + carried, piece);
        const std::size_t words = (carried + got) / kWord;
        if (const auto pair = findPair(chunk.get(), words, id))
            return at - carried + (*pair + 2) * kWord;
        if (got < piece) return 0;
        at += got;
        base::store(chunk.get(), wordAt(chunk.get(), words - 1));
        carried = kWord;
    }
}

}  // namespace

std::uint64_t scan(APIFile& file, std::uint64_t start, std::uint32_t id) {
    try {
        return scanChunks(file, start, id);
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

}  // namespace toolbox::blocks
