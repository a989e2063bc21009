// Opens a block file for the commands: its map, its entries, the block that one of them names.
#include "commands/open_file.h"

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
            goingOn([](std::uint64_t) { stopIfInterrupted(); })) {}

const Index& OpenFile::index() const {
    if (map.header.has(HeaderFault::tooShort))
        throw Failure(Text::noBlockFile, {nameOf(file.path())});
    if (!map.header.isReadable() || !map.index || !map.index->isWhole())
        throw Failure(Text::unreadable, {nameOf(file.path())});
    return *map.index;
}

std::optional<Frame> OpenFile::blockOf(const BlocItem& entry) {
    const Frame frame = frameAt(window, map.shape, entry.offset, file.size());
    return frame.isWhole() && frame.id == entry.id ? std::optional(frame) : std::nullopt;
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
