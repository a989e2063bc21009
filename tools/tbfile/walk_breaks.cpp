// What a walk does where the chain of blocks is broken.
//
// Lengths are the only way from one block to the next, and data may hold anything, also whole
// blocks. What is certain comes first: places that the index names and that hold a block with the
// identifier it names, and the ends of the file. Between two such places the explanation with the
// least damage counts.
#include <algorithm>
#include <bit>

#include "walk.h"

namespace tbfile {

/// The next place behind `at` that is known for certain, or the end of the file.
std::uint64_t Walk::knownAfter(std::uint64_t at) {
    if (at >= knownFrom_ && at < known_) return known_;
    knownFrom_ = at;
    known_ = file_.size();
    if (map_.index && map_.index->isWhole() && map_.index->frame.offset > at)
        known_ = map_.index->frame.offset;
    for (const BlocItem* next = hints_.after(at); next && next->offset < known_;
         next = hints_.after(next->offset))
        if (isConfirmed(probe_, shape_, *next)) known_ = next->offset;
    return known_;
}

/// Whether an undamaged index says that there is nothing but one block up to the limit.
bool Walk::isAlone(const Break& at) {
    if (!at.hint || !isIndexed(at.frame.offset)) return false;
    const BlocItem* next = hints_.after(at.frame.offset);
    const std::uint64_t index = map_.index->frame.offset;
    return at.limit == (next && next->offset < index ? next->offset : index);
}

std::uint64_t Walk::pass(const Break& at) {
    const Frame& frame = at.frame;
    if (frame.isWhole()) return passWhole(at);
    const bool isEnd = isAlone(at) ? frame.end == at.limit && frame.padded
                                   : frame.fits && frame.plausible && frame.end <= at.limit &&
                                         isBlockAt(frame.end, at.limit);
    if (isEnd) {
        tell({frame, evidence_, kTerminatorWrong, 0}, at.hint);
        return frame.end;
    }
    if (isAlone(at) && tellRepaired(at, at.limit)) return at.limit;
    return passSearching(at);
}

/// The block is whole, but nothing known follows. Mostly what follows is damaged. It may be the
/// length too, where a terminator stands at the wrong end by chance: that is so where blocks lead
/// over that end, and likely where it is among ones and the index knows better.
std::uint64_t Walk::passWhole(const Break& at) {
    const Frame& frame = at.frame;
    constexpr std::uint64_t kTwoWords = 8;
    const char* last = probe_.at(frame.end - kTwoWords, kTwoWords);
    const bool amongOnes = last && wordAt(last) == blocks::kTerminator;
    if (amongOnes && isAlone(at) && tellRepaired(at, at.limit)) return at.limit;
    const Resumption& resumption = search(frame.offset, at.limit);
    if (resumption.leadsOver(frame.end)) return goOn(at, resumption);
    tell({frame, evidence_, kUnfollowed, 0}, at.hint);
    return frame.end;
}

/// Tells the block with the length that takes it to `end`, when that is its own but for one bit.
bool Walk::tellRepaired(const Break& at, std::uint64_t end) {
    Frame frame = at.frame;
    if (!frame.hasHead || !frame.padded || end < frame.offset + shape_.around()) return false;
    const std::uint64_t length = end - frame.offset - shape_.around();
    if (length > blocks::kMostBytes) return false;
    if (!std::has_single_bit(static_cast<std::uint32_t>(length) ^ frame.length)) return false;
    const char* last = probe_.at(end - 4, 4);
    if (!last || wordAt(last) != blocks::kTerminator) return false;
    frame.length = static_cast<std::uint32_t>(length);
    frame.end = end;
    frame.fits = frame.terminated = true;
    tell({frame, evidence_, kLengthRepaired, 0}, at.hint);
    return true;
}

/// Where a whole block ends if a bit of its length is set that was not: there other blocks begin
/// and lead to the end that the length names. Blocks that are its data cannot: its own end stands
/// between.
std::optional<std::uint64_t> Walk::endWithin(const Frame& frame) {
    for (std::uint32_t bits = frame.length; bits >= shape_.around(); bits &= bits - 1) {
        const std::uint32_t bit = bits & (~bits + 1);
        if (bit < shape_.around()) continue;
        const std::uint64_t end = frame.end - bit;
        const char* last = probe_.at(end - 4, 4);
        if (last && wordAt(last) == blocks::kTerminator && leadsTo(end, frame.end)) return end;
    }
    return std::nullopt;
}

/// Whether whole blocks stand one behind another from `at` to `limit`.
bool Walk::leadsTo(std::uint64_t at, std::uint64_t limit) {
    while (at < limit) {
        const Frame frame = frameAt(probe_, shape_, at, limit);
        if (!frame.isWhole() || !frame.plausible) return false;
        at = frame.end;
    }
    return at == limit;
}

/// Whether the file may end within a block, which then is not damaged. What its data looks like
/// proves nothing, even if it leads to the end of the file.
bool Walk::isCutOff(const Frame& frame, std::uint64_t limit) {
    if (limit != file_.size() || !frame.plausible || frame.fits) return false;
    const std::uint32_t index = map_.header.indexOffset;
    if (map_.header.isReadable() && index > frame.offset && index <= limit) return false;
    if (!frame.hasHead) return true;
    if (frame.end <= limit) return false;
    // A length out of all proportion and a description that fills its field are rather bytes that
    // are no head.
    constexpr std::uint64_t kProportion = 16;
    const std::uint32_t room = shape_.layout().description;
    const char* text = probe_.at(frame.offset + 4, room);
    return text && (text[room - 1] == '\0' || frame.length / kProportion <= limit);
}

/// The block before a break may be what is wrong: its length, where its data, or that of a block
/// behind it, happens to hold a terminator. It is when blocks lead over its end to a known place;
/// it may be when a block begins where it would end but for one bit.
std::optional<std::uint64_t> Walk::correctHeld() {
    if (!held_) return std::nullopt;
    const Frame frame = held_->frame;
    const std::uint64_t limit = knownAfter(frame.offset);
    const Resumption& resumption = search(frame.offset, limit);
    if (resumption.proven && resumption.at < frame.end) {
        held_.reset();
        return goOn({frame, nullptr, limit}, resumption);
    }
    for (unsigned bit = 0; bit < 31; ++bit) {
        const std::uint64_t end =
            frame.offset + shape_.around() + (frame.length ^ std::uint32_t{1} << bit);
        if (end > limit || end == file_.size()) continue;
        const char* last = probe_.at(end - 4, 4);
        if (last && wordAt(last) == blocks::kTerminator && isBlockAt(end, limit))
            held_->doubts |= kUnfollowed;
    }
    return std::nullopt;
}

/// As resume(). The last answer serves again as long as nothing of it lies behind.
const Resumption& Walk::search(std::uint64_t from, std::uint64_t limit) {
    if (from >= searchedFrom_ && limit == searchedTo_ && from < searched_.first()) return searched_;
    searched_ = resume(file_, probe_, shape_, from, limit);
    searchedFrom_ = from;
    searchedTo_ = limit;
    return searched_;
}

std::uint64_t Walk::passSearching(const Break& at) {
    const Frame& frame = at.frame;
    const Resumption& resumption = search(frame.offset, at.limit);
    // The index names the next block where this one's length says; that one is damaged too.
    if (at.hint && at.hint->id == frame.id && frame.fits && frame.plausible &&
        hints_.at(frame.end) && !resumption.leadsOver(frame.end)) {
        tell({frame, evidence_, kTerminatorWrong, 0}, at.hint);
        return frame.end;
    }
    return goOn(at, resumption);
}

/// What lies between a damaged place and where the blocks go on.
class Walk::Gap {
  public:
    Gap(Walk& walk, const Break& at, const Resumption& resumption)
        : walk_(walk), at_(at), resumption_(resumption), told_(at.frame.offset) {
        if (at.hint) id_ = at.hint->id;
        const BlocItem* named = walk.hints_.after(at.frame.offset);
        mayMiss_ = !walk.isIndexed(at.frame.offset) || (named && named->offset < at.limit);
    }

