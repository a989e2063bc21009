#include "open_file.h"

#include "failure.h"
#include "file/block_lookup.h"

namespace tbfile {

OpenFile::OpenFile(const Path& path, Window::Reads reads)
    : file(path),
      progress(file.size()),
      window(file, reads, watch()),
      probe(file, Window::Reads::whatIsAsked, [](std::uint64_t) { stopIfInterrupted(); }) {
    Window first(file, Window::Reads::whatIsAsked, watch());
    map = readMap(first, probe);
}

const Index& OpenFile::index() const {
    if (map.header.has(HeaderFault::tooShort))
        throw Failure(Text::noBlockFile, {nameOf(file.path())});
    if (!map.header.isReadable() || !map.index || !map.index->isWhole())
        throw Failure(Text::unreadable, {nameOf(file.path())});
    return *map.index;
}

Frame OpenFile::block(const BlocItem& entry) {
    const Frame frame = frameAt(window, map.shape, entry.offset, file.size());
    if (!frame.isWhole() || frame.id != entry.id)
        throw Failure(Text::blockDamaged, {nameOf(file.path()), std::to_string(entry.id),
                                           std::to_string(entry.offset)});
    return frame;
}

std::vector<BlocItem> OpenFile::entries() const {
    std::vector<BlocItem> firsts;
    firsts.reserve(index().entries.size());
    toolbox::BlockLookup lookup;
    for (const BlocItem& entry : index().entries)
        if (lookup.add(firsts, entry.id)) firsts.push_back(entry);
    return firsts;
}

}  // namespace tbfile
