// Finds the entry of an identifier among many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "toolbox/block_files.h"

namespace toolbox {

/// The identifiers seen so far, a bit each. Those of one file mostly lie close together; then a bit
/// each fits in a processor's own memory, where a hash table of a million entries does not. Gives
/// up on identifiers that are spread so widely that the bits would take more than about 8 bytes
/// each.
class IdBits {
  public:
    enum class Answer { isNew, seen, tooSparse };

    /// Adds an identifier. `tooSparse`: it was not added, and the set is of no more use.
    [[nodiscard]] Answer add(std::uint32_t id);

  private:
    static constexpr unsigned kPageBits = 18;
    static constexpr std::size_t kPageWords = (std::size_t{1} << kPageBits) / 64;
    static constexpr std::size_t kFreePages = 8;

    std::vector<std::uint16_t> pageOf_;  // by the upper bits of an identifier; 0: none, 1: first
    std::vector<std::uint64_t> words_;   // of all pages
    std::size_t pages_ = 0;
    std::size_t ids_ = 0;
};

/// A hash table of positions in a list of entries, of which only the first with an identifier
/// counts. Open addressing, a power of two of slots, at most two thirds used. The hash is seeded
/// with chance, so that no file can be made whose identifiers all collide. A list of up to kFew
/// entries is walked instead, and so is a longer one until walking it has cost as much as the table
/// would. While a list only grows and nothing is looked up, bits tell which identifiers it has.
///
/// The tables of the keys' templates (udkey/lookup.h) are others: they hold texts, give up entries
/// and may scatter neighbours. Here nothing is removed, and a million identifiers in a row must
/// stay side by side in memory; bench/file/block/block_bench measures what that is worth.
class BlockLookup {
  public:
    using Entries = std::span<const BlocItem>;
    static constexpr std::size_t kFew = 32;

    BlockLookup();

    /// Position of the first entry with this identifier.
    [[nodiscard]] std::optional<std::uint32_t> find(Entries entries, std::uint32_t id);

    /// Tells of an entry about to be appended to `entries`; false when its identifier is there.
    [[nodiscard]] bool add(Entries entries, std::uint32_t id);

    /// Forgets all entries. `walksOnly`: no table is made for the next ones, however many are
    /// found.
    void clear(bool walksOnly = false);

  private:
    struct Slot {
        std::uint32_t id;
        std::uint32_t next;  ///< one more than the position; 0 in a free slot
    };

    [[nodiscard]] std::optional<bool> addToBits(Entries entries, std::uint32_t id);
    [[nodiscard]] Slot& slotOf(std::uint32_t id);
    void insertAll(Entries entries, std::size_t slots);

    IdBits bits_;
    std::size_t inBits_ = 0;  ///< entries that the bits know
    bool sparse_ = false;     ///< bits do not pay for this list
    std::vector<Slot> slots_;
    std::size_t used_ = 0;  ///< entries that the table knows
    std::size_t walked_ = 0;
    unsigned shift_ = 0;
    std::uint64_t seed_;
    bool walksOnly_ = false;
};

}  // namespace toolbox
