// The identifiers seen so far, a bit each.
#pragma once

#include <cstdint>
#include <vector>

namespace toolbox {

/// Identifiers of one file mostly lie close together; then a bit each fits in a processor's own
/// memory, where a hash table of a million entries does not. Gives up on identifiers that are
/// spread so widely that the bits would take more than about 8 bytes each.
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

}  // namespace toolbox
