// Three ways to find an entry, each where it costs least: walking, a bit for each identifier, and a
// hash table.
#include "file/block/lookup.h"

#include <algorithm>
#include <bit>
#include <random>

namespace toolbox {
namespace {

/// One seed for the process: what has to be unknown is unknown to files, not to the program.
std::uint64_t chance() {
    static const std::uint64_t seed = [] {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device() | 1;
    }();
    return seed;
}

constexpr std::uint32_t kGroupSlots = 8;

std::optional<std::uint32_t> walk(BlockLookup::Entries entries, std::uint32_t id) {
    // Sixteen at a time without a branch, so that the compiler compares them side by side.
    constexpr std::size_t kGroup = 16;
    std::size_t at = 0;
    for (; at + kGroup <= entries.size(); at += kGroup) {
        unsigned hits = 0;
        for (std::size_t i = 0; i < kGroup; ++i) hits |= entries[at + i].id == id ? 1u : 0u;
        if (hits) break;
    }
    for (; at < entries.size(); ++at)
        if (entries[at].id == id) return static_cast<std::uint32_t>(at);
    return std::nullopt;
}

}  // namespace

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

BlockLookup::BlockLookup() : seed_(chance()) {}

BlockLookup::Slot& BlockLookup::slotOf(std::uint32_t id) {
    // Neighbours share a group, which is a line of the processor's cache: identifiers mostly come
    // in a row.
    const std::uint64_t mixed = (id / kGroupSlots + (seed_ >> 32)) * seed_;
    const std::uint64_t group = ((mixed ^ (mixed >> 29)) * 0x9E3779B97F4A7C15u) >> shift_;
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = static_cast<std::size_t>(group) * kGroupSlots + id % kGroupSlots;
    while (slots_[at].next != 0 && slots_[at].id != id) at = (at + 1) & mask;
    return slots_[at];
}

void BlockLookup::insertAll(Entries entries, std::size_t slots) {
    const std::size_t size = std::bit_ceil(slots);
    slots_.assign(size, Slot{});
    shift_ = 64 - static_cast<unsigned>(std::countr_zero(size / kGroupSlots));
    used_ = 0;
    for (const BlocItem& entry : entries) {
        ++used_;
        Slot& slot = slotOf(entry.id);
        if (slot.next == 0) slot = {entry.id, static_cast<std::uint32_t>(used_)};
    }
}

std::optional<std::uint32_t> BlockLookup::find(Entries entries, std::uint32_t id) {
    if (slots_.empty()) {
        if (entries.size() <= kFew || walksOnly_ || walked_ <= 4 * entries.size()) {
            const auto found = walk(entries, id);
            walked_ += found ? *found : entries.size();
            return found;
        }
        insertAll(entries, entries.size() * 2);
    }
    const Slot& slot = slotOf(id);
    if (slot.next == 0) return std::nullopt;
    return slot.next - 1;
}

/// Whether the identifier is new; nothing when bits do not pay for these identifiers.
std::optional<bool> BlockLookup::addToBits(Entries entries, std::uint32_t id) {
    const auto add = [&](std::uint32_t each) {
        const auto answer = bits_.add(each);
        if (answer == IdBits::Answer::tooSparse) sparse_ = true;
        return answer == IdBits::Answer::isNew;
    };
    for (; !sparse_ && inBits_ < entries.size(); ++inBits_) add(entries[inBits_].id);
    const bool isNew = !sparse_ && add(id);
    if (sparse_) {
        bits_ = {};
        return std::nullopt;
    }
    if (isNew) ++inBits_;
    return isNew;
}

bool BlockLookup::add(Entries entries, std::uint32_t id) {
    if (entries.size() < kFew) return !walk(entries, id);
    if (slots_.empty()) {
        if (const auto isNew = addToBits(entries, id)) return *isNew;
    }
    if (slots_.empty() || (used_ + 1) * 3 > slots_.size() * 2)
        insertAll(entries, std::max(entries.size() * 4, kFew * 4));
    Slot& slot = slotOf(id);
    if (slot.next != 0) return false;
    slot = {id, static_cast<std::uint32_t>(++used_)};
    return true;
}

void BlockLookup::clear(bool walksOnly) {
    bits_ = {};
    inBits_ = 0;
    sparse_ = false;
    slots_ = {};
    used_ = walked_ = 0;
    walksOnly_ = walksOnly;
}

}  // namespace toolbox
