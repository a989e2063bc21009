#include "walk.h"

#include <utility>

namespace tbfile {

Walk::Walk(Window& file, Window& probe, const Map& map, Walker& walker)
    : file_(file),
      probe_(probe),
      map_(map),
      shape_(map.shape),
      hints_(map.index ? &*map.index : nullptr),
      walker_(walker) {}

void Walk::run() {
    for (std::uint64_t at = shape_.start(); at < file_.size();) at = step(at);
    release();
}

Frame Walk::look(std::uint64_t at, std::uint64_t limit) {
    const std::optional<Frame> ahead = std::exchange(ahead_, std::nullopt);
    if (ahead && ahead->offset == at) return *ahead;
    return frameAt(file_, shape_, at, limit);
}

/// A block cannot reach over the beginning of another one, nor over the index.
bool Walk::overruns(const Frame& frame) {
    const BlocItem* next = hints_.after(frame.offset);
    const bool may = (next && next->offset < frame.end) ||
                     (isIndexed(frame.offset) && map_.index->frame.offset < frame.end);
    return may && knownAfter(frame.offset) < frame.end;
}

bool Walk::isFollowed(const Frame& frame, const BlocItem* hint) {
    const std::uint64_t end = frame.end;
    if (end == file_.size() || (map_.index && end == map_.index->frame.offset)) return true;
    ahead_ = frameAt(file_, shape_, end, file_.size());
    if (const BlocItem* next = hints_.at(end)) {
        // In a file that became longer or shorter the index and a length may agree by chance.
        if (map_.index->atItsPlace || (ahead_->isWhole() && ahead_->id == next->id)) return true;
    } else if (hint && isIndexed(end)) {
        // Behind a block that an undamaged index names there is one that it names, or an older
        // index.
        return ahead_->isWhole() && ahead_->isIndex();
    }
    return ahead_->isWhole() || ahead_->plausible;
}

bool Walk::isIndexed(std::uint64_t at) const {
    return map_.index && map_.index->isComplete() && at < map_.index->frame.offset;
}

/// Whether there is no doubt that a block begins at a place, or that it is the limit.
bool Walk::isBlockAt(std::uint64_t at, std::uint64_t limit) {
    if (at == limit) return true;
    const Frame frame = frameAt(probe_, shape_, at, limit);
    const BlocItem* hint = hints_.at(at);
    return frame.isWhole() && (frame.plausible || (hint && hint->id == frame.id));
}

std::uint64_t Walk::step(std::uint64_t at) {
    const Frame frame = look(at, file_.size());
    const BlocItem* hint = hints_.at(at);
    const bool overrun = frame.fits && overruns(frame);
    if (frame.isWhole() && !overrun && isFollowed(frame, hint)) {
        const auto end = hint || isIndexed(at) ? std::nullopt : endWithin(frame);
        if (end && tellRepaired({frame, hint, frame.end}, *end)) return *end;
        tell({frame, evidence_, evidence_ == Evidence::search ? kFoundBySearch : 0u, 0}, hint);
        return frame.end;
    }
    ahead_.reset();
    if (const auto again = correctHeld()) return *again;
    Break broken{frame, hint, knownAfter(at)};
    if (overrun) broken.frame.fits = false;
    return pass(broken);
}

void Walk::tell(Found found, const BlocItem* hint) {
    const Frame& frame = found.frame;
    release();
    const bool isKnownIndex = map_.index && frame.offset == map_.index->frame.offset;
    if (isKnownIndex || (!hint && (frame.isIndex() || isIndexInDisguise(probe_, shape_, frame)))) {
        if (found.doubts & ~kFoundBySearch)
            lose(LossKind::indexBlock, frame.offset, frame.end, blocks::kIndexId);
        else
            walker_.index(frame);
        if (isKnownIndex) evidence_ = Evidence::chain;
        return;
    }
    if (hint && hint->id == frame.id) {
        found.evidence = Evidence::index;
        found.doubts &= ~kFoundBySearch;
        evidence_ = Evidence::chain;
    } else if (hint) {
        found.doubts |= kOtherId;
        found.indexId = hint->id;
        // Another block has this one's identifier: it is the index that is right.
        const BlocItem* other = hints_.of(frame.id);
        if (other && isConfirmed(probe_, shape_, *other)) std::swap(found.frame.id, found.indexId);
    } else if (isIndexed(frame.offset)) {
        found.doubts |= kNotIndexed;
    }
    if (found.evidence == Evidence::chain && found.doubts == 0)
        held_ = found;
    else
        walker_.block(found);
}

void Walk::release() {
    if (held_) walker_.block(*held_);
    held_.reset();
}

void Walk::lose(LossKind kind, std::uint64_t from, std::uint64_t to,
                std::optional<std::uint32_t> id) {
    if (from >= to) return;
    release();
    if (map_.index && from == map_.index->frame.offset) kind = LossKind::indexBlock;
    walker_.loss({kind, from, to, id});
}

}  // namespace tbfile
