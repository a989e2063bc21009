#include "search.h"

#include <cstring>
#include <unordered_set>

namespace tbfile {
namespace {

constexpr std::size_t kWord = 4;
constexpr char kByte = '\xFF';

/// Whether the highest byte of the length, where it is at hand, is one that no block has. In long
/// runs of 0xFF this spares looking at each place more closely.
bool isTooLong(const char* head, std::size_t n, const Shape& shape) {
    const std::size_t last = shape.layout().head() - 1;
    return last < n && (static_cast<unsigned char>(head[last]) & 0x80) != 0;
}

/// Follows whole blocks from places on, each place once.
class Follower {
  public:
    Follower(Window& probe, const Shape& shape, std::uint64_t limit)
        : probe_(probe), shape_(shape), limit_(limit) {}

    /// The run that begins at a place; empty when there is none or it was followed before.
    [[nodiscard]] Run follow(std::uint64_t start) {
        Run run{start, start};
        while (run.end < limit_ && !followed_.contains(run.end)) {
            const Frame frame = frameAt(probe_, shape_, run.end, limit_);
            if (!frame.isWhole() || !frame.plausible) break;
            if (followed_.size() < kMostRemembered) followed_.insert(run.end);
            run.end = frame.end;
        }
        return run;
    }

    /// Whether the block at the end of a run reaches beyond the end of the file.
    [[nodiscard]] bool isCutOff(std::uint64_t at) {
        if (limit_ != probe_.size()) return false;
        const Frame frame = frameAt(probe_, shape_, at, limit_);
        return frame.plausible && !frame.fits;
    }

  private:
    static constexpr std::size_t kMostRemembered = 1u << 20;

    Window& probe_;
    Shape shape_;
    std::uint64_t limit_;
    std::unordered_set<std::uint64_t> followed_;
};

}  // namespace

std::optional<std::uint64_t> afterTerminator(Window& file, const Shape& shape, std::uint64_t from,
                                             std::uint64_t limit) {
    const char* bytes = nullptr;
    for (std::uint64_t at = from; at + kWord < limit;) {
        const std::size_t n = file.piece(at, limit - at, bytes);
        if (n < kWord) {
            // The piece at hand ends within the four bytes.
            if (!file.at(at, kWord)) return std::nullopt;
            continue;
        }
        for (std::size_t i = 0; i + kWord <= n; ++i) {
            const void* hit = std::memchr(bytes + i, kByte, n - i - (kWord - 1));
            if (!hit) break;
            i = static_cast<std::size_t>(static_cast<const char*>(hit) - bytes);
            if (wordAt(bytes + i) == blocks::kTerminator &&
                !isTooLong(bytes + i + kWord, n - i - kWord, shape))
                return at + i + kWord;
        }
        at += n - (kWord - 1);
    }
    return std::nullopt;
}

Resumption resume(Window& file, Window& probe, const Shape& shape, std::uint64_t from,
                  std::uint64_t limit) {
    Resumption found{.at = limit, .unproven = {}};
    Follower follower(probe, shape, limit);
    // Runs that begin at different bytes may overlap; of those the first counts.
    const auto keepUnproven = [&](const Run& run) {
        if (found.unproven.empty() || found.unproven.back().end <= run.start)
            found.unproven.push_back(run);
    };
    for (std::uint64_t at = from; const auto place = afterTerminator(file, shape, at, limit);) {
        at = *place - (kWord - 1);
        const Run run = follower.follow(*place);
        if (run.start == run.end) continue;
        found.proven = run.end == limit;
        found.toCut = !found.proven && follower.isCutOff(run.end);
        if (found.proven || found.toCut) {
            found.at = run.start;
            // Ones and then zeros look like an empty block too.
            const Frame first = frameAt(probe, shape, run.start, limit);
            if (first.id == blocks::kTerminator) {
                keepUnproven({first.offset, first.end});
                found.at = first.end;
            }
            break;
        }
        keepUnproven(run);
    }
    return found;
}

}  // namespace tbfile
