// A list belongs to the file when it lies where it says, and the index where it says, too: whoever
// copies blocks without knowing the list, or appends some, moves one of them.
#include "file/block/file_checksums.h"

#include <algorithm>
#include <new>

#include "file/block/fetch.h"
#include "file/block/parts.h"

namespace toolbox {
namespace {

using namespace toolbox::blocks;

/// A whole block's bytes; empty when there is none at that place.
std::vector<char> wholeBlock(APIFile& file, std::uint64_t offset, std::uint64_t size) {
    char head[kHeadBytes];
    if (readAt(file, offset, head, kHeadBytes) < kHeadBytes) return {};
    const auto n = base::load<std::uint32_t>(head + kHeadBytes - 4);
    const std::uint64_t whole = std::uint64_t{n} + kHeadBytes + kTailBytes;
    if (offset > size || whole > size - offset || whole > kMostBytes) return {};
    std::vector<char> bytes(static_cast<std::size_t>(whole));
    if (readAt(file, offset, bytes.data(), static_cast<std::uint32_t>(whole)) < whole) return {};
    return bytes;
}

bool isHeaderSum(APIFile& file, std::uint32_t sum) {
    char header[kHeaderBytes];
    return readAt(file, 0, header, kHeaderBytes) == kHeaderBytes && headerSum(header) == sum;
}

}  // namespace

bool FileChecksums::proveLayout(const TarvFileHeader& header, APIFile& file,
                                std::uint64_t size) try {
    const auto place = static_cast<std::uint32_t>(header.getOffsetMasterNdx());
    const std::vector<char> index = wholeBlock(file, place, size);
    if (index.empty() || base::load<std::uint32_t>(index.data()) != kIndexId) return false;
    // The list's entry is anywhere, first as a rule.
    const char* const end = index.data() + index.size() - kTailBytes;
    for (const char* at = index.data() + kHeadBytes; at + kEntryBytes <= end; at += kEntryBytes) {
        if (base::load<std::uint32_t>(at) != kChecksumsId) continue;
        const auto offset = base::load<std::uint32_t>(at + 4);
        const auto list = decodeChecksums(wholeBlock(file, offset, size));
        return list && list->offset == offset && list->index.offset == place &&
               base::crc32c(index) == list->index.sum;
    }
    return false;
} catch (const std::bad_alloc&) {
    return false;
}

FileChecksums::FileChecksums(const TarvFile& f, APIFile& file, std::uint64_t size) {
    const TarvFileHeader* const header = f.getHeader();
    const TarvFileIndex* const index = BlockFileParts::index(f);
    if (!header || !index || header->getVersionFile() < kFormatWritten) return;
    const auto place = BlockFileParts::find(*index, kChecksumsId);
    if (!place) return;

    state_ = TarvFileRead::ChecksumsDamaged;
    try {
        const std::uint32_t offset = BlockFileParts::entries(*index)[*place].offset;
        auto list = decodeChecksums(wholeBlock(file, offset, size));
        if (!list) return;
        list_ = std::move(*list);
        proves_ = list_.offset == offset && list_.index.offset == header->getOffsetMasterNdx();
        if (!proves_) {
            state_ = TarvFileRead::ChecksumsOutdated;
            return;
        }
        const std::vector<char> indexBytes = wholeBlock(file, list_.index.offset, size);
        if (base::crc32c(indexBytes) == list_.index.sum && isHeaderSum(file, list_.header))
            state_ = TarvFileRead::ChecksumsCurrent;
    } catch (const std::bad_alloc&) {
        proves_ = false;
    }
}

const BlockSum* FileChecksums::find(std::uint32_t id, std::optional<std::uint32_t> position) const {
    if (position && *position < list_.rows.size() && list_.rows[*position].id == id)
        return &list_.rows[*position];
    const auto found = std::ranges::find(list_.rows, id, &BlockSum::id);
    return found == list_.rows.end() ? nullptr : &*found;
}

}  // namespace toolbox
