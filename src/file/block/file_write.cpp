// Writing in one pass: the header without an index, the blocks, then the index and the header
// again.
#include "file/block/layout.h"
#include "file/block/output.h"
#include "file/block/parts.h"
#include "file/block/safe_save.h"
#include "toolbox/block_files.h"
#include "toolbox/messages.h"

using toolbox::BlockFileParts;
using toolbox::BlockOutput;
using toolbox::SafeSave;
namespace blocks = toolbox::blocks;

namespace {

constexpr unsigned short kIndexDescription = 1019;

RWCString indexDescription() {
    RWCString text;
    GMSG::getString(kIndexDescription, text);
    return text;
}

void installDefaults(TarvFile& f, bool replace) {
    if (replace || !f.getHeader()) {
        TarvFileHeader header;
        header.setVersion(1);
        header.setMask(blocks::kWholeWords);
        f.setHeader(header);
    }
    if (replace || !f.getIndex()) {
        TarvFileIndex index;
        index.setID(blocks::kIndexId);
        index.setDescription(indexDescription());
        f.setIndex(index);
    }
}

/// Whether the file could still take its index, and its checksums, with `more` bytes and one entry
/// more.
bool leavesRoomForIndex(const TarvFileIndex& index, bool checksums, std::uint32_t at,
                        std::uint64_t more) {
    const std::uint64_t entries = BlockFileParts::entries(index).size() + 1;
    const std::uint64_t indexBytes =
        blocks::kHeadBytes + blocks::kEntryBytes * entries + blocks::kTailBytes;
    const std::uint64_t sumBytes = checksums ? blocks::checksumBytes(entries) : 0;
    return BlockOutput::mayGrow(at, more + sumBytes + indexBytes);
}

}  // namespace

TarvFileWrite::TarvFileWrite() = default;
TarvFileWrite::TarvFileWrite(const TarvFileWrite&) = default;
TarvFileWrite& TarvFileWrite::operator=(const TarvFileWrite&) = default;

TarvFileWrite::~TarvFileWrite() {
    TarvFileWrite::close();
}

int TarvFileWrite::open(const RWCString& name) {
    return open(name.c_str());
}

int TarvFileWrite::open(const char* name) {
    if (isOpen()) return 0;
    name_ = name ? name : "";
    setFileType(OpenForWriting);
    if (!BlockFileParts::file(*this)) return create();

    // A file that was set: what it holds is the application's.
    installDefaults(*this, false);
    BlockFileParts::startOutput(*this, false);
    APIFile& file = *BlockFileParts::file(*this);
    if (!file.isValid()) return 0;
    if (!file.IsEmpty()) return 1;
    return BlockFileParts::output(*this)->seekToBegin() && getHeader()->write(*this);
}

int TarvFileWrite::create() {
    std::unique_ptr<APIFile> file;
    if (safe_) {
        save_ = std::make_shared<SafeSave>(name_.str());
        file = save_->create();
    } else {
        toolbox::backUp(name_);
        file = std::make_unique<APIFile>(name_.c_str(), GENERIC_WRITE, 0, CREATE_ALWAYS);
    }
    const bool created = file->isValid();
    BlockFileParts::attach(*this, std::move(file));
    installDefaults(*this, true);
    BlockFileParts::startOutput(*this, true);
    return created && getHeader()->write(*this) && BlockFileParts::output(*this)->flush();
}

int TarvFileWrite::writeBloc(const TarvBlocFile& block) {
    if (!canWrite() || !getHeader() || !getIndex()) return 0;
    BlockOutput* output = BlockFileParts::output(*this);
    const bool sums = keepsSums();
    if (sums && static_cast<std::uint32_t>(block.getID()) == blocks::kChecksumsId) return 0;
    const unsigned long length = block.getBlocLen();
    const auto at = output ? output->position() : std::nullopt;
    int result = 0;
    // Where the header will be written nothing else is.
    if (at && *at >= blocks::kHeaderBytes && leavesRoomForIndex(*getIndex(), sums, *at, length) &&
        getIndex()->addBloc(block.getID(), *at))
        result = block.write(*this);
    if (length % 4 != 0) getHeader()->setMask(getHeader()->getMask() & ~1ul);
    return result;
}

int TarvFileWrite::commit() {
    BlockOutput* output = BlockFileParts::output(*this);
    if (!canWrite() || !output || !getHeader() || !getIndex()) return 0;
    auto at = output->position();
    if (!at || *at < blocks::kHeaderBytes) return 0;
    if (keepsSums()) {
        if (!writeChecksums(*at)) return 0;
        at = output->position();
        if (!at) return 0;
    }
    // The index is in the file before the header says so.
    if (!getIndex()->write(*this) || !output->flush()) return 0;
    getHeader()->setOffsetMasterNdx(*at);
    if (!output->seekToBegin() || !getHeader()->write(*this) || !output->seekToEnd()) return 0;
    if (save_) save_->committed();
    return 1;
}

/// Whether checksums are written. The list's entry is the first of the index, though the list lies
/// behind the blocks: whoever copies a file block by block, and does not know it, puts it
/// elsewhere.
bool TarvFileWrite::keepsSums() {
    BlockOutput* const output = BlockFileParts::output(*this);
    if (!output || !getIndex()) return false;
    if (checksums_ && !output->sums()) {
        output->keepSums();
        if (!BlockFileParts::find(*getIndex(), blocks::kChecksumsId))
            BlockFileParts::place(*getIndex(), blocks::kChecksumsId, 0);
    }
    return output->sums() != nullptr;
}

/// The list, at the file's position; the index comes right after it.
bool TarvFileWrite::writeChecksums(std::uint32_t at) try {
    TarvFileIndex& index = *getIndex();
    BlockFileParts::place(index, blocks::kChecksumsId, at);
    const auto entries = BlockFileParts::entries(index);
    const std::uint64_t after = at + blocks::checksumBytes(entries.size());
    if (!index.setData() || !BlockOutput::mayGrow(at, after - at)) return false;

    toolbox::ChecksumList list;
    list.offset = at;
    list.index = blocks::sumOf(index, static_cast<std::uint32_t>(after));
    list.header = blocks::headerSum(BlockFileParts::encode(*getHeader()));
    list.rows = BlockFileParts::output(*this)->sums()->rowsOf(entries);
    return blocks::encode(list).write(*this) != 0;
} catch (const std::bad_alloc&) {
    return false;
}

void TarvFileWrite::setChecksums(int on) {
    checksums_ = on;
}

int TarvFileWrite::close() {
    if (!canWrite()) return 0;
    BlockOutput* output = BlockFileParts::output(*this);
    const bool written = !output || output->flush();
    if (save_) return finish(written);
    const bool lostBlocks = output && output->lostBlocks();
    TarvFile::close();
    return !lostBlocks;
}

int TarvFileWrite::finish(bool written) {
    const std::shared_ptr<SafeSave> save = std::move(save_);
    // Copies of this object still write: the last of them puts the file in place.
    const bool last = save.use_count() == 1;
    const bool whole = written && save->isCommitted();
    TarvFile::close();
    if (!last) return 1;
    return whole && save->putInPlace();
}

RWCString TarvFileWrite::getFileName() const {
    return name_;
}

void TarvFileWrite::setSafeSave(int on) {
    safe_ = on;
}
