#include "file/block/id_bits.h"

namespace toolbox {

IdBits::Answer IdBits::add(std::uint32_t id) {
    if (pageOf_.empty()) pageOf_.resize(std::size_t{1} << (32 - kPageBits));
    std::uint16_t& page = pageOf_[id >> kPageBits];
    if (page == 0) {
        constexpr std::size_t kIdsPerPage = kPageWords;  // 8 bytes each
        if (pages_ >= kFreePages + ids_ / kIdsPerPage) return Answer::tooSparse;
        words_.resize(++pages_ * kPageWords);
        page = static_cast<std::uint16_t>(pages_);
    }
    const std::uint32_t inPage = id & ((1u << kPageBits) - 1);
    std::uint64_t& word = words_[(page - std::size_t{1}) * kPageWords + inPage / 64];
    const std::uint64_t bit = std::uint64_t{1} << (inPage % 64);
    const bool seen = (word & bit) != 0;
    if (seen) return Answer::seen;
    word |= bit;
    ++ids_;
    return Answer::isNew;
}

}  // namespace toolbox
