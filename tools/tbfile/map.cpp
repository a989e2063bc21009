#include "map.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "search.h"

namespace tbfile {
namespace {

/// Entries looked at to see whether an index speaks of this file.
constexpr std::size_t kSample = 64;
/// Blocks looked at to see whether a layout is the file's.
constexpr int kTrial = 16;

void readEntries(Window& file, std::uint64_t at, std::size_t count, std::vector<BlocItem>& out) {
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

/// Whether blocks can be where these entries, which rise, say.
bool arePossible(const Shape& shape, const std::vector<BlocItem>& entries, std::uint64_t end) {
    std::uint64_t from = shape.start();
    for (const BlocItem& entry : entries) {
        if (entry.offset < from) return false;
        from = std::uint64_t{entry.offset} + shape.around();
    }
    return from <= end;
}

/// The index whose frame this is. Of a damaged one those entries that may be right: there are no
/// more of them than blocks fit before it.
Index indexOf(Window& file, const Shape& shape, const Frame& frame) {
    Index index;
    index.frame = frame;
    const std::uint64_t data = frame.offset + shape.layout().head();
    if (data >= file.size()) return index;
    const std::uint64_t most = (frame.offset - shape.start()) / shape.around();
    const std::uint64_t bytes = std::min<std::uint64_t>(frame.length, file.size() - data);
    readEntries(file, data, static_cast<std::size_t>(std::min(bytes / blocks::kEntryBytes, most)),
                index.entries);
    index.ascending =
        std::ranges::is_sorted(index.entries, std::ranges::less_equal(), &BlocItem::offset);
    const bool all = index.entries.size() == frame.length / blocks::kEntryBytes;
    if (index.ascending) {
        index.possible = all && arePossible(shape, index.entries, frame.offset);
    } else {
        std::vector<BlocItem> sorted = index.entries;
        std::ranges::sort(sorted, {}, &BlocItem::offset);
        index.possible = all && arePossible(shape, sorted, frame.offset);
    }
    return index;
}

/// Whether most of some entries, from all over the index, are confirmed.
bool speaksOf(Window& file, const Shape& shape, const Index& index) {
    const std::size_t count = index.entries.size();
    if (count == 0) return false;
    const std::size_t step = std::max<std::size_t>(1, count / kSample);
    std::size_t asked = 0;
    std::size_t right = 0;
    for (std::size_t i = 0; i < count; i += step, ++asked)
        if (isConfirmed(file, shape, index.entries[i])) ++right;
    return 2 * right >= asked;
}

std::optional<Index> indexAt(Window& file, const Shape& shape, std::uint64_t at) {
    if (at < shape.start() || at >= file.size()) return std::nullopt;
    const Frame frame = frameAt(file, shape, at, file.size());
    if (!frame.hasHead) return std::nullopt;
    if (!frame.isIndex() && !(frame.isWhole() && frame.length % blocks::kEntryBytes == 0))
        return std::nullopt;
    Index index = indexOf(file, shape, frame);
    const bool lastAndEmpty = frame.isWhole() && frame.length == 0 && frame.end == file.size();
    const bool known = frame.isIndex() && (frame.isWhole() || !index.entries.empty());
    if (!known && !lastAndEmpty && !speaksOf(file, shape, index)) return std::nullopt;
    return index;
}

/// A header that was not rewritten after the last commit names an index that is not the last.
void takeLater(Window& file, const Shape& shape, Index& index) {
    if (!index.isWhole()) return;
    std::uint64_t at = index.frame.end;
    std::optional<Frame> later;
    while (at < file.size()) {
        const Frame frame = frameAt(file, shape, at, file.size());
        if (!frame.isWhole() || !frame.plausible) break;
        if (frame.isIndex() && frame.length % blocks::kEntryBytes == 0) later = frame;
        at = frame.end;
    }
    if (later) index = indexOf(file, shape, *later);
}

/// The last block anywhere that is an index of this file.
std::optional<Index> searchIndex(Window& file, Window& probe, const Shape& shape) {
    std::optional<Index> last;
    std::uint64_t at = 0;
    while (const auto place = afterTerminator(file, shape, at, file.size())) {
        at = *place - 3;
        if (*place < shape.start()) continue;
        const char* id = file.at(*place, 4);
        if (!id || wordAt(id) != blocks::kIndexId) continue;
        const Frame frame = frameAt(probe, shape, *place, file.size());
        if (!frame.isWhole() || frame.length % blocks::kEntryBytes != 0) continue;
        Index index = indexOf(probe, shape, frame);
        if (speaksOf(probe, shape, index)) last = std::move(index);
    }
    return last;
}

/// How many blocks, up to kTrial, follow one another from a place on.
int blocksFrom(Window& file, const Shape& shape, std::uint64_t at) {
    int count = 0;
    for (; count < kTrial; ++count) {
        const Frame frame = frameAt(file, shape, at, file.size());
        if (!frame.isWhole() || !frame.plausible) break;
        // Zeros and ones look like blocks in any layout.
        if (frame.id == 0 || frame.id == blocks::kTerminator) break;
        at = frame.end;
    }
    return count;
}

/// How many of the first blocks there are in this layout, and whether the index speaks of them.
int agreement(Window& file, const Shape& shape, const Header& header) {
    const auto index = indexAt(file, shape, header.indexOffset);
    const bool speaks = index && speaksOf(file, shape, *index);
    const bool alone = index && index->isWhole() && index->entries.empty();
    return blocksFrom(file, shape, shape.start()) + (speaks || alone ? kTrial : 0);
}

/// The longest row of blocks anywhere in the file; no longer one than `enough` is looked for.
int agreementAnywhere(Window& file, Window& probe, const Shape& shape, int enough) {
    int most = blocksFrom(probe, shape, shape.start());
    for (std::uint64_t at = 0; most < enough;) {
        const auto place = afterTerminator(file, shape, at, file.size());
        if (!place) break;
        at = *place - 3;
        most = std::max(most, blocksFrom(probe, shape, *place));
    }
    return most;
}

/// Format version 100 is told by a terminator, which may as well be a part of damaged bytes.
bool isAmongOnes(Window& file, const Header& header) {
    const char* first = file.at(blocks::kOldHeaderBytes, 4);
    return header.shape.format == blocks::kOldestFormat && first &&
           wordAt(first) == blocks::kTerminator;
}

/// The layout that explains most. The header's own, if there is such a format version, needs one
/// block only to be believed, wherever that is; data may hold whole files of other formats.
Shape findShape(Window& file, Window& probe, const Header& header) {
    static constexpr std::array<std::uint32_t, 4> kOthers = {210, 200, 100, 101};
    const bool known = header.faults.empty() && !isAmongOnes(file, header);
    if (agreement(file, header.shape, header) > 0 && known) return header.shape;
    Shape best = header.shape;
    int most = 1;
    const auto offer = [&](std::uint32_t format, int agreed) {
        if (agreed <= most) return;
        most = agreed;
        best.format = format;
        // The header may name another version that is laid out so.
        if (!header.has(HeaderFault::format) && header.shape.start() == best.start() &&
            header.shape.around() == best.around())
            best = header.shape;
    };
    for (const std::uint32_t format : kOthers) offer(format, agreement(file, {format}, header));
    if (most > 1) return best;
    if (known && agreementAnywhere(file, probe, header.shape, 1) > 0) return header.shape;
    most = 0;
    for (const std::uint32_t format : kOthers) {
        offer(format, agreementAnywhere(file, probe, {format}, kTrial));
        if (most >= kTrial) break;
    }
    if (most > 0) return best;
    // A single block that stands behind damaged bytes.
    for (const std::uint32_t format : kOthers) {
        const Shape shape{format};
        const bool any =
            blockAnywhere(file, probe, shape, shape.start(), file.size(), file.size()).has_value();
        offer(format, any ? 1 : 0);
    }
    return best;
}

}  // namespace

bool isConfirmed(Window& file, const Shape& shape, const BlocItem& entry) {
    if (entry.offset < shape.start()) return false;
    const Frame frame = frameAt(file, shape, entry.offset, file.size());
    return frame.isWhole() && frame.id == entry.id;
}

bool isIndexInDisguise(Window& file, const Shape& shape, const Frame& frame) {
    const std::uint64_t data = frame.offset + shape.layout().head();
    if (frame.length == 0 || frame.length % blocks::kEntryBytes != 0) return false;
    const char* first = file.at(data, blocks::kEntryBytes);
    if (!first || wordAt(first + 4) != shape.start()) return false;
    Index index;
    readEntries(file, data, std::min<std::size_t>(frame.length / blocks::kEntryBytes, kSample),
                index.entries);
    return speaksOf(file, shape, index);
}

Map readMap(Window& file, Window& probe) {
    Map map;
    map.header = readHeader(file);
    map.shape = map.header.shape;
    if (file.size() <= blocks::kOldHeaderBytes) return map;
    map.shape = findShape(file, probe, map.header);
    map.index = indexAt(file, map.shape, map.header.indexOffset);
    if (map.index) {
        takeLater(file, map.shape, *map.index);
        map.index->atItsPlace = map.index->frame.offset == map.header.indexOffset;
    } else {
        map.index = searchIndex(file, probe, map.shape);
    }
    return map;
}

}  // namespace tbfile
