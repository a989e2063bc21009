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

// Rows go to and from the disk as they stand in memory.
static_assert(kRowBytes == 16 && offsetof(BlockSum, sum) == 12);

/// The last word of a list with such data: over the head of its block and the data before.
std::uint32_t ownSum(std::span<const char> data) {
    const auto length = static_cast<std::uint32_t>(data.size() + kSumBytes);
    char head[kHeadBytes];
    encodeHead(head, kChecksumsId, kListDescription, length);
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

std::vector<BlockSum> KeptSums::rowsOf(std::span<const BlocItem> entries) const {
    std::vector<BlockSum> rows;
    rows.reserve(entries.size());
    auto next = kept_.begin();  // entries mostly come in the order of writing
    for (const BlocItem& entry : entries) {
        // Whoever writes with commits in between still writes at rising offsets.
        if (next == kept_.end() || next->offset != entry.offset)
            next = std::ranges::lower_bound(kept_, entry.offset, {}, &BlockSum::offset);
        const bool isKept =
            next != kept_.end() && next->offset == entry.offset && next->id == entry.id;
        rows.push_back(isKept ? *next++ : BlockSum{entry.id, entry.offset, 0, 0});
    }
    return rows;
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
    const std::size_t summed = kFixedBytes + rowBytes;
    const auto n = static_cast<std::uint32_t>(summed + kSumBytes);
    const std::uint32_t capacity = std::max(n, kRoomFrom);
    RecordBuffer data(capacity);
    const std::array<std::uint32_t, 7> fixed = {kListVersion,
                                                list.offset,
                                                list.index.offset,
                                                list.index.length,
                                                list.index.sum,
                                                list.header,
                                                static_cast<std::uint32_t>(list.rows.size())};
    std::memcpy(data.data(), fixed.data(), kFixedBytes);
    if (rowBytes > 0) std::memcpy(data.data() + kFixedBytes, list.rows.data(), rowBytes);
    store(data.data() + summed, ownSum({data.data(), summed}));

    TarvBlocFile block;
    block.setID(kChecksumsId);
    block.setDescription(RWCString(kListDescription));
    RecordParts::adopt(block, std::move(data), capacity, n);
    return block;
}

std::vector<char> wholeList(const ChecksumList& list) {
    const TarvBlocFile block = encode(list);
    std::vector<char> bytes(kHeadBytes + block.getLen() + kTailBytes);
    encodeHead(bytes.data(), block);
    std::memcpy(bytes.data() + kHeadBytes, block.getPData(), block.getLen());
    encodeTail(bytes.data() + kHeadBytes + block.getLen(), block);
    return bytes;
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
