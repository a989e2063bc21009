// Finding the master index: where the header says, after that, or anywhere.
#include "file/walk/map.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "file/walk/field.h"
#include "file/walk/listed.h"
#include "file/walk/search.h"

namespace toolbox {
namespace {

/// Entries looked at to see whether an index speaks of this file.
constexpr std::size_t kSample = 64;
void readEntries(FileReader& file, std::uint64_t at, std::size_t count,
                 std::vector<BlocItem>& out) {
    out.resize(count);
    auto* to = reinterpret_cast<char*>(out.data());
    for (std::uint64_t left = count * std::uint64_t{blocks::kEntryBytes}; left > 0;) {
        const char* bytes = nullptr;
        const std::size_t n = file.piece(at, left, bytes);
        if (n == 0) break;
        std::memcpy(to, bytes, n);
        to += n;
        at += n;
        left -= n;
    }
    out.resize(static_cast<std::size_t>(to - reinterpret_cast<char*>(out.data())) /
               blocks::kEntryBytes);
}

/// The list of checksums lies after the blocks, and stands first.
std::size_t firstOfBlocks(const std::vector<BlocItem>& entries) {
    return !entries.empty() && entries.front().id == kChecksumListId ? 1 : 0;
}

/// Whether blocks can be where these entries, which rise, say.
bool arePossible(const BlockShape& shape, const std::vector<BlocItem>& entries, std::uint64_t end) {
    std::uint64_t from = shape.start;
    for (const BlocItem& entry : entries) {
        if (entry.offset < from) return false;
        from = std::uint64_t{entry.offset} + shape.around();
    }
    return from <= end;
}

bool isAscending(const std::vector<BlocItem>& entries) {
    const std::span blocks = std::span(entries).subspan(firstOfBlocks(entries));
    return std::ranges::is_sorted(blocks, std::ranges::less_equal(), &BlocItem::offset);
}

/// The index whose frame this is. Of a damaged one those entries that may be right: there are no
/// more of them than blocks fit before it.
MasterIndex indexOf(FileReader& file, const BlockShape& shape, const BlockFrame& frame) {
    MasterIndex index;
    index.frame = frame;
    const std::uint64_t data = frame.offset + shape.head;
    if (data >= file.size()) return index;
    const std::uint64_t most = (frame.offset - shape.start) / shape.around();
    const std::uint64_t bytes = std::min<std::uint64_t>(frame.length, file.size() - data);
    readEntries(file, data, static_cast<std::size_t>(std::min(bytes / blocks::kEntryBytes, most)),
                index.entries);
    index.ascending = isAscending(index.entries);
    const bool all = index.entries.size() == frame.length / blocks::kEntryBytes;
    if (index.ascending && firstOfBlocks(index.entries) == 0) {
        index.possible = all && arePossible(shape, index.entries, frame.offset);
    } else {
        std::vector<BlocItem> sorted = index.entries;
        std::ranges::sort(sorted, {}, &BlocItem::offset);
        index.possible = all && arePossible(shape, sorted, frame.offset);
    }
    return index;
}

/// A header that was not rewritten after the last commit names an index that is not the last.
void takeLater(FileReader& file, const BlockShape& shape, MasterIndex& index) {
    if (!index.isWhole()) return;
    std::uint64_t at = index.frame.end;
    std::optional<BlockFrame> later;
    while (at < file.size()) {
        const BlockFrame frame = frameAt(file, shape, at, file.size());
        if (!frame.isWhole() || !frame.plausible) break;
        if (frame.isIndex() && frame.length % blocks::kEntryBytes == 0) later = frame;
        at = frame.end;
    }
    if (later) index = indexOf(file, shape, *later);
}

/// Whether a place that an entry names is within bytes that were zeroed: no block stands there, nor
/// anything that contradicts one.
bool isZeroed(FileReader& file, const BlockShape& shape, const BlocItem& entry) {
    const char* head = file.at(entry.offset, shape.head);
    return head && wordAt(head) == 0 && isPadded({head, shape.head});
}

}  // namespace

bool endsFile(FileReader& file, const BlockShape& shape, const MasterIndex& index) {
    if (!index.isComplete() || index.entries.empty() || index.frame.end != file.size())
        return false;
    const std::size_t first =
        std::min(firstOfBlocks(index.entries), index.entries.size() - 1);  // of blocks, if any
    if (index.entries[first].offset != shape.start) return false;
    const std::size_t step = std::max<std::size_t>(1, index.entries.size() / kSample);
    std::size_t right = 0;
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < index.entries.size(); i += step) {
        if (isConfirmed(file, shape, index.entries[i]))
            ++right;
        else if (!isZeroed(file, shape, index.entries[i]))
            ++wrong;
    }
    return right >= wrong;
}

