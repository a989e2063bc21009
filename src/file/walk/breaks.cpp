// What a walk does where the chain of blocks is broken: the explanation with the least damage.
#include <algorithm>
#include <bit>

#include "file/walk/field.h"
#include "file/walk/map.h"
#include "file/walk/walker.h"

namespace toolbox {

/// The next place after `at` that is known for certain, or the end of the file.
std::uint64_t Walker::knownAfter(std::uint64_t at) {
    if (at >= knownFrom_ && at < known_) return known_;
    knownFrom_ = at;
    known_ = file_.size();
    if (map_.index && map_.index->isWhole() && map_.index->frame.offset > at)
        known_ = map_.index->frame.offset;
    for (const BlocItem* next = places_.after(at); next && next->offset < known_;
         next = places_.after(next->offset))
        if (listed_.at(next->offset) || isConfirmed(probe_, shape_, *next)) known_ = next->offset;
    return known_;
}

/// Whether an undamaged index says that there is nothing but one block up to the limit.
bool Walker::isAlone(const Break& at) {
    if (!at.hint || !isIndexed(at.frame.offset)) return false;
    const BlocItem* next = places_.after(at.frame.offset);
    return at.limit == (next && next->offset < namedEnd_ ? next->offset : namedEnd_);
}

/// Whether the block before a place, or the header, ends undamaged.
bool Walker::isAfterTerminator(std::uint64_t at) {
    constexpr std::uint64_t kWord = 4;
    const char* last = at < kWord ? nullptr : probe_.at(at - kWord, kWord);
    return last && wordAt(last) == kBlockTerminator;
}

/// Whether the index names a block with this identifier, and none is where it says.
bool Walker::isMoved(const BlockFrame& frame) {
    const BlocItem* entry = places_.of(frame.id);
    return entry && !isConfirmed(probe_, shape_, *entry);
}

std::uint64_t Walker::resumeAfter(const Break& at) {
    const BlockFrame& frame = at.frame;
    if (frame.isWhole()) return resumeAfterWhole(at);
    const bool isEnd = isAlone(at) ? frame.end == at.limit && frame.padded
                                   : frame.fits && frame.plausible && frame.end <= at.limit &&
                                         isBlockAt(frame.end, at.limit);
    if (isEnd) {
        report(findingOf(frame, kTerminatorWrong), at.hint);
        return frame.end;
    }
    if (isAlone(at) && reportRepaired(at, at.limit)) return at.limit;
    return resumeBySearch(at);
}

/// The block is whole, but nothing known follows. Mostly what follows is damaged. It may be the
/// length too, where a terminator stands at the wrong end by chance: that is so where blocks lead
/// over that end, and likely where it is among ones and the index knows better.
std::uint64_t Walker::resumeAfterWhole(const Break& at) {
    const BlockFrame& frame = at.frame;
    constexpr std::uint64_t kTwoWords = 8;
    const char* last = probe_.at(frame.end - kTwoWords, kTwoWords);
    const bool amongOnes = last && wordAt(last) == kBlockTerminator;
    if (amongOnes && isAlone(at) && reportRepaired(at, at.limit)) return at.limit;
    const Resumption& resumption = search(frame.offset, at.limit);
    if (displaces(frame, resumption)) return resumeAt(at, resumption);
    report(findingOf(frame, kUnfollowed), at.hint);
    return frame.end;
}

/// Tells the block with the length that takes it to `end`, when that is its own but for one bit.
bool Walker::reportRepaired(const Break& at, std::uint64_t end) {
    BlockFrame frame = at.frame;
    if (!frame.hasHead || !frame.padded || end < frame.offset + shape_.around()) return false;
    // What has another identifier besides, and follows no block, is rather no head at all.
    if (at.hint && at.hint->id != frame.id && !isAfterTerminator(frame.offset)) return false;
    const std::uint64_t length = end - frame.offset - shape_.around();
    if (length > blocks::kMostBytes) return false;
    if (!std::has_single_bit(static_cast<std::uint32_t>(length) ^ frame.length)) return false;
    const char* last = probe_.at(end - 4, 4);
    if (!last || wordAt(last) != kBlockTerminator) return false;
    frame.length = static_cast<std::uint32_t>(length);
    frame.end = end;
    frame.fits = frame.terminated = true;
    report(findingOf(frame, kLengthRepaired), at.hint);
    return true;
}

/// Where a whole block ends if a bit of its length is set that was not: there other blocks begin
/// and lead to the end that the length names. Blocks that are its data cannot: its own end stands
/// between.
std::optional<std::uint64_t> Walker::endWithin(const BlockFrame& frame) {
    for (std::uint32_t bits = frame.length; bits >= shape_.around(); bits &= bits - 1) {
        const std::uint32_t bit = bits & (~bits + 1);
        if (bit < shape_.around()) continue;
        const std::uint64_t end = frame.end - bit;
        const char* last = probe_.at(end - 4, 4);
        if (last && wordAt(last) == kBlockTerminator && leadsTo(end, frame.end)) return end;
    }
    return std::nullopt;
}

/// Whether whole blocks stand one after another from `at` to `limit`.
bool Walker::leadsTo(std::uint64_t at, std::uint64_t limit) {
    while (at < limit) {
        const BlockFrame frame = frameAt(probe_, shape_, at, limit);
        if (!frame.isWhole() || !frame.plausible) return false;
        at = frame.end;
    }
    return at == limit;
}

/// Whether the file may end within a block, which then is not damaged. What its data looks like
/// proves nothing, even if it leads to the end of the file.
bool Walker::isCutOff(const BlockFrame& frame, std::uint64_t limit) {
    if (limit != file_.size() || !frame.plausible || frame.fits) return false;
    const std::uint32_t index = map_.header.indexOffset;
    if (map_.header.isReadable() && index > frame.offset && index <= limit) return false;
    if (!frame.hasHead) return true;
    if (frame.end <= limit) return false;
    // A length out of all proportion and a description that fills its field are rather bytes that
    // are no head.
    constexpr std::uint64_t kProportion = 16;
    const std::uint32_t room = shape_.description;
    const char* text = probe_.at(frame.offset + 4, room);
    return text && (text[room - 1] == '\0' || frame.length / kProportion <= limit);
}

/// The block before a break may be what is wrong: its length, where its data, or that of a block
/// after it, happens to hold a terminator. It is when blocks lead over its end to a known place;
/// it may be when a block begins where it would end but for one bit.
std::optional<std::uint64_t> Walker::correctHeld() {
    if (!held_) return std::nullopt;
    const BlockFrame frame = held_->frame;
    const std::uint64_t limit = knownAfter(frame.offset);
    const Resumption& resumption = search(frame.offset, limit);
    if (resumption.proven && resumption.at < frame.end) {
        held_.reset();
        return resumeAt({frame, nullptr, limit}, resumption);
    }
    for (unsigned bit = 0; bit < 31; ++bit) {
        const std::uint64_t end =
            frame.offset + shape_.around() + (frame.length ^ std::uint32_t{1} << bit);
        if (end > limit || end == file_.size()) continue;
        const char* last = probe_.at(end - 4, 4);
        if (last && wordAt(last) == kBlockTerminator && isBlockAt(end, limit))
            held_->doubts |= kUnfollowed;
    }
    return std::nullopt;
}

/// A block, more than a text and ones or one that the index misses, that ends where the blocks go
/// on: its predecessor's terminator is destroyed.
std::optional<BlockFrame> Walker::blockBefore(std::uint64_t from, std::uint64_t stop,
                                              std::uint64_t end) {
    const auto last = blockEndingAt(file_, probe_, shape_, from, stop, end);
    return last && (isDistinct(*last) || isMoved(*last)) ? last : std::nullopt;
}

/// Whether blocks that lead to a certain place begin within a block. Others do not displace one
/// whose frame holds together: they may be its data.
bool Walker::displaces(const BlockFrame& frame, const Resumption& resumption) {
    if (resumption.at < frame.end) return true;
    if (frame.plausible && frame.isWhole()) return false;
    // A few bytes were lost, and the next block begins shortly before the end.
    constexpr std::uint64_t kNear = 1024;
    const std::uint64_t from = std::max(frame.offset + 1, frame.end - std::min(frame.end, kNear));
    return blockBefore(from, frame.end, resumption.at).has_value();
}

/// As resume(). The last answer serves again as long as nothing of it lies after.
const Resumption& Walker::search(std::uint64_t from, std::uint64_t limit) {
    if (from >= searchedFrom_ && limit == searchedTo_ && from < searched_.first()) return searched_;
    searched_ = resume(file_, probe_, shape_, from, limit);
    searchedFrom_ = from;
    searchedTo_ = limit;
    return searched_;
}

std::uint64_t Walker::resumeBySearch(const Break& at) {
    const BlockFrame& frame = at.frame;
    const Resumption& resumption = search(frame.offset, at.limit);
    // The index names the next block where this one's length says; that one is damaged too.
    if (at.hint && at.hint->id == frame.id && frame.fits && frame.plausible &&
        places_.at(frame.end) && !resumption.leadsOver(frame.end) &&
        !displaces(frame, resumption)) {
        report(findingOf(frame, kTerminatorWrong), at.hint);
        return frame.end;
    }
    return resumeAt(at, resumption);
}

/// Tells what was found in the place of a damaged block. Returns where the blocks go on.
std::uint64_t Walker::resumeAt(const Break& at, const Resumption& resumption) {
    const bool proven = resumption.proven && !isCutOff(at.frame, at.limit);
    if (!resumption.proven || !reportRepaired(at, resumption.at)) reportGap(at, resumption);
    evidence_ = proven || resumption.at == at.limit ? Evidence::chain : Evidence::search;
    return resumption.at;
}

}  // namespace toolbox
