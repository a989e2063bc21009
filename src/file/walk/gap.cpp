// What lies between a damaged place and where the blocks go on: single blocks, and what is lost.
#include <algorithm>

#include "file/walk/field.h"
#include "file/walk/walker.h"

namespace toolbox {

/// What lies between a damaged place and where the blocks go on.
class Walker::Gap {
  public:
    Gap(Walker& walk, const Break& at, const Resumption& resumption)
        : walk_(walk), at_(at), resumption_(resumption), reported_(at.frame.offset) {
        if (at.hint) id_ = at.hint->id;
        const BlocItem* named = walk.places_.after(at.frame.offset);
        mayMiss_ = !walk.isIndexed(at.frame.offset) || (named && named->offset < at.limit) ||
                   !walk.isAfterTerminator(at.frame.offset);
    }

    /// Reports what was found there, and what is lost between.
    void report() {
        // What was found within a block that ends where the blocks go on is its data.
        const bool mayHide = mayMiss_ && !resumption_.unproven.empty();
        const auto last =
            mayHide ? walk_.blockBefore(reported_, resumption_.at, resumption_.at) : std::nullopt;
        const bool isBlock = last && walk_.mayBeUnproven(at_, *last);
        for (const Run& run : resumption_.unproven)
            if (!isBlock || run.start < last->offset) reportRun(run);
        reportBetween(resumption_.at);
        loseUpTo(resumption_.at);
    }

  private:
    void reportRun(const Run& run) {
        for (std::uint64_t place = run.start; place < std::min(run.end, resumption_.at);) {
            const BlockFrame frame = frameAt(walk_.probe_, walk_.shape_, place, resumption_.at);
            if (!frame.isWhole()) break;
            place = frame.end;
            if (frame.offset < reported_ || !walk_.mayBeUnproven(at_, frame)) continue;
            reportBetween(frame.offset);
            if (frame.offset >= reported_) reportOne(frame);
        }
    }

    /// Blocks before a place where one begins, and single ones, whose predecessor's terminator is
    /// destroyed. What was found within their data is theirs.
    void reportBetween(std::uint64_t stop) {
        if (!mayMiss_ || reported_ >= stop) return;
        auto last = blockEndingAt(walk_.file_, walk_.probe_, walk_.shape_, reported_, stop, stop);
        if (last && !walk_.mayBeUnproven(at_, *last)) last.reset();
        reportSingles(last ? last->offset : stop, stop);
        if (last && last->offset >= reported_) reportOne(*last);
    }

    void reportSingles(std::uint64_t rest, std::uint64_t stop) {
        for (std::uint64_t from = reported_;
             const auto one = blockAnywhere(walk_.file_, walk_.probe_, walk_.shape_, from, rest,
                                            resumption_.at);) {
            const bool mayBe =
                (one->end <= rest || reachesOver(*one, stop)) && walk_.mayBeUnproven(at_, *one);
            from = mayBe ? one->end : one->offset + 1;
            if (mayBe) reportOne(*one);
        }
    }

    /// What begins at `stop` is rather this one's data.
    [[nodiscard]] bool reachesOver(const BlockFrame& one, std::uint64_t stop) const {
        return one.end > stop && !resumption_.leadsOver(one.end) && walk_.isDistinct(one);
    }

    void reportOne(const BlockFrame& frame) {
        loseUpTo(frame.offset);
        WalkFinding found = walk_.findingOf(frame, kFoundBySearch);
        found.evidence = Evidence::search;
        walk_.report(found, walk_.places_.at(frame.offset));
        reported_ = frame.end;
    }

    void loseUpTo(std::uint64_t end) {
        if (reported_ >= end) return;
        auto kind = WalkFinding::Kind::damaged;
        const std::uint64_t size = walk_.file_.size();
        if (end == size || reported_ == at_.frame.offset) {
            const BlockFrame frame = frameAt(walk_.probe_, walk_.shape_, reported_, size);
            if (end == size && walk_.isCutOff(frame, end)) kind = WalkFinding::Kind::cutOff;
            if (!id_ && frame.hasHead && frame.plausible) id_ = frame.id;
        }
        walk_.reportLoss(kind, reported_, end, id_);
        id_.reset();
    }

    Walker& walk_;
    const Break& at_;
    const Resumption& resumption_;
    std::uint64_t reported_;  ///< what lies before it is reported
    std::optional<std::uint32_t>
        id_;        ///< of the block that is damaged at reported_, where it is known
    bool mayMiss_;  ///< there may be blocks that a search from terminators does not find
};

void Walker::reportGap(const Break& at, const Resumption& resumption) {
    Gap(*this, at, resumption).report();
}

/// Whether a whole block is more than a text and ones after it, which damaged bytes may be.
bool Walker::isDistinct(const BlockFrame& frame) {
    constexpr std::uint64_t kTwoWords = 8;
    const std::uint32_t head = shape_.head;
    const char* text = probe_.at(frame.offset, head);
    if (!text || text[head - 5] != '\0') return false;
    const char* last = probe_.at(frame.end - kTwoWords, kTwoWords);
    return last && wordAt(last) != kBlockTerminator;
}

/// With an undamaged index a block that only looks like one must be one that the index misses.
bool Walker::mayBeUnproven(const Break& at, const BlockFrame& frame) {
    if (!isIndexed(frame.offset)) return true;
    const BlocItem* entry = places_.at(frame.offset);
    if (!entry) entry = places_.of(frame.id);
    return entry && entry->offset >= at.frame.offset && entry->offset < at.limit;
}

}  // namespace toolbox
