// The walk itself: from block to block through a file, telling each and what is lost between.
//
// Lengths are the only way from one block to the next, and data may hold anything, also whole
// blocks. At each place the walk looks at the frame there:
//   1. A whole frame that something known follows is a block, and the walk goes on at its end. A
//      block that the index does not name is held back for a step, until the next place shows that
//      its length was right.
//   2. Otherwise the chain is broken. The next certain place is looked for: one that the index
//      names and that holds a block with the identifier it names, the index, or the end of the
//      file. Between here and there the explanation with the least damage counts: a terminator is
//      wrong, one bit of the length is wrong, or (by a search for whole blocks after a terminator)
//      the blocks go on at the first place from which they lead to the certain place without a
//      gap. Blocks that are data of a block do not: that block's own end comes before.
//   3. What lies before that place is looked through for single blocks; the rest is lost.
// walker.cpp has the first, breaks.cpp the second, gap.cpp the third. Where a list of checksums
// says what a block is, listed_step.cpp tells that, and none of this is asked.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "file/walk/index_places.h"
#include "file/walk/listed.h"
#include "file/walk/search.h"
#include "toolbox/file_walk.h"

namespace toolbox {

class Walker {
  public:
    /// `probe` is a second reader of the same file.
    Walker(FileReader& file, FileReader& probe, const BlockFileMap& map,
           const TarvFileWalk::Take& take);

    /// False when the walk was ended before the file.
    [[nodiscard]] bool run();

  private:
    /// What a damaged place is, and how far its surroundings are known.
    struct Break {
        BlockFrame frame;
        const BlocItem* hint;  ///< the entry that names it
        std::uint64_t limit;   ///< the next place that is known for certain, or the end
    };
    class Gap;

    [[nodiscard]] BlockFrame frameHere(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] bool overruns(const BlockFrame& frame);
    [[nodiscard]] bool isFollowed(const BlockFrame& frame, const BlocItem* hint);
    [[nodiscard]] bool isIndexed(std::uint64_t at) const;
    [[nodiscard]] bool isBlockAt(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] std::uint64_t knownAfter(std::uint64_t at);
    [[nodiscard]] bool isAlone(const Break& at);
    [[nodiscard]] bool isAfterTerminator(std::uint64_t at);
    [[nodiscard]] bool isMoved(const BlockFrame& frame);

    void report(WalkFinding found, const BlocItem* hint);
    void compareWithIndex(WalkFinding& found, const BlocItem* hint);
    void reportLoss(WalkFinding::Kind kind, std::uint64_t from, std::uint64_t to,
                    std::optional<std::uint32_t> id);
    void give(const WalkFinding& finding);

    [[nodiscard]] WalkFinding findingOf(const BlockFrame& frame, unsigned doubts) const;
    void reportGap(const Break& at, const Resumption& resumption);
    void reportHeld();
    [[nodiscard]] std::optional<std::uint64_t> correctHeld();

    [[nodiscard]] std::uint64_t step(std::uint64_t at);
    [[nodiscard]] std::optional<std::uint64_t> stepListed(std::uint64_t at);
    [[nodiscard]] std::uint64_t reportUnproved(const BlockSum& row, std::uint64_t at);
    void reportListed(const BlockFrame& frame, unsigned doubts, bool isMisplaced, bool isReframed);
    [[nodiscard]] std::uint64_t resumeAfter(const Break& at);
    [[nodiscard]] std::uint64_t resumeAfterWhole(const Break& at);
    [[nodiscard]] std::uint64_t resumeBySearch(const Break& at);
    [[nodiscard]] const Resumption& search(std::uint64_t from, std::uint64_t limit);
    [[nodiscard]] std::uint64_t resumeAt(const Break& at, const Resumption& resumption);
    [[nodiscard]] std::optional<std::uint64_t> endWithin(const BlockFrame& frame);
    [[nodiscard]] std::optional<BlockFrame> blockBefore(std::uint64_t from, std::uint64_t stop,
                                                        std::uint64_t end);
    [[nodiscard]] bool displaces(const BlockFrame& frame, const Resumption& resumption);
    [[nodiscard]] bool leadsTo(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] bool reportRepaired(const Break& at, std::uint64_t end);
    [[nodiscard]] bool isCutOff(const BlockFrame& frame, std::uint64_t limit);
    [[nodiscard]] bool isDistinct(const BlockFrame& frame);
    [[nodiscard]] bool mayBeUnproven(const Break& at, const BlockFrame& frame);

    FileReader& file_;
    FileReader& probe_;
    const BlockFileMap& map_;
    BlockShape shape_;
    IndexPlaces places_;
    ListedBlocks listed_;
    std::uint64_t namedEnd_ = 0;  ///< every block that begins before it is named
    const TarvFileWalk::Take& take_;
    bool ended_ = false;
    Evidence evidence_ = Evidence::chain;
    std::optional<BlockFrame> ahead_;  ///< looked at already
    /// Not told yet: only its length says so far that it is right.
    std::optional<WalkFinding> held_;
    std::uint64_t known_ = 0;      ///< the last answer of knownAfter()
    std::uint64_t knownFrom_ = 1;  ///< and the first place for which it is one
    Resumption searched_;          ///< the last answer of search()
    std::uint64_t searchedFrom_ = 1;
    std::uint64_t searchedTo_ = 0;
};

}  // namespace toolbox
