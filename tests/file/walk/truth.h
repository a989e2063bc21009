// What became of every block of a damaged file: each byte remembers where it came from.
#pragma once

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "walked.h"

namespace corpus {

/// A file while it is damaged. Beside each byte stands its offset in the original, or kForeign.
class Damaged {
  public:
    static constexpr std::size_t kForeign = ~std::size_t{0};

    explicit Damaged(const Original& original) : bytes(original.bytes), from_(bytes.size()) {
        for (std::size_t i = 0; i < from_.size(); ++i) from_[i] = i;
    }

    void set(std::size_t at, char byte) {
        if (bytes[at] == byte) return;
        bytes[at] = byte;
        from_[at] = kForeign;
    }
    void fill(std::size_t at, std::size_t n, char byte) {
        for (std::size_t i = at; i < std::min(at + n, bytes.size()); ++i) set(i, byte);
    }
    void insert(std::size_t at, const std::string& more) {
        bytes.insert(at, more);
        from_.insert(from_.begin() + static_cast<std::ptrdiff_t>(at), more.size(), kForeign);
    }
    void erase(std::size_t at, std::size_t n) {
        n = std::min(n, bytes.size() - at);
        bytes.erase(at, n);
        const auto first = from_.begin() + static_cast<std::ptrdiff_t>(at);
        from_.erase(first, first + static_cast<std::ptrdiff_t>(n));
    }
    /// Two pieces that lie side by side change places.
    void swap(std::size_t first, std::size_t second, std::size_t end) {
        const auto place = [](auto& list, std::size_t at) {
            return list.begin() + static_cast<std::ptrdiff_t>(at);
        };
        std::rotate(place(bytes, first), place(bytes, second), place(bytes, end));
        std::rotate(place(from_, first), place(from_, second), place(from_, end));
    }

    /// Where a block of the original stands undamaged; kForeign when nowhere.
    [[nodiscard]] std::size_t placeOf(const Record& record) const {
        const auto first = std::ranges::find(from_, record.from);
        const auto at = static_cast<std::size_t>(first - from_.begin());
        const std::size_t n = record.to - record.from;
        if (at + n > from_.size()) return kForeign;
        for (std::size_t i = 0; i < n; ++i)
            if (from_[at + i] != record.from + i) return kForeign;
        return at;
    }
    /// Whether a block that was found is more than bytes within one block of the original: whether
    /// its head or its end is that of a block there.
    [[nodiscard]] bool isWrittenBlock(const toolbox::BlockFrame& frame,
                                      const Original& original) const {
        return std::ranges::any_of(original.records, [&](const Record& record) {
            return origin(frame.offset) == record.from || origin(frame.end - 1) == record.to - 1;
        });
    }

    std::string bytes;

  private:
    [[nodiscard]] std::size_t origin(std::uint64_t at) const {
        return from_[static_cast<std::size_t>(at)];
    }

    std::vector<std::size_t> from_;
};

struct Truth {
    std::vector<std::uint32_t> lost;      ///< blocks that are undamaged and not found
    std::vector<std::uint32_t> invented;  ///< told without a doubt, and not what was written
    std::string told;                     ///< what was found, for the reader of a report
};

inline Truth truthOf(const Original& original, const Damaged& damaged) {
    const Walked walked(damaged.bytes);
    std::set<std::pair<std::uint64_t, std::uint64_t>> found;
    Truth truth;
    for (const auto& each : walked.blocks()) {
        found.insert({each.from, each.to});
        truth.told += " " + std::to_string(each.frame.id) + "@" + std::to_string(each.from) + "-" +
                      std::to_string(each.to) + "/" + std::to_string(each.doubts);
        if (each.doubts == 0 && !damaged.isWrittenBlock(each.frame, original))
            truth.invented.push_back(each.frame.id);
    }
    for (const Record& record : original.records) {
        const std::size_t at = damaged.placeOf(record);
        if (at != Damaged::kForeign && !found.contains({at, at + record.to - record.from}))
            truth.lost.push_back(record.id);
    }
    return truth;
}

/// Kinds of damage; `chance` chooses where and how much.
inline constexpr const char* kDamages[] = {"flip",     "insert", "delete",  "swap", "zero sector",
                                           "truncate", "ones",   "garbage", "word"};

template <class Chance>
void damage(Damaged& file, const Original& original, std::size_t kind, Chance&& chance) {
    const std::size_t size = file.bytes.size();
    if (size == 0) return;
    const std::size_t at = chance(size);
    const auto record = [&](std::size_t i) { return original.records[i]; };
    const std::size_t count = original.records.size();
    constexpr std::size_t kSector = 512;
    switch (kind) {
        case 0:
            file.set(at, static_cast<char>(file.bytes[at] ^ (1 << chance(8))));
            break;
        case 1:
            file.insert(at, std::string(1 + chance(8), static_cast<char>(chance(256))));
            break;
        case 2:
            file.erase(at, 1 + chance(8));
            break;
        case 3:
            if (count >= 2) {
                const std::size_t i = chance(count - 1);
                file.swap(record(i).from, record(i + 1).from, record(i + 1).to);
            }
            break;
        case 4:
            file.fill(at / kSector * kSector, kSector, '\0');
            break;
        case 5:
            file.erase(at, size - at);
            break;
        case 6:
            file.fill(at, 1 + chance(200), '\xFF');
            break;
        case 7:
            for (std::size_t i = at; i < std::min(size, at + 1 + chance(200)); ++i)
                file.set(i, static_cast<char>(chance(256)));
            break;
        default:  // a word of a block's head, where the lengths are
            if (count > 0) {
                const std::size_t word = record(chance(count)).from + 4 * chance(35);
                const std::uint32_t value =
                    chance(3) ? static_cast<std::uint32_t>(chance(400)) : 0xFFFFFFFFu >> chance(20);
                for (std::size_t i = 0; i < 4 && word + i < size; ++i)
                    file.set(word + i, static_cast<char>(value >> 8 * i));
            }
    }
}

}  // namespace corpus
