// The frames of blocks, read from a file and made anew.
#include <algorithm>

#include "file/block/checksums.h"
#include "file/block/encoding.h"
#include "file/block/lookup.h"
#include "file/walk/field.h"
#include "toolbox/block_frames.h"

namespace toolbox {

bool isPadded(std::string_view field) {
    const std::size_t text = std::min(field.find('\0'), field.size());
    const char* at = field.data() + text;
    const char* end = field.data() + field.size();
    std::uint64_t rest = 0;
    for (; end - at >= 8; at += 8) rest |= base::load<std::uint64_t>(at);
    for (; at < end; ++at) rest |= static_cast<unsigned char>(*at);
    return rest == 0;
}

namespace {

void readVersions(const char* tail, const BlockShape& shape, BlockLabel& label) {
    if (shape.tail >= 8) label.version = wordAt(tail);
    if (shape.tail >= 12) label.recordVersion = wordAt(tail + 4);
}

}  // namespace

static_assert(kBlockTerminator == blocks::kTerminator && kMasterIndexId == blocks::kIndexId);

BlockShape::BlockShape(std::uint32_t formatVersion) : format(formatVersion) {
    const blocks::Layout layout(format);
    start = format == blocks::kOldestFormat ? blocks::kOldHeaderBytes : blocks::kHeaderBytes;
    description = layout.description;
    head = layout.head();
    tail = layout.tail;
}

BlockFrame frameAt(FileReader& file, const BlockShape& shape, std::uint64_t offset,
                   std::uint64_t limit, BlockLabel* label) {
    BlockFrame frame;
    frame.offset = offset;
    if (limit < offset + shape.head) {
        const auto rest = static_cast<std::size_t>(limit > offset ? limit - offset : 0);
        const char* head = file.at(offset, rest);
        constexpr std::size_t kId = 4;
        frame.padded =
            head && (rest <= kId ||
                     isPadded({head + kId, std::min<std::size_t>(rest - kId, shape.description)}));
        frame.plausible = frame.padded;
        return frame;
    }
    const char* head = file.at(offset, shape.head);
    if (!head) return frame;
    frame.hasHead = true;
    frame.id = wordAt(head);
    frame.length = wordAt(head + 4 + shape.description);
    frame.end = offset + shape.around() + frame.length;
    frame.padded = isPadded({head + 4, shape.description});
    frame.plausible = frame.padded && frame.length <= blocks::kMostBytes;
    frame.fits = frame.end <= limit;
    if (!frame.fits) return frame;
    if (label) label->description = blocks::textIn(head + 4, shape.description);
    const char* tail = file.at(frame.end - shape.tail, shape.tail);
    frame.terminated = tail && wordAt(tail + shape.tail - 4) == kBlockTerminator;
    if (label && tail) readVersions(tail, shape, *label);
    return frame;
}

BlockLabel labelOf(FileReader& file, const BlockShape& shape, const BlockFrame& frame) {
    BlockLabel label;
    if (const char* head = file.at(frame.offset, shape.head))
        label.description = blocks::textIn(head + 4, shape.description);
    if (const char* tail = file.at(frame.end - shape.tail, shape.tail))
        readVersions(tail, shape, label);
    return label;
}

std::array<char, blocks::kHeadBytes> blockHead(std::uint32_t id, std::string_view description,
                                               std::uint32_t length) {
    std::array<char, blocks::kHeadBytes> head;
    blocks::encodeHead(head.data(), id, description, length);
    return head;
}

std::array<char, blocks::kTailBytes> blockTail(std::uint32_t version, std::uint32_t recordVersion) {
    std::array<char, blocks::kTailBytes> tail;
    blocks::encodeTail(tail.data(), version, recordVersion);
    return tail;
}

static_assert(kChecksumListId == blocks::kChecksumsId);

std::uint32_t sumOf(std::span<const char> bytes, std::uint32_t before) {
    return base::crc32c(bytes, before);
}

std::optional<std::uint32_t> sumAt(FileReader& file, std::uint64_t offset, std::uint64_t n,
                                   std::uint32_t before) {
    for (const char* bytes = nullptr; n > 0;) {
        const std::size_t got = file.piece(offset, n, bytes);
        if (got == 0) return std::nullopt;
        before = base::crc32c({bytes, got}, before);
        offset += got;
        n -= got;
    }
    return before;
}

std::vector<char> checksumList(const ListedFile& file) {
    ChecksumList list;
    list.offset = file.offset;
    const std::uint64_t after = file.offset + checksumListBytes(file.rows.size());
    list.index = {blocks::kIndexId, static_cast<std::uint32_t>(after),
                  static_cast<std::uint32_t>(file.index.size()), sumOf(file.index)};
    list.header = blocks::headerSum(file.header);
    list.rows.assign(file.rows.begin(), file.rows.end());
    return blocks::wholeList(list);
}

std::uint64_t checksumListBytes(std::uint64_t rows) {
    return blocks::checksumBytes(rows);
}

EntryFinder::EntryFinder() : lookup_(std::make_unique<BlockLookup>()) {}
EntryFinder::~EntryFinder() = default;
EntryFinder::EntryFinder(EntryFinder&&) noexcept = default;
EntryFinder& EntryFinder::operator=(EntryFinder&&) noexcept = default;

std::optional<std::uint32_t> EntryFinder::find(std::span<const BlocItem> entries,
                                               std::uint32_t id) {
    return lookup_->find(entries, id);
}

bool EntryFinder::add(std::span<const BlocItem> entries, std::uint32_t id) {
    return lookup_->add(entries, id);
}

}  // namespace toolbox
