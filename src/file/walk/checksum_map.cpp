// Finding the list of checksums: by the index, directly before it, or, where the index is damaged,
// by its identifier and its own offset.
#include <algorithm>

#include "file/block/file_checksums.h"
#include "file/walk/field.h"
#include "file/walk/listed.h"
#include "file/walk/search.h"

namespace toolbox {
namespace {

FileBytes bytesOf(FileReader& file) {
    const auto read = [&file](std::uint64_t offset, char* to, std::size_t n) {
        std::size_t done = 0;
        const char* bytes = nullptr;
        while (const std::size_t got = file.piece(offset + done, n - done, bytes)) {
            std::copy_n(bytes, got, to + done);
            done += got;
        }
        return done;
    };
    return {read, file.size()};
}

// In the data of a list.
constexpr std::uint32_t kOwnOffsetAt = 4;
constexpr std::uint32_t kRowCountAt = 24;

std::uint64_t listLength(std::uint64_t rows) {
    return checksumListBytes(rows) - BlockShape().around();
}

/// Whether blocks can be where the rows say, one after another before the list.
bool arePossible(const BlockShape& shape, std::vector<BlockSum> rows, std::uint64_t end) {
    std::ranges::stable_sort(rows, {}, &BlockSum::offset);
    std::uint64_t from = shape.start;
    for (const BlockSum& row : rows) {
        if (row.offset < from || row.offset > end) return false;
        if (row.isKnown() && row.length < shape.around()) return false;
        from = row.isKnown() ? std::uint64_t{row.offset} + row.length : row.offset + 1;
    }
    return rows.empty() || from <= end + 1;
}

/// The last list that lies where it says itself, among those that look whole.
std::uint64_t searchList(FileReader& file, FileReader& probe, const BlockShape& shape) {
    std::uint64_t last = 0;
    for (std::uint64_t at = shape.start - 4;
         const auto place = afterTerminator(file, shape, at, file.size());) {
        at = *place - 3;
        const char* id = file.at(*place, 4);
        if (!id || wordAt(id) != kChecksumListId) continue;
        const BlockFrame frame = frameAt(probe, shape, *place, file.size());
        if (frame.isWhole() && listMarks(probe, shape, frame) == 3) last = *place;
    }
    return last;
}

}  // namespace

int listMarks(FileReader& file, const BlockShape& shape, const BlockFrame& frame) {
    if (!shape.isWritten() || !frame.fits || frame.length < BlockFrame::kLeastListBytes) return 0;
    const bool isDescribed = labelOf(file, shape, frame).description == blocks::kListDescription;
    const char* data = file.at(frame.offset + shape.head, kRowCountAt + 4);
    if (!data) return isDescribed ? 1 : 0;
    const bool isConsistent =
        wordAt(data) == 1 && frame.length == listLength(wordAt(data + kRowCountAt));
    return (isDescribed ? 1 : 0) + (wordAt(data + kOwnOffsetAt) == frame.offset ? 1 : 0) +
           (isConsistent ? 1 : 0);
}

bool isListedLayout(FileReader& file, const BlockFileHeader& header) {
    const bool isWritten = header.shape.isWritten() && header.isReadable();
    if (isWritten && !header.has(HeaderFault::format)) return false;
    return FileChecksums::proveLayout(bytesOf(file), header.indexOffset);
}

std::optional<ChecksumMap> findChecksums(FileReader& file, FileReader& probe,
                                         const BlockFileMap& map) {
    if (!map.shape.isWritten()) return std::nullopt;
    const std::uint64_t index = map.index ? map.index->frame.offset : map.header.indexOffset;
    const auto at = static_cast<std::uint32_t>(index);
    const FileBytes bytes = bytesOf(probe);
    FileChecksums list(bytes, at, map.index ? map.index->entries : std::vector<BlocItem>());
    if (!list.proves() && (!map.index || !map.index->isWhole())) {
        const std::uint64_t place = searchList(file, probe, map.shape);
        if (place != 0) list = FileChecksums(bytes, at, place);
    }
    if (list.state() == TarvFileRead::NoChecksums) return std::nullopt;
    ChecksumMap found;
    found.frame = frameAt(probe, map.shape, list.place(), file.size());
    found.state = list.state();
    // Somebody may have used the identifier for a block of his own.
    const bool isForeign = found.frame.isWhole() && listMarks(probe, map.shape, found.frame) == 0;
    if (!list.proves() && isForeign) return std::nullopt;
    if (!list.proves()) return found;
    if (arePossible(map.shape, list.rows(), found.frame.offset))
        found.rows = list.rows();
    else
        found.state = TarvFileRead::ChecksumsDamaged;
    return found;
}

}  // namespace toolbox
