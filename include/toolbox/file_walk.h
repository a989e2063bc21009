// Walks through a block file, however damaged it is, and tells what it meets.
//
// Data may hold anything, whole block files included, and most files have no checksums. So a walk
// holds on to what is certain: places where the master index names a block and a whole block with
// that identifier stands, the index itself, and the end of the file. Between two such places it
// follows the lengths of the blocks; where that chain breaks it searches for the place from which
// whole blocks lead to the next certain place without a gap. docs/tbfile.md says what is recovered
// so, and what cannot be known.
//
// A list of checksums that is whole and belongs to the file leaves nothing to follow or guess of
// the blocks whose sums it knows: each is proved at its place, found elsewhere by its identifier,
// its length and its sum, kept with a doubt where its frame is there but not what was written, or
// lost. An outdated or damaged list changes nothing.
//
//     toolbox::SystemFileSource source("plan.dat");
//     TarvFileWalk walk(source);
//     walk.run([&](const toolbox::WalkFinding& finding) {
//         if (finding.kind == toolbox::WalkFinding::Kind::block && finding.doubts == 0)
//             keep(finding.frame);
//         return true;  // go on
//     });
//
// A walk takes time proportional to the file (times a logarithm where it searches), whatever the
// bytes; memory for three readers and for the entries of the index, and where it searches for the
// places that look like blocks. It never writes and shows no message.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "toolbox/block_frames.h"
#include "toolbox/export.h"

namespace toolbox {

/// The master index of a file, damaged or not.
struct MasterIndex {
    BlockFrame frame;         ///< the block that holds it
    bool atItsPlace = false;  ///< where the header says
    /// In the order of the index. Of a damaged one those that may be right.
    std::vector<BlocItem> entries;
    bool ascending = true;  ///< they are in the order of the file, but for a list of checksums
    bool possible = true;   ///< blocks can be where they say, one after another

    /// The bytes of its entries are all there, and nothing around them is damaged.
    [[nodiscard]] bool isWhole() const { return frame.isWhole() && frame.isIndex(); }
    /// Nothing contradicts that it names every block before it.
    [[nodiscard]] bool isComplete() const { return isWhole() && ascending && possible; }
};

/// The list of checksums of a file, damaged or not.
struct ChecksumMap {
    BlockFrame frame;                                               ///< the block that holds it
    TarvFileRead::ChecksumState state = TarvFileRead::NoChecksums;  ///< never this one
    /// In the order of the index, none over another; empty unless the list is whole and belongs to
    /// the file.
    std::vector<BlockSum> rows;

    /// The walk goes by it.
    [[nodiscard]] bool proves() const { return !rows.empty(); }
    /// It is damaged itself.
    [[nodiscard]] bool isUnreadable() const {
        return state == TarvFileRead::ChecksumsDamaged && !proves();
    }
};

/// What a file's header and master index say of it, wherever the index is found.
struct BlockFileMap {
    BlockFileHeader header;  ///< as it stands in the file, faults included
    /// How the blocks really lie. A header whose format version is known and that ends with its
    /// terminator is believed, unless no block anywhere lies as it says and another layout is
    /// proven: by a whole index where the header says, most of whose entries hold, or, without
    /// an index, by several blocks in a row after the header.
    BlockShape shape;
    /// Where the blocks begin: after the header, which may have lost bytes.
    std::uint64_t start = 0;
    std::optional<MasterIndex> index;      ///< the current one, where there is one to be found
    std::optional<ChecksumMap> checksums;  ///< where there is a list, by the index or beside it

    /// The header names another format version than that of the blocks.
    [[nodiscard]] bool formatDiffers() const { return shape.format != header.shape.format; }
};

/// How a block is known to be one.
enum class Evidence {
    index,    ///< the index names its place and its identifier
    chain,    ///< it lies in an unbroken chain of blocks that begins or ends at a certain place
    search,   ///< it was found by searching, and looks like a block
    checksum  ///< the list of checksums names it; without a doubt its bytes are what was written
};

/// Why a block may not be what was written. Any number of these.
enum Doubt : unsigned {
    kFoundBySearch = 1,    ///< it may be part of the data of the damaged block before it
    kLengthRepaired = 2,   ///< one bit of its length was wrong; the frame has the right one
    kTerminatorWrong = 4,  ///< something else stands where it ends
    kOtherId = 8,          ///< the index names its place with another identifier
    kUnfollowed = 16,      ///< nothing that is known begins where its length says that it ends
    kNotIndexed = 32,      ///< it lies where an undamaged index names every block, and is not named
    kWrongSum = 64,        ///< it is at its place, but its bytes do not have the sum that is listed
};

/// One thing that a walk meets. The findings come in the order of the file; none overlaps another,
/// and together they cover every byte from the start that the map names.
struct WalkFinding {
    /// What it is.
    enum class Kind {
        block,
        index,         ///< a master index, the current one or one that a later commit superseded
        damaged,       ///< bytes that no block could be made of
        cutOff,        ///< a block that the file ends in
        damagedIndex,  ///< a master index that is damaged
        checksums,     ///< a list of checksums, the current one or a superseded one
        damagedChecksums,  ///< a list of checksums that is damaged
    };

    Kind kind = Kind::damaged;  ///< what it is
    std::uint64_t from = 0;     ///< its first byte
    std::uint64_t to = 0;       ///< the byte after its last
    /// Of the block that begins there, where it is known.
    std::optional<std::uint32_t> id;

    // Of a block, an index or a list of checksums only:
    BlockFrame frame;  ///< with a doubt about length or identifier, corrected
    Evidence evidence = Evidence::chain;
    unsigned doubts = 0;        ///< bits of Doubt; 0: certain
    std::uint32_t indexId = 0;  ///< what the index, or with kOtherId the other of both, says

    // With Evidence::checksum only:
    bool isMisplaced = false;  ///< it lies elsewhere than the list says
    bool isReframed = false;   ///< identifier, length or terminator is damaged; the list has it

    /// Nothing of these bytes is kept.
    [[nodiscard]] bool isLoss() const {
        return kind != Kind::block && kind != Kind::index && kind != Kind::checksums;
    }
};

}  // namespace toolbox

/// A walk through one file. The source has to live as long.
class TB_API TarvFileWalk {
  public:
    /// Told how far reading has come, in bytes from the start; false ends the walk.
    using Progress = toolbox::FileReader::Progress;
    /// Gets a finding; false ends the walk.
    using Take = std::function<bool(const toolbox::WalkFinding& finding)>;

    /// Reads header and index, and searches the file for the index where the header does not lead
    /// to one.
    explicit TarvFileWalk(const toolbox::FileSource& source, Progress progress = {});

    /// What header and index say.
    [[nodiscard]] const toolbox::BlockFileMap& map() const { return map_; }

    /// Tells every finding. 1 when all of the file was told of, 0 when `take` or the progress ended
    /// the walk. May be called again. What `take`, the progress or the source throw passes through.
    int run(const Take& take) const;

  private:
    const toolbox::FileSource& source_;
    Progress progress_;
    toolbox::BlockFileMap map_;
    bool stopped_ = false;
};
