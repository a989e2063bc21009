// Reading: opening finds the header and the index, fetching goes by the index and, where the mask
// allows it, by a search.
#include <algorithm>
#include <typeinfo>

#include "file/block/fetch.h"
#include "file/block/file_checksums.h"
#include "file/block/parts.h"
#include "file/replacement.h"
#include "toolbox/block_files.h"

using toolbox::BlockFileParts;
using toolbox::BlockSum;
using toolbox::FileChecksums;
namespace blocks = toolbox::blocks;

namespace {

/// Waits a moment for a writer who is putting a file in place.
std::unique_ptr<APIFile> openedToRead(const char* name) {
    constexpr std::chrono::milliseconds kPause{2};
    std::unique_ptr<APIFile> file;
    toolbox::patiently(kPause, [&] {
        file = std::make_unique<APIFile>(name, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
        return static_cast<toolbox::platform::ErrorCode>(file->Error());
    });
    return file;
}

bool readHeader(TarvFile& f, APIFile& file) {
    char bytes[blocks::kHeaderBytes];
    const std::uint32_t got = blocks::readAt(file, 0, bytes, sizeof bytes);
    return BlockFileParts::decode(*f.getHeader(), {bytes, got});
}

/// The index at its place, or else the first that a search finds.
bool readIndex(TarvFile& f, APIFile& file, std::uint64_t size) {
    TarvFileIndex& index = *BlockFileParts::index(f);
    const blocks::Layout layout = blocks::layoutOf(f);
    const auto fetchAt = [&](std::uint64_t offset) {
        const std::uint64_t extent = offset < size ? size - offset : 0;
        return blocks::fetch(file, {offset, blocks::kIndexId, extent}, layout, index) > 0;
    };
    if (!fetchAt(f.getHeader()->getOffsetMasterNdx())) {
        const std::uint64_t afterId = blocks::scan(file, 0, blocks::kIndexId);
        if (afterId == 0 || !fetchAt(afterId - 4)) return false;
    }
    index.setID(blocks::kIndexId);
    BlockFileParts::takePacked(index, size);
    return true;
}

toolbox::FileBytes bytesOf(APIFile& file, std::uint64_t size) {
    const auto read = [&file](std::uint64_t offset, char* to, std::size_t n) {
        return std::size_t{blocks::readAt(file, offset, to, static_cast<std::uint32_t>(n))};
    };
    return {read, size};
}

std::uint32_t indexOffsetOf(const TarvFileHeader& header) {
    return static_cast<std::uint32_t>(header.getOffsetMasterNdx());
}

/// What is known of the sums of an open file. Only format version 210 has such.
FileChecksums checksumsOf(const TarvFile& f, APIFile& file, std::uint64_t size) {
    const TarvFileHeader* const header = f.getHeader();
    const TarvFileIndex* const index = BlockFileParts::index(f);
    const bool mayBe = header && index && header->getVersionFile() >= blocks::kFormatWritten;
    const auto entries = mayBe ? BlockFileParts::entries(*index) : std::span<const BlocItem>();
    return {bytesOf(file, size), header ? indexOffsetOf(*header) : 0, entries};
}

/// Where the index says that a block is, with the distance to the next one as its probable length.
blocks::Place placeOf(const TarvFile& f, std::uint32_t id, std::uint64_t size) {
    const TarvFileIndex* index = BlockFileParts::index(f);
    const auto found = index ? BlockFileParts::find(*index, id) : std::nullopt;
    if (!found) return {0, id, 0};
    const auto entries = BlockFileParts::entries(*index);
    const std::uint64_t offset = entries[*found].offset;
    std::uint64_t next = f.getHeader() ? f.getHeader()->getOffsetMasterNdx() : 0;
    if (*found + 1u < entries.size()) next = entries[*found + 1u].offset;
    next = std::min(next, size);
    return {offset, id, next > offset ? next - offset : 0};
}

}  // namespace

TarvFileRead::TarvFileRead() = default;
TarvFileRead::TarvFileRead(const TarvFileRead&) = default;
TarvFileRead& TarvFileRead::operator=(const TarvFileRead&) = default;
TarvFileRead::~TarvFileRead() = default;

int TarvFileRead::open(const RWCString& name) {
    return open(name.c_str());
}

int TarvFileRead::open(const char* name) {
    if (isOpen()) return 1;
    setFileType(OpenForReading);
    if (!BlockFileParts::file(*this)) BlockFileParts::attach(*this, openedToRead(name ? name : ""));
    APIFile& file = *BlockFileParts::file(*this);
    bool opened = file.isValid();
    if (opened) {
        if (!getHeader()) setHeader(TarvFileHeader());
        opened = readHeader(*this, file);
    }
    if (opened) {
        if (!getIndex()) setIndex(TarvFileIndex());
        size_ = blocks::sizeOf(file);
        TarvFileHeader& header = *getHeader();
        const bool isOld = header.getVersionFile() < blocks::kFormatWritten;
        if (isOld && FileChecksums::proveLayout(bytesOf(file, size_), indexOffsetOf(header)))
            BlockFileParts::setFormat(header, blocks::kFormatWritten);
        opened = readIndex(*this, file, size_);
    }
    if (!opened) close();
    return opened;
}

int TarvFileRead::close() {
    checksums_.reset();
    fault_ = NoFault;
    return TarvFile::close();
}

/// Null when there is no file.
const FileChecksums* TarvFileRead::checksums() {
    APIFile* const file = BlockFileParts::file(*this);
    if (!canRead() || !file) return nullptr;
    if (!checksums_)
        checksums_ = std::make_shared<const FileChecksums>(checksumsOf(*this, *file, size_));
    return checksums_.get();
}

TarvFileRead::ChecksumState TarvFileRead::getChecksumState() {
    const FileChecksums* const list = checksums();
    return list ? list->state() : NoChecksums;
}

TarvFileRead::BlocFault TarvFileRead::getBlocFault() const {
    return fault_;
}

int TarvFileRead::getBloc(unsigned long id, TarvBlocFile& out) {
    const FileChecksums* const list = checksums();
    fault_ = NotThere;
    if (!list) return 0;
    const auto key = static_cast<std::uint32_t>(id);
    // A class of the application's may have its own way of being assigned.
    const bool plain = typeid(out) == typeid(TarvBlocFile);
    std::optional<TarvBlocFile> temporary;
    TarvBlocFile& block = plain ? out : temporary.emplace();

    if (!(list->proves() ? fetchProved(key, *list, block) : fetchFound(key, block))) return 0;
    fault_ = NoFault;
    block.setID(key);
    if (!plain) out = block;
    return 1;
}

/// By the index, or by a search where the mask allows it.
bool TarvFileRead::fetchFound(std::uint32_t id, TarvBlocFile& block) {
    APIFile& file = *BlockFileParts::file(*this);
    const blocks::Layout layout = blocks::layoutOf(*this);
    if (blocks::fetch(file, placeOf(*this, id, size_), layout, block) > 0) return true;
    if (!getHeader() || !(getHeader()->getMask() & blocks::kWholeWords)) return false;
    const std::uint64_t afterId = blocks::scan(file, 0, id);
    return afterId != 0 && blocks::fetch(file, {afterId - 4, id, 0}, layout, block) > 0;
}

/// By the list of checksums, which says where the block is and what its bytes are.
bool TarvFileRead::fetchProved(std::uint32_t id, const FileChecksums& list, TarvBlocFile& block) {
    const TarvFileIndex* const index = BlockFileParts::index(*this);
    const BlockSum* const row =
        list.find(id, index ? BlockFileParts::find(*index, id) : std::nullopt);
    if (!row) return false;
    if (!row->isKnown()) return fetchFound(id, block);
    const blocks::Place place{row->offset, id, row->length, row};
    const blocks::Layout layout = blocks::layoutOf(*this);
    if (blocks::fetch(*BlockFileParts::file(*this), place, layout, block) > 0) return true;
    if (row->offset < size_) fault_ = WrongChecksum;
    return false;
}