    /// Tells what was found there, and what is lost between.
    void tell() {
        for (const Run& run : resumption_.unproven) tellRun(run);
        tellBetween(resumption_.at);
        loseUpTo(resumption_.at);
    }

  private:
    void tellRun(const Run& run) {
        for (std::uint64_t place = run.start; place < std::min(run.end, resumption_.at);) {
            const Frame frame = frameAt(walk_.probe_, walk_.shape_, place, resumption_.at);
            if (!frame.isWhole()) break;
            place = frame.end;
            if (frame.offset < told_ || !walk_.mayBeUnproven(at_, frame)) continue;
            tellBetween(frame.offset);
            if (frame.offset >= told_) tellOne(frame);
        }
    }

    /// Blocks before a place where one begins, and single ones, whose predecessor's terminator is
    /// destroyed. What was found within their data is theirs.
    void tellBetween(std::uint64_t stop) {
        if (!mayMiss_ || told_ >= stop) return;
        auto last = blockEndingAt(walk_.file_, walk_.probe_, walk_.shape_, told_, stop);
        if (last && !walk_.mayBeUnproven(at_, *last)) last.reset();
        tellSingles(last ? last->offset : stop, stop);
        if (last && last->offset >= told_) tellOne(*last);
    }

    void tellSingles(std::uint64_t rest, std::uint64_t stop) {
        for (std::uint64_t from = told_;
             const auto one = blockAnywhere(walk_.file_, walk_.probe_, walk_.shape_, from, rest,
                                            resumption_.at);) {
            const bool mayBe =
                (one->end <= rest || reachesOver(*one, stop)) && walk_.mayBeUnproven(at_, *one);
            from = mayBe ? one->end : one->offset + 1;
            if (mayBe) tellOne(*one);
        }
    }

