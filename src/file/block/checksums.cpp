// The list's data is words: the version of the list, its own offset, offset, length and sum of the
// index, the sum of the header, the number of rows, four words for each row, and last the sum of
// all of the block before.
#include "file/block/checksums.h"

#include <algorithm>
#include <array>

#include "base/crc32c.h"
#include "file/block/encoding.h"

namespace toolbox::blocks {
namespace {

using base::load;
using base::store;

constexpr std::uint32_t kListVersion = 1;
constexpr std::uint32_t kFixedBytes = 7 * 4;
constexpr std::uint32_t kRowBytes = sizeof(BlockSum);
constexpr std::uint32_t kSumBytes = 4;
constexpr std::string_view kDescription = "Checksums";

// Rows go to and from the disk as they stand in memory.
static_assert(kRowBytes == 16 && offsetof(BlockSum, sum) == 12);

/// The last word of a list with such data: over the head of its block and the data before.
std::uint32_t ownSum(std::span<const char> data) {
    const auto length = static_cast<std::uint32_t>(data.size() + kSumBytes);
    char head[kHeadBytes];
    encodeHead(head, kChecksumsId, kDescription, length);
    return base::crc32c(data, base::crc32c(head));
}

}  // namespace

std::uint64_t checksumBytes(std::uint64_t rows) {
    return kHeadBytes + kFixedBytes + kRowBytes * rows + kSumBytes + kTailBytes;
}

std::uint32_t headerSum(std::span<const char, kHeaderBytes> header) {
    const std::uint32_t before = base::crc32c(header.first(field::kIndexOffset));
    return base::crc32c(header.subspan(field::kFormat), before);
}

BlockSum KeptSums::find(const BlocItem& entry) const {
    // Whoever writes with commits in between still writes at rising offsets.
    const auto found = std::ranges::lower_bound(kept_, entry.offset, {}, &BlockSum::offset);
    const bool isKept = found != kept_.end() && found->offset == entry.offset;
    return isKept && found->id == entry.id ? *found : BlockSum{entry.id, entry.offset, 0, 0};
}

BlockSum sumOf(const TarvBlocFile& block, std::uint32_t offset) {
    const RecordBuffer& data = RecordParts::buffer(block);
    const std::uint32_t n = block.getLen();
    char head[kHeadBytes];
    char tail[kTailBytes];
    encodeHead(head, block);
    encodeTail(tail, block);
    const std::uint32_t before = base::crc32c({data.data(), n}, base::crc32c(head));
    const std::uint32_t sum = base::crc32c(tail, before);
    return {static_cast<std::uint32_t>(block.getID()), offset, kHeadBytes + n + kTailBytes, sum};
}

TarvBlocFile encode(const ChecksumList& list) {
    const std::size_t rowBytes = list.rows.size() * kRowBytes;
    std::vector<char> data(kFixedBytes + rowBytes + kSumBytes);
    const std::array<std::uint32_t, 7> fixed = {kListVersion,
                                                list.offset,
                                                list.index.offset,
                                                list.index.length,
                                                list.index.sum,
                                                list.header,
                                                static_cast<std::uint32_t>(list.rows.size())};
    std::memcpy(data.data(), fixed.data(), kFixedBytes);
    if (rowBytes > 0) std::memcpy(data.data() + kFixedBytes, list.rows.data(), rowBytes);
    const std::size_t summed = kFixedBytes + rowBytes;
    store(data.data() + summed, ownSum({data.data(), summed}));

    TarvBlocFile block;
    block.setID(kChecksumsId);
    block.setDescription(RWCString(kDescription));
    block.VarRecord::setData(static_cast<unsigned long>(data.size()), data.data());
    return block;
}

std::optional<ChecksumList> decodeChecksums(std::span<const char> block) {
    constexpr std::size_t kLeast = kHeadBytes + kFixedBytes + kSumBytes + kTailBytes;
    if (block.size() < kLeast || load<std::uint32_t>(block.data()) != kChecksumsId) return {};
    const auto n = load<std::uint32_t>(block.data() + kHeadBytes - 4);
    if (n != block.size() - kHeadBytes - kTailBytes) return {};
    const std::size_t summed = kHeadBytes + n - kSumBytes;
    if (base::crc32c(block.first(summed)) != load<std::uint32_t>(block.data() + summed)) return {};

    std::array<std::uint32_t, 7> fixed{};
    const char* const data = block.data() + kHeadBytes;
    std::memcpy(fixed.data(), data, kFixedBytes);
    const std::uint64_t rows = fixed[6];
    if (fixed[0] != kListVersion || checksumBytes(rows) != block.size()) return {};
    ChecksumList list{fixed[1], {kIndexId, fixed[2], fixed[3], fixed[4]}, fixed[5], {}};
    list.rows.resize(static_cast<std::size_t>(rows));
    if (rows > 0) std::memcpy(list.rows.data(), data + kFixedBytes, list.rows.size() * kRowBytes);
    return list;
}

}  // namespace toolbox::blocks
