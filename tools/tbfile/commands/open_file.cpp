// Opens a block file for the commands: its map, its entries, the block that one of them names.
#include "commands/open_file.h"

#include <algorithm>

#include "terminal/failure.h"

namespace tbfile {

namespace {

/// What ends the program is thrown.
FileReader::Progress goingOn(Watch watch) {
    return [watch = std::move(watch)](std::uint64_t done) {
        watch(done);
        return true;
    };
}

}  // namespace

OpenFile::OpenFile(const Path& path, FileReader::Reads reads)
    : file(path),
      progress(file.size()),
      walk(file, goingOn(watch())),
      map(walk.map()),
      window(file, reads, goingOn(watch())),
      probe(file, FileReader::Reads::whatIsAsked,
            goingOn([](std::uint64_t) { stopIfInterrupted(); })) {
    if (map.checksums) sums_ = map.checksums->rows;
    std::ranges::sort(sums_, {}, &BlockSum::offset);
}

const BlockSum* OpenFile::sumOf(std::uint64_t offset) const {
    const auto row = std::ranges::lower_bound(
        sums_, offset, {}, [](const BlockSum& each) { return std::uint64_t{each.offset}; });
    return row != sums_.end() && row->offset == offset && row->isKnown() ? &*row : nullptr;
}

bool OpenFile::isList(const BlocItem& entry) const {
    return map.checksums && entry.id == toolbox::kChecksumListId &&
           entry.offset == map.checksums->frame.offset;
}

std::size_t OpenFile::indexedBlocks() const {
    if (!map.index) return 0;
    const auto& entries = map.index->entries;
    const bool hasList =
        map.checksums && std::ranges::any_of(entries, [&](auto& each) { return isList(each); });
    return entries.size() - (hasList ? 1 : 0);
}

const Index& OpenFile::index() const {
    if (map.header.has(HeaderFault::tooShort))
        throw Failure(Text::noBlockFile, {nameOf(file.path())});
    if (!map.header.isReadable() || !map.index || !map.index->isWhole())
        throw Failure(Text::unreadable, {nameOf(file.path())});
    return *map.index;
}

std::optional<Frame> OpenFile::blockOf(const BlocItem& entry) {
    const Frame frame = frameAt(window, map.shape, entry.offset, file.size());
    if (!frame.isWhole() || frame.id != entry.id) return std::nullopt;
    const BlockSum* const row = sumOf(entry.offset);
    if (!row) return frame;
    const bool isProved = row->length == frame.end - frame.offset &&
                          sumAt(probe, row->offset, row->length) == row->sum;
    return isProved ? std::optional(frame) : std::nullopt;
}

Frame OpenFile::block(const BlocItem& entry) {
    const std::optional<Frame> frame = blockOf(entry);
    if (!frame)
        throw Failure(Text::blockDamaged, {nameOf(file.path()), std::to_string(entry.id),
                                           std::to_string(entry.offset)});
    return *frame;
}

Entries OpenFile::entries() const {
    Entries entries;
    entries.firsts.reserve(index().entries.size());
    EntryFinder lookup;
    for (const BlocItem& entry : index().entries) {
        if (isList(entry)) continue;
        const bool first = lookup.add(entries.firsts, entry.id);
        (first ? entries.firsts : entries.repeated).push_back(entry);
    }
    return entries;
}

Json tellLeftOut(const std::vector<BlocItem>& repeated, bool json) {
    JsonArray list;
    for (const BlocItem& entry : repeated) {
        list.add(
            jsonObject({{"id", std::uint64_t{entry.id}}, {"from", std::uint64_t{entry.offset}}}));
        if (!json)
            print(say(Text::repeatedLeftOut,
                      {std::to_string(entry.id), std::to_string(entry.offset)}) +
                  "\n");
    }
    return list.done();
}

}  // namespace tbfile
