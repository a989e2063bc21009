// Walks through a block file from block to block, however damaged it is, and says what it meets.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hints.h"
#include "map.h"
#include "search.h"

namespace tbfile {

/// How a block is known to be one.
enum class Evidence {
    index,  ///< the index names its place and its identifier
    chain,  ///< it lies in an unbroken chain of blocks that begins or ends at a known place
    search  ///< it was found by searching, and looks like a block
};

/// Why a block may not be what was written. Any number of these.
enum Doubt : unsigned {
    kFoundBySearch = 1,    ///< it may be part of the data of the damaged block before it
    kLengthRepaired = 2,   ///< one bit of its length was wrong
    kTerminatorWrong = 4,  ///< something else stands where it ends
    kOtherId = 8,          ///< the index names its place with another identifier
    kUnfollowed = 16,      ///< nothing that is known begins where its length says that it ends
    kNotIndexed = 32,      ///< it lies where an undamaged index names every block, and is not named
};

struct Found {
    Frame frame;
    Evidence evidence = Evidence::chain;
    unsigned doubts = 0;
    std::uint32_t indexId = 0;  ///< what the index says, with kOtherId
};

enum class LossKind {
    damaged,    ///< bytes that no block could be made of
    cutOff,     ///< a block that the file ends in
    indexBlock  ///< a master index that is damaged
};

struct Loss {
    LossKind kind;
    std::uint64_t from;
    std::uint64_t to;
    std::optional<std::uint32_t> id;  ///< of the block that begins there, where it is known
};

class Walker {
  public:
    virtual ~Walker() = default;
    /// In the order of the file; none overlaps another.
    virtual void block(const Found& found) = 0;
    virtual void index(const Frame& frame) = 0;
    virtual void loss(const Loss& loss) = 0;
};

class Walk {
  public:
    /// `probe` is a second window on the same file.
    Walk(Window& file, Window& probe, const Map& map, Walker& walker);

    void run();

  private:
    /// What a damaged place is, and how far its surroundings are known.
    struct Break {
        Frame frame;
        const BlocItem* hint;  ///< the entry that names it
        std::uint64_t limit;   ///< the next place that is known for certain, or the end
    };
    class Gap;

    [[nodiscard]] Frame look(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] bool overruns(const Frame& frame);
    [[nodiscard]] bool isFollowed(const Frame& frame, const BlocItem* hint);
    [[nodiscard]] bool isIndexed(std::uint64_t at) const;
    [[nodiscard]] bool isBlockAt(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] std::uint64_t knownAfter(std::uint64_t at);
    [[nodiscard]] bool isAlone(const Break& at);

    void tell(Found found, const BlocItem* hint);
    void lose(LossKind kind, std::uint64_t from, std::uint64_t to, std::optional<std::uint32_t> id);

    void release();
    [[nodiscard]] std::optional<std::uint64_t> correctHeld();

    [[nodiscard]] std::uint64_t step(std::uint64_t at);
    [[nodiscard]] std::uint64_t pass(const Break& at);
    [[nodiscard]] std::uint64_t passWhole(const Break& at);
    [[nodiscard]] std::uint64_t passSearching(const Break& at);
    [[nodiscard]] const Resumption& search(std::uint64_t from, std::uint64_t limit);
    [[nodiscard]] std::uint64_t goOn(const Break& at, const Resumption& resumption);
    [[nodiscard]] std::optional<std::uint64_t> endWithin(const Frame& frame);
    [[nodiscard]] bool leadsTo(std::uint64_t at, std::uint64_t limit);
    [[nodiscard]] bool tellRepaired(const Break& at, std::uint64_t end);
    [[nodiscard]] bool isCutOff(const Frame& frame, std::uint64_t limit);
    [[nodiscard]] bool isDistinct(const Frame& frame);
    [[nodiscard]] bool mayBeUnproven(const Break& at, const Frame& frame);

    Window& file_;
    Window& probe_;
    const Map& map_;
    Shape shape_;
    Hints hints_;
    Walker& walker_;
    Evidence evidence_ = Evidence::chain;
    std::optional<Frame> ahead_;  ///< looked at already
    /// Not told yet: only its length says so far that it is right.
    std::optional<Found> held_;
    std::uint64_t known_ = 0;      ///< the last answer of knownAfter()
    std::uint64_t knownFrom_ = 1;  ///< and the first place for which it is one
    Resumption searched_;          ///< the last answer of search()
    std::uint64_t searchedFrom_ = 1;
    std::uint64_t searchedTo_ = 0;
};

}  // namespace tbfile
