// The walk where a list of checksums says what a block is.
#include <algorithm>

#include "file/walk/walker.h"

namespace toolbox {

void Walker::reportListed(const BlockFrame& frame, unsigned doubts, bool isMisplaced,
                          bool isReframed) {
    reportHeld();
    evidence_ = Evidence::chain;
    WalkFinding found;
    found.kind = WalkFinding::Kind::block;
    found.from = frame.offset;
    found.to = frame.end;
    found.id = frame.id;
    found.frame = frame;
    found.evidence = Evidence::checksum;
    found.doubts = doubts;
    found.isMisplaced = isMisplaced;
    found.isReframed = isReframed;
    give(found);
}

/// Tells what is at the place of a block whose sum is known. Returns where that ends; nothing when
/// the list does not name the place.
std::optional<std::uint64_t> Walker::stepListed(std::uint64_t at) {
    const BlockSum* const row = listed_.covering(at);
    if (!row) return std::nullopt;
    ahead_.reset();
    if (row->offset == at) {
        // Both ends of a long block are not at hand together.
        FileReader& reader = row->length <= FileReader::kMost / 2 ? file_ : probe_;
        const BlockFrame frame = frameAt(reader, shape_, at, file_.size());
        if (listed_.isProved(*row)) {
            reportListed(frame, 0, false, false);
            return at + row->length;
        }
    }
    return reportUnproved(*row, at);
}

/// Tells what begins at `at`, within the place of a block that is not what was written: a block
/// that belongs elsewhere, that block as it is, or what is lost of it.
std::uint64_t Walker::reportUnproved(const BlockSum& row, std::uint64_t at) {
    const std::uint64_t end = std::uint64_t{row.offset} + row.length;
    const BlockFrame* const other = listed_.misplacedFrom(at, end);
    if (other && other->offset == at) {
        reportListed(*other, 0, true, false);
        return other->end;
    }
    const bool isElsewhere = listed_.isElsewhere(row);
    if (!other && at == row.offset && !isElsewhere) {
        bool isProved = false;
        if (const auto frame = listed_.reframed(row, isProved)) {
            const BlockFrame stands = frameAt(probe_, shape_, at, file_.size());
            const bool isReframed =
                !stands.isWhole() || stands.id != frame->id || stands.end != frame->end;
            reportListed(*frame, isProved ? 0u : +kWrongSum, false, isReframed);
            return end;
        }
    }
    const std::uint64_t to = other ? other->offset : end;
    const auto id = isElsewhere ? std::nullopt : std::optional(row.id);
    reportLoss(WalkFinding::Kind::damaged, at, to, id);
    return to;
}

}  // namespace toolbox
