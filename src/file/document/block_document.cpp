// Blocks one by one, in the order of the index.
#include "file/document/block_document.h"

#include <algorithm>

#include "file/block/checksums.h"
#include "file/block/parts.h"
#include "file/file_system.h"
#include "file/replacement.h"

namespace toolbox::document {
namespace {

/// The entries of an open file's index but for the list of checksums.
std::vector<BlocItem> contentsOf(const TarvFile& file) {
    const TarvFileIndex* const index = BlockFileParts::index(file);
    if (!index) return {};
    const auto all = BlockFileParts::entries(*index);
    std::vector<BlocItem> contents(all.begin(), all.end());
    std::erase_if(contents, [](const BlocItem& each) { return each.id == blocks::kChecksumsId; });
    return contents;
}

bool areSame(const TarvBlocFile& one, const TarvBlocFile& other) {
    return one.getLen() == other.getLen() && one.getVersion() == other.getVersion() &&
           one.getVersionVarrec() == other.getVersionVarrec() &&
           one.getDescription() == other.getDescription() &&
           std::equal(one.getPData(), one.getPData() + one.getLen(), other.getPData());
}

}  // namespace

Fault openQuietly(TarvFileRead& file, const std::string& name) {
    constexpr std::chrono::milliseconds kPause{2};
    const HeldFileErrors held;
    std::unique_ptr<APIFile> open;
    const platform::ErrorCode error = patiently(kPause, [&] {
        open =
            std::make_unique<APIFile>(name.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
        return static_cast<platform::ErrorCode>(open->Error());
    });
    if (error != ERROR_SUCCESS) return faultOf(error, Doing::reading, name);
    BlockFileParts::attach(file, std::move(open));
    if (file.open(name.c_str())) return {};
    if (held.first() != ERROR_SUCCESS) return faultOf(held.first(), Doing::reading, name);
    return {Reason::damaged, ERROR_SUCCESS};
}

bool isWhole(TarvFileRead& file) {
    const HeldFileErrors held;
    if (file.getChecksumState() == TarvFileRead::ChecksumsDamaged) return false;
    const std::vector<BlocItem> contents = contentsOf(file);
    TarvBlocFile block;
    return std::ranges::all_of(
        contents, [&](const BlocItem& each) { return file.getBloc(each.id, block) != 0; });
}

bool holdTheSame(TarvFileRead& one, TarvFileRead& other) {
    const HeldFileErrors held;
    const TarvFileHeader* const mine = one.getHeader();
    const TarvFileHeader* const theirs = other.getHeader();
    if (!mine || !theirs || mine->getVersion() != theirs->getVersion() ||
        mine->getDescription() != theirs->getDescription())
        return false;
    const std::vector<BlocItem> contents = contentsOf(one);
    if (contents.size() != contentsOf(other).size()) return false;
    TarvBlocFile mineBlock;
    TarvBlocFile theirBlock;
    return std::ranges::all_of(contents, [&](const BlocItem& each) {
        return one.getBloc(each.id, mineBlock) && other.getBloc(each.id, theirBlock) &&
               areSame(mineBlock, theirBlock);
    });
}

bool markFile(const std::string& name, Mark& mark) {
    TarvFileRead file;
    const bool isSound = !openQuietly(file, name) && isWhole(file);
    const bool isLooked =
        look(name, isSound ? extentOf(file) : Mark(), mark) == platform::ErrorCode{ERROR_SUCCESS};
    return isSound && isLooked;
}

}  // namespace toolbox::document
