// Which layout the blocks of a file have, whatever its header says.
#include <algorithm>
#include <array>

#include "file/walk/field.h"
#include "file/walk/listed.h"
#include "file/walk/map.h"
#include "file/walk/search.h"

namespace toolbox {
namespace {

/// Blocks looked at to see whether a layout is the file's.
constexpr int kTrial = 16;

/// How many blocks, up to kTrial, follow one another from a place on.
int blocksFrom(FileReader& file, const BlockShape& shape, std::uint64_t at) {
    int count = 0;
    for (; count < kTrial; ++count) {
        const BlockFrame frame = frameAt(file, shape, at, file.size());
        if (!frame.isWhole() || !frame.plausible) break;
        // Zeros and ones look like blocks in any layout.
        if (frame.id == 0 || frame.id == kBlockTerminator) break;
        at = frame.end;
    }
    return count;
}

/// How many of the first blocks there are in this layout, and whether the index speaks of them.
int agreement(FileReader& file, const BlockShape& shape, const BlockFileHeader& header) {
    const auto index = indexAt(file, shape, header.indexOffset);
    const bool speaks = index && speaksOf(file, shape, *index);
    const bool alone = index && index->isWhole() && index->entries.empty();
    return blocksFrom(file, shape, shape.start) + (speaks || alone ? kTrial : 0);
}

/// The longest row of blocks anywhere in the file; no longer one than `enough` is looked for.
int agreementAnywhere(FileReader& file, FileReader& probe, const BlockShape& shape, int enough) {
    int most = blocksFrom(probe, shape, shape.start);
    for (std::uint64_t at = 0; most < enough;) {
        const auto place = afterTerminator(file, shape, at, file.size());
        if (!place) break;
        at = *place - 3;
        most = std::max(most, blocksFrom(probe, shape, *place));
    }
    return most;
}

/// Format version 100 is told by a terminator, which may as well be a part of damaged bytes.
bool isAmongOnes(FileReader& file, const BlockFileHeader& header) {
    const char* first = file.at(blocks::kOldHeaderBytes, 4);
    return header.shape.format == blocks::kOldestFormat && first &&
           wordAt(first) == kBlockTerminator;
}

constexpr std::array<std::uint32_t, 4> kFormats = {210, 200, 100, 101};

/// A format version that the header may name as well as this one: where both are laid out alike,
/// the header's own.
BlockShape named(const BlockFileHeader& header, std::uint32_t format) {
    const BlockShape shape(format);
    const bool alike = !header.has(HeaderFault::format) && header.shape.start == shape.start &&
                       header.shape.around() == shape.around();
    return alike ? header.shape : shape;
}

/// What proves another layout than that of a header that looks undamaged: a whole index where the
/// header says, most of whose entries hold; or, where no index is known, blocks in a row.
bool isProven(FileReader& file, const BlockShape& shape, const BlockFileHeader& header) {
    const auto index = indexAt(file, shape, header.indexOffset);
    if (index && index->isWhole() && speaksOf(file, shape, *index)) return true;
    return header.indexOffset == 0 && blocksFrom(file, shape, shape.start) > 1;
}

/// Whether anything in the file is laid out as a header says.
bool explains(FileReader& file, FileReader& probe, const BlockFileHeader& header) {
    if (agreement(file, header.shape, header) > 0) return true;
    const auto index = indexAt(file, header.shape, header.indexOffset);
    return (index && index->isWhole()) || agreementAnywhere(file, probe, header.shape, 1) > 0;
}

/// The layout of a file whose header is damaged: that of an index at the end of the file, otherwise
/// the one with the most blocks in a row. Data may hold whole files of other formats.
BlockShape searchShape(FileReader& file, FileReader& probe, const BlockFileHeader& header) {
    BlockShape best = header.shape;
    int most = 0;
    const auto offer = [&](std::uint32_t format, int agreed) {
        if (agreed <= most) return;
        most = agreed;
        best = named(header, format);
    };
    for (const std::uint32_t format : kFormats) {
        const BlockShape shape(format);
        const auto index = searchIndex(file, probe, shape);
        if (index && endsFile(probe, shape, *index)) return named(header, format);
    }
    most = 1;
    for (const std::uint32_t format : kFormats)
        offer(format, agreement(file, BlockShape(format), header));
    if (most > 1) return best;
    most = 0;
    for (const std::uint32_t format : kFormats) {
        offer(format, agreementAnywhere(file, probe, BlockShape(format), kTrial));
        if (most >= kTrial) break;
    }
    if (most > 0) return best;
    // A single block that stands after damaged bytes.
    for (const std::uint32_t format : kFormats) {
        const BlockShape shape(format);
        const auto any = blockAnywhere(file, probe, shape, shape.start, file.size(), file.size());
        offer(format, any ? 1 : 0);
    }
    return best;
}

}  // namespace

BlockShape findShape(FileReader& file, FileReader& probe, const BlockFileHeader& header) {
    if (isListedLayout(probe, header)) return named(header, blocks::kFormatWritten);
    const bool known =
        header.isReadable() && !header.has(HeaderFault::format) && !isAmongOnes(file, header);
    if (!known) return searchShape(file, probe, header);
    if (explains(file, probe, header)) return header.shape;
    for (const std::uint32_t format : kFormats)
        if (isProven(file, BlockShape(format), header)) return named(header, format);
    // A terminator is all that tells format version 100; it may be another word of a header that
    // has lost or gained bytes.
    const bool isOldest = header.shape.format == blocks::kOldestFormat;
    return isOldest ? searchShape(file, probe, header) : header.shape;
}

}  // namespace toolbox
