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
    std::uint64_t known = file_.size();
    if (map_.index && map_.index->isWhole() && map_.index->frame.offset > at)
        known = map_.index->frame.offset;
    for (const BlocItem* next = hints_.after(at); next && next->offset < known;
         next = hints_.after(next->offset))
        if (isConfirmed(probe_, shape_, *next)) return next->offset;
    return known;
}

/// Whether an undamaged index says that there is nothing but one block up to the limit.
bool Walk::isAlone(const Break& at) {
    if (!at.hint || !map_.index || !map_.index->isWhole()) return false;
    const BlocItem* next = hints_.after(at.frame.offset);
    const std::uint64_t index = map_.index->frame.offset;
    return at.limit == (next && next->offset < index ? next->offset : index);
}

std::uint64_t Walk::pass(const Break& at) {
    const Frame& frame = at.frame;
    if (frame.isWhole()) return passWhole(at);
    if (isAlone(at)) {
        const bool endsThere = frame.end == at.limit && frame.padded;
        if (endsThere)
            tell({frame, evidence_, kTerminatorWrong, 0}, at.hint);
        else if (!tellRepaired(at, at.limit))
            lose(LossKind::damaged, frame.offset, at.limit, at.hint->id);
        return at.limit;
    }
    if (frame.fits && frame.plausible && frame.end <= at.limit &&
        isFollowedSurely(frame.end, at.limit)) {
        tell({frame, evidence_, kTerminatorWrong, 0}, at.hint);
        return frame.end;
    }
    return passSearching(at);
}

/// The block is whole, but nothing known follows: what follows is damaged, or the length is, and a
/// terminator stands there by chance.
std::uint64_t Walk::passWhole(const Break& at) {
    if (isAlone(at) && tellRepaired(at, at.limit)) return at.limit;
    const Resumption resumption = resume(file_, probe_, shape_, at.frame.offset, at.limit);
    if ((resumption.proven || resumption.at == at.limit) && tellRepaired(at, resumption.at))
        return resumption.at;
    tell({at.frame, evidence_, kUnfollowed, 0}, at.hint);
    return at.frame.end;
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

/// Whether the file more likely ends within the block than that the block's length is wrong.
bool Walk::isCutOff(const Break& at) {
    const Frame& frame = at.frame;
    if (at.limit != file_.size() || !frame.plausible || frame.fits) return false;
    if (!frame.hasHead) return true;
    // A length out of all proportion, and a description that fills its field, are rather bytes that
    // are no head.
    constexpr std::uint64_t kProportion = 16;
    if (frame.end <= file_.size() || frame.length / kProportion > file_.size()) return false;
    const std::uint32_t room = shape_.layout().description;
    const char* text = probe_.at(frame.offset + 4, room);
    if (!text || text[room - 1] != '\0') return false;
    const std::uint32_t index = map_.header.indexOffset;
    return !map_.header.isReadable() || index <= frame.offset || index >= file_.size();
}

/// The block before a break may be what is wrong: its length, by a bit, where its data happens to
/// hold a terminator. Then blocks lead from its true end on to a known place.
std::optional<std::uint64_t> Walk::correctHeld() {
    if (!held_) return std::nullopt;
    const Frame frame = held_->frame;
    const std::uint64_t limit = knownAfter(frame.offset);
    for (unsigned bit = 0; bit < 31; ++bit) {
        const std::uint64_t end =
            frame.offset + shape_.around() + (frame.length ^ std::uint32_t{1} << bit);
        if (end == file_.size() || end > limit || !leadsTo(end, limit)) continue;
        held_.reset();
        if (tellRepaired({frame, nullptr, limit}, end)) return end;
        held_ = Found{frame, Evidence::chain, 0, 0};
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

std::uint64_t Walk::passSearching(const Break& at) {
    const Frame& frame = at.frame;
    const std::uint64_t from = frame.offset;
    const std::optional<std::uint32_t> id =
        at.hint ? std::optional(at.hint->id)
                : (frame.hasHead && frame.plausible ? std::optional(frame.id) : std::nullopt);
    const Resumption resumption = resume(file_, probe_, shape_, from, at.limit);
    if (resumption.proven && tellRepaired(at, resumption.at)) return resumption.at;
    if (isCutOff(at)) {
        const std::size_t possible =
            resumption.unproven.size() + (resumption.at < at.limit ? 1 : 0);
        lose(LossKind::cutOff, from, at.limit, id, possible);
        return at.limit;
    }
    tellRuns(at, resumption);
    evidence_ = resumption.proven || resumption.at == at.limit ? Evidence::chain : Evidence::search;
    return resumption.at;
}

/// With an undamaged index a block that only looks like one must be one that the index misses.
bool Walk::mayBeUnproven(const Break& at, const Frame& frame) {
    if (!isIndexed(frame.offset)) return true;
    for (const BlocItem* next = hints_.after(at.frame.offset); next && next->offset < at.limit;
         next = hints_.after(next->offset))
        if (next->offset == frame.offset || next->id == frame.id) return true;
    return false;
}

void Walk::tellRuns(const Break& at, const Resumption& resumption) {
    std::uint64_t lost = at.frame.offset;
    std::optional<std::uint32_t> id = at.hint ? std::optional(at.hint->id) : std::nullopt;
    const auto loseUpTo = [&](std::uint64_t end) {
        lose(LossKind::damaged, lost, end, id);
        id.reset();
    };
    for (const Run& run : resumption.unproven) {
        for (std::uint64_t place = run.start; place < std::min(run.end, resumption.at);) {
            const Frame frame = frameAt(probe_, shape_, place, resumption.at);
            if (!frame.isWhole()) break;
            place = frame.end;
            if (!mayBeUnproven(at, frame)) continue;
            loseUpTo(frame.offset);
            tell({frame, Evidence::search, kFoundBySearch, 0}, hints_.at(frame.offset));
            lost = frame.end;
        }
    }
    loseUpTo(resumption.at);
}

}  // namespace tbfile
