// The header of a block file that may be damaged, and the bytes of a new one.
#include <algorithm>

#include "file/block/layout.h"
#include "file/walk/field.h"
#include "toolbox/block_frames.h"
#include "toolbox/dates.h"

namespace toolbox {
namespace {

namespace field = blocks::field;

constexpr std::int32_t kNoDay = -1;

bool isDay(std::int32_t number) {
    return TarvDate(static_cast<int>(number)).isValid();
}

}  // namespace

bool BlockFileHeader::has(HeaderFault fault) const {
    return std::ranges::find(faults, fault) != faults.end();
}

BlockFileHeader readHeader(FileReader& file) {
    BlockFileHeader header;
    std::array<char, blocks::kHeaderBytes> bytes{};
    const auto size = std::min<std::uint64_t>(file.size(), bytes.size());
    if (const char* found = file.at(0, static_cast<std::size_t>(size)))
        std::copy_n(found, size, bytes.begin());

    const char* at = bytes.data();
    header.version = wordAt(at + field::kVersion);
    header.mask = wordAt(at + field::kMask);
    header.description = blocks::textIn(at + field::kDescription, blocks::kDescriptionBytes);
    for (std::size_t i = 0; i < header.dates.size(); ++i) {
        header.dates[i] = static_cast<std::int32_t>(wordAt(at + field::kDates + 4 * i));
        if (header.dates[i] != kNoDay && !isDay(header.dates[i]) && !header.has(HeaderFault::date))
            header.faults.push_back(HeaderFault::date);
    }
    header.indexOffset = wordAt(at + field::kIndexOffset);
    const std::uint32_t format = wordAt(at + field::kFormat);
    const bool oldest = format == kBlockTerminator;
    header.shape = BlockShape(oldest ? blocks::kOldestFormat : format);
    if (!isPadded({at + field::kDescription, blocks::kDescriptionBytes}))
        header.faults.push_back(HeaderFault::description);
    if (!oldest && (format <= blocks::kOldestFormat || format > blocks::kFormatWritten))
        header.faults.push_back(HeaderFault::format);
    if (size < (oldest ? blocks::kOldHeaderBytes : blocks::kHeaderBytes))
        header.faults.push_back(HeaderFault::tooShort);
    else if (!oldest && wordAt(at + field::kEnd) != kBlockTerminator)
        header.faults.push_back(HeaderFault::terminator);
    return header;
}

std::array<char, blocks::kHeaderBytes> headerBytes(const BlockFileHeader& header) {
    using base::store;
    std::array<char, blocks::kHeaderBytes> bytes{};
    store(bytes.data() + field::kVersion, header.version);
    store(bytes.data() + field::kMask, header.mask);
    blocks::putText(bytes.data() + field::kDescription, header.description);
    for (std::size_t i = 0; i < header.dates.size(); ++i)
        store(bytes.data() + field::kDates + 4 * i, header.dates[i]);
    store(bytes.data() + field::kIndexOffset, header.indexOffset);
    store(bytes.data() + field::kFormat, blocks::kFormatWritten);
    store(bytes.data() + field::kEnd, kBlockTerminator);
    return bytes;
}

}  // namespace toolbox
