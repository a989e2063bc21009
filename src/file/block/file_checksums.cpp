// A list belongs to the file when it lies where it says, and the index where it says, too: whoever
// copies blocks without knowing the list, or appends some, moves one of them. What only damages the
// index or the header moves neither.
#include "file/block/file_checksums.h"

#include <algorithm>
#include <new>

namespace toolbox {
namespace {

using namespace toolbox::blocks;

/// A block's bytes; empty when no block with that identifier ends within the file.
std::vector<char> wholeBlock(const FileBytes& file, std::uint64_t offset, std::uint32_t id) {
    char head[kHeadBytes];
    if (file.read(offset, head, kHeadBytes) < kHeadBytes) return {};
    if (base::load<std::uint32_t>(head) != id) return {};
    const auto n = base::load<std::uint32_t>(head + kHeadBytes - 4);
    const std::uint64_t whole = std::uint64_t{n} + kHeadBytes + kTailBytes;
    if (offset > file.size || whole > file.size - offset || whole > kMostBytes) return {};
    std::vector<char> bytes(static_cast<std::size_t>(whole));
    if (file.read(offset, bytes.data(), bytes.size()) < whole) return {};
    return bytes;
}

std::vector<BlocItem> entriesIn(std::span<const char> index) {
    if (index.size() < kHeadBytes + kTailBytes) return {};
    std::vector<BlocItem> entries((index.size() - kHeadBytes - kTailBytes) / kEntryBytes);
    if (!entries.empty())
        std::memcpy(entries.data(), index.data() + kHeadBytes, entries.size() * kEntryBytes);
    return entries;
}

/// Whether an index has the entries that a list has, but in another order. Damage does not sort:
/// somebody wrote the file anew.
bool isReordered(std::span<const char> index, const std::vector<BlockSum>& rows) {
    std::vector<BlocItem> entries = entriesIn(index);
    if (entries.size() != rows.size()) return false;
    std::vector<BlocItem> listed;
    listed.reserve(rows.size());
    for (const BlockSum& row : rows) listed.push_back({row.id, row.offset});
    const auto same = [](const BlocItem& a, const BlocItem& b) {
        return a.id == b.id && a.offset == b.offset;
    };
    if (std::ranges::equal(entries, listed, same)) return false;
    std::ranges::sort(entries, {}, &BlocItem::offset);
    std::ranges::sort(listed, {}, &BlocItem::offset);
    return std::ranges::equal(entries, listed, same);
}

bool isHeaderSum(const FileBytes& file, std::uint32_t sum) {
    char header[kHeaderBytes];
    return file.read(0, header, kHeaderBytes) == kHeaderBytes && headerSum(header) == sum;
}

}  // namespace

bool FileChecksums::proveLayout(const FileBytes& file, std::uint32_t indexOffset) try {
    const std::vector<char> index = wholeBlock(file, indexOffset, kIndexId);
    return !index.empty() && FileChecksums(file, indexOffset, entriesIn(index)).proves();
} catch (const std::bad_alloc&) {
    return false;
}

FileChecksums::FileChecksums(const FileBytes& file, std::uint32_t indexOffset,
                             std::span<const BlocItem> entries) {
    const std::uint64_t bytes = checksumBytes(entries.size());
    const std::uint64_t before = indexOffset > bytes ? indexOffset - bytes : 0;
    // Not by the index's own table, which a file without a list may never need.
    const auto entry = std::ranges::find_if(entries, [&](const BlocItem& each) {
        return each.id == kChecksumsId || (each.offset == before && before != 0);
    });
    if (entry == entries.end()) return;
    if (entry->id == kChecksumsId) {
        state_ = TarvFileRead::ChecksumsDamaged;
        place_ = entry->offset;
        if (look(file, indexOffset, entry->offset)) return;
    }
    if (before != 0) look(file, indexOffset, before);
}

FileChecksums::FileChecksums(const FileBytes& file, std::uint32_t indexOffset,
                             std::uint64_t place) {
    look(file, indexOffset, place);
}

/// Whether there is a list.
bool FileChecksums::look(const FileBytes& file, std::uint32_t indexOffset,
                         std::uint64_t place) try {
    auto list = decodeChecksums(wholeBlock(file, place, kChecksumsId));
    if (!list) return false;
    list_ = std::move(*list);
    place_ = place;
    judge(file, indexOffset);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void FileChecksums::judge(const FileBytes& file, std::uint32_t indexOffset) {
    state_ = TarvFileRead::ChecksumsOutdated;
    if (list_.offset != place_) return;
    if (list_.index.offset != indexOffset && !wholeBlock(file, indexOffset, kIndexId).empty())
        return;
    const std::vector<char> index = wholeBlock(file, list_.index.offset, kIndexId);
    const bool isIndex = base::crc32c(index) == list_.index.sum;
    if (!isIndex && isReordered(index, list_.rows)) return;
    proves_ = true;
    const bool isCurrent =
        isIndex && list_.index.offset == indexOffset && isHeaderSum(file, list_.header);
    state_ = isCurrent ? TarvFileRead::ChecksumsCurrent : TarvFileRead::ChecksumsDamaged;
}

const BlockSum* FileChecksums::find(std::uint32_t id, std::optional<std::uint32_t> position) const {
    if (position && *position < list_.rows.size() && list_.rows[*position].id == id)
        return &list_.rows[*position];
    const auto found = std::ranges::find(list_.rows, id, &BlockSum::id);
    return found == list_.rows.end() ? nullptr : &*found;
}

}  // namespace toolbox
