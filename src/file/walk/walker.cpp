// The walk as long as blocks follow one another, and how it tells what it meets.
#include "file/walk/walker.h"

#include <utility>

#include "file/walk/field.h"
#include "file/walk/map.h"

namespace toolbox {

Walker::Walker(FileReader& file, FileReader& probe, const BlockFileMap& map,
               const TarvFileWalk::Take& take)
    : file_(file),
      probe_(probe),
      map_(map),
      shape_(map.shape),
      places_(map),
      listed_(file, probe, map),
      take_(take) {
    if (map.checksums && map.checksums->proves())
        namedEnd_ = map.checksums->frame.offset;
    else if (map.index && map.index->isComplete())
        namedEnd_ = map.index->frame.offset;
}

bool Walker::run() {
    const auto isEnded = [&] { return ended_ || file_.hasStopped() || probe_.hasStopped(); };
    for (std::uint64_t at = map_.start; at < file_.size() && !isEnded();) at = step(at);
    reportHeld();
    return !isEnded();
}

/// What a reader that has stopped did not see is no finding.
void Walker::give(const WalkFinding& finding) {
    if (ended_ || file_.hasStopped() || probe_.hasStopped()) return;
    ended_ = !take_(finding);
}

BlockFrame Walker::frameHere(std::uint64_t at, std::uint64_t limit) {
    const std::optional<BlockFrame> ahead = std::exchange(ahead_, std::nullopt);
    if (ahead && ahead->offset == at) return *ahead;
    return frameAt(file_, shape_, at, limit);
}

/// A block cannot reach over the beginning of another one, nor over the index.
bool Walker::overruns(const BlockFrame& frame) {
    const BlocItem* next = places_.after(frame.offset);
    const bool may =
        (next && next->offset < frame.end) || (isIndexed(frame.offset) && namedEnd_ < frame.end);
    return may && knownAfter(frame.offset) < frame.end;
}

bool Walker::isFollowed(const BlockFrame& frame, const BlocItem* hint) {
    const std::uint64_t end = frame.end;
    if (end == file_.size() || (map_.index && end == map_.index->frame.offset)) return true;
    ahead_ = frameAt(file_, shape_, end, file_.size());
    if (const BlocItem* next = places_.at(end)) {
        // In a file that became longer or shorter the index and a length may agree by chance.
        if (!map_.index || map_.index->atItsPlace || (ahead_->isWhole() && ahead_->id == next->id))
            return true;
    } else if (hint && isIndexed(end)) {
        // After a block that an undamaged index names there is one that it names, or an older
        // index.
        return ahead_->isWhole() && (ahead_->isIndex() || ahead_->isChecksumList());
    }
    return ahead_->isWhole() || ahead_->plausible;
}

bool Walker::isIndexed(std::uint64_t at) const {
    return at < namedEnd_;
}

/// Whether there is no doubt that a block begins at a place, or that it is the limit.
bool Walker::isBlockAt(std::uint64_t at, std::uint64_t limit) {
    if (at == limit) return true;
    const BlockFrame frame = frameAt(probe_, shape_, at, limit);
    const BlocItem* hint = places_.at(at);
    return frame.isWhole() && (frame.plausible || (hint && hint->id == frame.id));
}

std::uint64_t Walker::step(std::uint64_t at) {
    if (const auto next = stepListed(at)) return *next;
    const BlockFrame frame = frameHere(at, file_.size());
    const BlocItem* hint = places_.at(at);
    const bool overrun = frame.fits && overruns(frame);
    if (frame.isWhole() && !overrun && isFollowed(frame, hint)) {
        const auto end = hint || isIndexed(at) ? std::nullopt : endWithin(frame);
        if (end && reportRepaired({frame, hint, frame.end}, *end)) return *end;
        report(findingOf(frame, evidence_ == Evidence::search ? kFoundBySearch : 0u), hint);
        return frame.end;
    }
    ahead_.reset();
    if (const auto again = correctHeld()) return *again;
    Break broken{frame, hint, knownAfter(at)};
    if (overrun) broken.frame.fits = false;
    return resumeAfter(broken);
}

WalkFinding Walker::findingOf(const BlockFrame& frame, unsigned doubts) const {
    WalkFinding found;
    found.frame = frame;
    found.evidence = evidence_;
    found.doubts = doubts;
    return found;
}

void Walker::report(WalkFinding found, const BlocItem* hint) {
    BlockFrame& frame = found.frame;
    reportHeld();
    found.from = frame.offset;
    found.to = frame.end;
    const bool isKnownList = map_.checksums && frame.offset == map_.checksums->frame.offset;
    const int isNamedList = frame.id == kChecksumListId ? 1 : 0;
    if (isKnownList || (!hint && isNamedList + listMarks(probe_, shape_, frame) > 1)) {
        found.id = kChecksumListId;
        const bool isUnreadable = isKnownList && map_.checksums->isUnreadable();
        const bool isDamaged = isUnreadable || (found.doubts & ~kFoundBySearch) != 0;
        found.kind = isDamaged ? WalkFinding::Kind::damagedChecksums : WalkFinding::Kind::checksums;
        return give(found);
    }
    const bool isKnownIndex = map_.index && frame.offset == map_.index->frame.offset;
    if (isKnownIndex || (!hint && (frame.isIndex() || isDisguisedIndex(probe_, shape_, frame)))) {
        found.id = kMasterIndexId;
        const bool isDamaged = (found.doubts & ~kFoundBySearch) != 0;
        found.kind = isDamaged ? WalkFinding::Kind::damagedIndex : WalkFinding::Kind::index;
        give(found);
        if (isKnownIndex) evidence_ = Evidence::chain;
        return;
    }
    found.kind = WalkFinding::Kind::block;
    if (!hint && listed_.takeMisplaced(frame)) return reportListed(frame, 0, true, false);
    compareWithIndex(found, hint);
    found.id = frame.id;
    if (found.evidence == Evidence::chain && found.doubts == 0)
        held_ = found;
    else
        give(found);
}

/// What the index says of a block: `hint` is its entry for the place.
void Walker::compareWithIndex(WalkFinding& found, const BlocItem* hint) {
    BlockFrame& frame = found.frame;
    if (hint && hint->id == frame.id) {
        found.evidence = Evidence::index;
        found.doubts &= ~kFoundBySearch;
        evidence_ = Evidence::chain;
    } else if (hint) {
        found.doubts |= kOtherId;
        found.indexId = hint->id;
        // Another block has this one's identifier: it is the index that is right.
        const BlocItem* other = places_.of(frame.id);
        if (other && isConfirmed(probe_, shape_, *other)) std::swap(frame.id, found.indexId);
    } else if (isIndexed(frame.offset)) {
        found.doubts |= kNotIndexed;
    }
}

void Walker::reportHeld() {
    if (held_) give(*held_);
    held_.reset();
}

void Walker::reportLoss(WalkFinding::Kind kind, std::uint64_t from, std::uint64_t to,
                        std::optional<std::uint32_t> id) {
    if (from >= to) return;
    reportHeld();
    if (map_.index && from == map_.index->frame.offset) kind = WalkFinding::Kind::damagedIndex;
    if (const auto& list = map_.checksums) {
        if (from == list->frame.offset) kind = WalkFinding::Kind::damagedChecksums;
        if (from == list->frame.end && list->proves()) kind = WalkFinding::Kind::damagedIndex;
    }
    WalkFinding loss;
    loss.kind = kind;
    loss.from = from;
    loss.to = to;
    loss.id = id;
    give(loss);
}

}  // namespace toolbox

using namespace toolbox;

namespace {

/// The two readers of a walk. The second goes back and forth: how far the first has come is what
/// the progress is told by both.
struct Readers {
    Readers(const FileSource& source, const FileReader::Progress& progress)
        : file(source, FileReader::Reads::whatIsAsked,
               progress ? [&](std::uint64_t at) { return progress(done = at); }
                        : FileReader::Progress()),
          probe(source, FileReader::Reads::whatIsAsked,
                progress ? [&](std::uint64_t) { return progress(done); } : FileReader::Progress()) {
    }

    std::uint64_t done = 0;
    FileReader file;
    FileReader probe;
};

}  // namespace

TarvFileWalk::TarvFileWalk(const FileSource& source, Progress progress)
    : source_(source), progress_(std::move(progress)) {
    Readers readers(source_, progress_);
    map_ = readMap(readers.file, readers.probe);
    stopped_ = readers.file.hasStopped() || readers.probe.hasStopped();
}

int TarvFileWalk::run(const Take& take) const {
    if (stopped_) return 0;
    Readers readers(source_, progress_);
    return Walker(readers.file, readers.probe, map_, take).run() ? 1 : 0;
}