std::optional<MasterIndex> searchIndex(FileReader& file, FileReader& probe,
                                       const BlockShape& shape) {
    std::optional<MasterIndex> last;
    std::uint64_t at = 0;
    while (const auto place = afterTerminator(file, shape, at, file.size())) {
        at = *place - 3;
        if (*place < shape.start) continue;
        const char* id = file.at(*place, 4);
        if (!id || wordAt(id) != kMasterIndexId) continue;
        const BlockFrame frame = frameAt(probe, shape, *place, file.size());
        if (!frame.isWhole() || frame.length % blocks::kEntryBytes != 0) continue;
        MasterIndex index = indexOf(probe, shape, frame);
        if (speaksOf(probe, shape, index) || endsFile(probe, shape, index)) last = std::move(index);
    }
    return last;
}

bool speaksOf(FileReader& file, const BlockShape& shape, const MasterIndex& index) {
    const std::size_t count = index.entries.size();
    if (count == 0) return false;
    const std::size_t step = std::max<std::size_t>(1, count / kSample);
    std::size_t asked = 0;
    std::size_t right = 0;
    for (std::size_t i = 0; i < count; i += step, ++asked)
        if (isConfirmed(file, shape, index.entries[i])) ++right;
    return 2 * right >= asked;
}

std::optional<MasterIndex> indexAt(FileReader& file, const BlockShape& shape, std::uint64_t at) {
    if (at < shape.start || at >= file.size()) return std::nullopt;
    const BlockFrame frame = frameAt(file, shape, at, file.size());
    if (!frame.hasHead) return std::nullopt;
    if (!frame.isIndex() && !(frame.isWhole() && frame.length % blocks::kEntryBytes == 0))
        return std::nullopt;
    MasterIndex index = indexOf(file, shape, frame);
    const bool lastAndEmpty = frame.isWhole() && frame.length == 0 && frame.end == file.size();
    const bool known = frame.isIndex() && (frame.isWhole() || !index.entries.empty());
    if (!known && !lastAndEmpty && !speaksOf(file, shape, index)) return std::nullopt;
    return index;
}

bool isConfirmed(FileReader& file, const BlockShape& shape, const BlocItem& entry) {
    if (entry.offset < shape.start) return false;
    const BlockFrame frame = frameAt(file, shape, entry.offset, file.size());
    return frame.isWhole() && frame.id == entry.id;
}

bool isDisguisedIndex(FileReader& file, const BlockShape& shape, const BlockFrame& frame) {
    const std::uint64_t data = frame.offset + shape.head;
    if (frame.length == 0 || frame.length % blocks::kEntryBytes != 0) return false;
    const char* first = file.at(data, blocks::kEntryBytes);
    if (!first) return false;
    const bool isList = wordAt(first) == kChecksumListId;
    if (isList && frame.length > blocks::kEntryBytes)
        first = file.at(data + blocks::kEntryBytes, blocks::kEntryBytes);
    if (!first || wordAt(first + 4) != shape.start) return false;
    MasterIndex index;
    readEntries(file, data, std::min<std::size_t>(frame.length / blocks::kEntryBytes, kSample),
                index.entries);
    return speaksOf(file, shape, index);
}

namespace {

/// Where the blocks begin: earlier than usual where bytes of a damaged header are missing.
std::uint64_t findStart(FileReader& file, const BlockShape& shape, const BlockFileHeader& header) {
    constexpr std::uint32_t kMissing = 64;
    if (header.isReadable() && !header.has(HeaderFault::format)) return shape.start;
    const auto isBlock = [&](std::uint64_t at) {
        const BlockFrame frame = frameAt(file, shape, at, file.size());
        return frame.isWhole() && frame.plausible;
    };
    if (isBlock(shape.start)) return shape.start;
    for (std::uint64_t at = shape.start - 1; at > shape.start - kMissing; --at) {
        const char* end = file.at(at - 4, 4);
        if (end && wordAt(end) == kBlockTerminator && isBlock(at)) return at;
    }
    return shape.start;
}

}  // namespace

BlockFileMap readMap(FileReader& file, FileReader& probe) {
    BlockFileMap map;
    map.header = readHeader(file);
    map.shape = map.header.shape;
    map.start = map.shape.start;
    if (file.size() <= blocks::kOldHeaderBytes) return map;
    map.shape = findShape(file, probe, map.header);
    map.start = findStart(file, map.shape, map.header);
    map.index = indexAt(file, map.shape, map.header.indexOffset);
    if (map.index) {
        takeLater(file, map.shape, *map.index);
        map.index->atItsPlace = map.index->frame.offset == map.header.indexOffset;
    } else {
        map.index = searchIndex(file, probe, map.shape);
    }
    map.checksums = findChecksums(file, probe, map);
    return map;
}

}  // namespace toolbox
