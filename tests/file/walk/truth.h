// What became of every block of a damaged file: each place remembers where it came from.
#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "walked.h"

namespace corpus {

/// A file while it is damaged. Beside each byte stands the offset in the original of the byte that
/// was there, or kForeign.
class Damaged {
  public:
    static constexpr std::size_t kForeign = ~std::size_t{0};

    explicit Damaged(const Original& original) : Damaged(original, original.bytes) {}
    /// One with other bytes at the same places.
    Damaged(const Original& original, std::string others)
        : bytes(std::move(others)), original_(original), from_(bytes.size()) {
        std::iota(from_.begin(), from_.end(), std::size_t{0});
    }

    void insert(std::size_t at, const std::string& more) {
        isMoved_ = true;
        bytes.insert(at, more);
        from_.insert(from_.begin() + static_cast<std::ptrdiff_t>(at), more.size(), kForeign);
    }
    void erase(std::size_t at, std::size_t n) {
        n = std::min(n, bytes.size() - at);
        isMoved_ = at + n < bytes.size();
        bytes.erase(at, n);
        const auto first = from_.begin() + static_cast<std::ptrdiff_t>(at);
        from_.erase(first, first + static_cast<std::ptrdiff_t>(n));
    }
    /// Two pieces that lie side by side change places.
    void swap(std::size_t first, std::size_t second, std::size_t end) {
        isMoved_ = true;
        const auto place = [](auto& list, std::size_t at) {
            return list.begin() + static_cast<std::ptrdiff_t>(at);
        };
        std::rotate(place(bytes, first), place(bytes, second), place(bytes, end));
        std::rotate(place(from_, first), place(from_, second), place(from_, end));
    }

    /// Where a block of the original stands undamaged; kForeign when nowhere.
    [[nodiscard]] std::size_t placeOf(const Record& record) const {
        std::size_t at = record.from;
        if (at >= from_.size() || from_[at] != record.from)
            at = static_cast<std::size_t>(std::ranges::find(from_, record.from) - from_.begin());
        const std::size_t n = record.to - record.from;
        if (at + n > from_.size() || from_[at + n - 1] != record.to - 1) return kForeign;
        return bytes.compare(at, n, original_.bytes, record.from, n) == 0 ? at : kForeign;
    }
    /// Whether a block of the original started where one was found.
    [[nodiscard]] bool hasStart(const toolbox::WalkFinding& found) const {
        return std::ranges::any_of(original_.records, [&](const Record& record) {
            return record.from == origin(found.frame.offset);
        });
    }
    /// Whether a block that was found is one of the original. Where bytes were put in or taken out
    /// its other end may be anywhere.
    [[nodiscard]] bool isWritten(const toolbox::WalkFinding& found) const {
        return std::ranges::any_of(original_.records, [&](const Record& record) {
            const bool starts = origin(found.frame.offset) == record.from;
            const bool ends = origin(found.frame.end - 1) == record.to - 1;
            if (isMoved_) return starts || ends;
            // The identifier of a block that no index names has no second witness.
            return starts && ends &&
                   (found.frame.id == record.id || found.evidence != toolbox::Evidence::index);
        });
    }
    /// The doubts of which one has to be told with a block that is not of the original.
    [[nodiscard]] unsigned marksOf(const toolbox::WalkFinding& found) const {
        return isMoved_ || hasStart(found) ? ~0u : toolbox::kFoundBySearch | toolbox::kNotIndexed;
    }

    std::string bytes;

  private:
    [[nodiscard]] std::size_t origin(std::uint64_t at) const {
        return from_[static_cast<std::size_t>(at)];
    }

    const Original& original_;
    bool isMoved_ = false;
    std::vector<std::size_t> from_;
};

struct Truth {
    std::vector<std::uint32_t> lost;      ///< blocks that are undamaged and not found
    std::vector<std::uint32_t> invented;  ///< told without a doubt, and not what was written
    std::vector<std::uint32_t> doubted;   ///< told with a doubt where no block was written
    std::string told;                     ///< what was found, for the reader of a report
    bool isGapless = false;

    [[nodiscard]] bool isGood() const { return lost.empty() && invented.empty() && isGapless; }
};

inline Truth truthOf(const Original& original, const Damaged& damaged) {
    const Walked walked(damaged.bytes);
    std::set<std::pair<std::uint64_t, std::uint64_t>> found;
    Truth truth;
    truth.told = walked.shown();
    truth.isGapless = walked.isGapless();
    for (const toolbox::WalkFinding& each : walked.blocks()) {
        found.insert({each.frame.offset, each.frame.end});
        const bool isMarked = (each.doubts & damaged.marksOf(each)) != 0;
        if (!damaged.isWritten(each) && !isMarked) truth.invented.push_back(each.frame.id);
        if (!damaged.hasStart(each) && isMarked) truth.doubted.push_back(each.frame.id);
    }
    for (const Record& record : original.records) {
        const std::size_t at = damaged.placeOf(record);
        if (at != Damaged::kForeign && !found.contains({at, at + record.to - record.from}))
            truth.lost.push_back(record.id);
    }
    return truth;
}

/// Kinds of damage that move bytes or make up lengths; `chance` chooses where and how much. Deleted
/// bytes can make another whole block.
inline constexpr const char* kDamages[] = {"insert", "swap", "word", "delete"};
inline constexpr std::size_t kDeceives = 3;

template <class Chance>
void damage(Damaged& file, const Original& original, std::size_t kind, Chance&& chance) {
    const std::size_t size = file.bytes.size();
    const std::size_t at = chance(size);
    const auto record = [&](std::size_t i) { return original.records[i]; };
    const std::size_t count = original.records.size();
    if (kind == 0) {
        file.insert(at, std::string(1 + chance(8), static_cast<char>(chance(256))));
    } else if (kind == kDeceives) {
        file.erase(at, 1 + chance(8));
    } else if (kind == 1 && count >= 2) {
        const std::size_t i = chance(count - 1);
        file.swap(record(i).from, record(i + 1).from, record(i + 1).to);
    } else if (kind == 2 && count > 0) {  // of a block's head, where the lengths are
        const std::size_t word = record(chance(count)).from + 4 * chance(35);
        const std::uint32_t value =
            chance(3) ? static_cast<std::uint32_t>(chance(400)) : 0xFFFFFFFFu >> chance(20);
        for (std::size_t i = 0; i < 4 && word + i < size; ++i)
            file.bytes[word + i] = static_cast<char>(value >> 8 * i);
    }
}

}  // namespace corpus