    /// What begins at `stop` is rather this one's data.
    [[nodiscard]] bool reachesOver(const Frame& one, std::uint64_t stop) const {
        return one.end > stop && !resumption_.leadsOver(one.end) && walk_.isDistinct(one);
    }

    void tellOne(const Frame& frame) {
        loseUpTo(frame.offset);
        walk_.tell({frame, Evidence::search, kFoundBySearch, 0}, walk_.hints_.at(frame.offset));
        told_ = frame.end;
    }

    void loseUpTo(std::uint64_t end) {
        if (told_ >= end) return;
        LossKind kind = LossKind::damaged;
        const std::uint64_t size = walk_.file_.size();
        if (end == size || told_ == at_.frame.offset) {
            const Frame frame = frameAt(walk_.probe_, walk_.shape_, told_, size);
            if (end == size && walk_.isCutOff(frame, end)) kind = LossKind::cutOff;
            if (!id_ && frame.hasHead && frame.plausible) id_ = frame.id;
        }
        walk_.lose(kind, told_, end, id_);
        id_.reset();
    }

    Walk& walk_;
    const Break& at_;
    const Resumption& resumption_;
    std::uint64_t told_;               ///< what lies before it is told
    std::optional<std::uint32_t> id_;  ///< of the block that is damaged at told_, where it is known
    bool mayMiss_;  ///< there may be blocks that a search from terminators does not find
};

/// Tells what was found in the place of a damaged block. Returns where the blocks go on.
std::uint64_t Walk::goOn(const Break& at, const Resumption& resumption) {
    const bool proven = resumption.proven && !isCutOff(at.frame, at.limit);
    if (!resumption.proven || !tellRepaired(at, resumption.at)) Gap(*this, at, resumption).tell();
    evidence_ = proven || resumption.at == at.limit ? Evidence::chain : Evidence::search;
    return resumption.at;
}

/// Whether a whole block is more than a text and ones behind it, which damaged bytes may be.
bool Walk::isDistinct(const Frame& frame) {
    constexpr std::uint64_t kTwoWords = 8;
    const std::uint32_t head = shape_.layout().head();
    const char* text = probe_.at(frame.offset, head);
    if (!text || text[head - 5] != '\0') return false;
    const char* last = probe_.at(frame.end - kTwoWords, kTwoWords);
    return last && wordAt(last) != blocks::kTerminator;
}

/// With an undamaged index a block that only looks like one must be one that the index misses.
bool Walk::mayBeUnproven(const Break& at, const Frame& frame) {
    if (!isIndexed(frame.offset)) return true;
    const BlocItem* entry = hints_.at(frame.offset);
    if (!entry) entry = hints_.of(frame.id);
    return entry && entry->offset > at.frame.offset && entry->offset < at.limit;
}

}  // namespace tbfile
