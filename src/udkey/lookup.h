// Dictionaries that a template asks for each of its words: one block of memory each, so that an
// answer costs one visit to it. Ids and words are the application's, so hashing is one product.
// BlockLookup is another table: its identifiers come from files, which must not be able to make
// them collide, and lie in a list of its caller. bench/udkey measures this one, bench/file/block
// that one.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "toolbox/keys.h"

namespace toolbox::udkey {

/// A linear-probing table. `Slot` has isFree() and a 32-bit hash(); the caller compares the rest.
template <class Slot>
class Slots {
  public:
    void clear() { *this = Slots(); }

    /// The first slot from the hash's own on that is free or that `isIt` accepts; null while there
    /// are none.
    template <class IsIt>
    [[nodiscard]] const Slot* search(std::uint32_t hash, IsIt isIt) const {
        if (slots_.empty()) return nullptr;
        std::size_t at = home(hash);
        while (!slots_[at].isFree() && !isIt(slots_[at])) at = (at + 1) & (slots_.size() - 1);
        return &slots_[at];
    }

    /// Adds a slot that no search finds yet.
    void add(const Slot& slot) {
        if ((used_ + 1) * 2 > slots_.size()) grow();
        place(slot);
        ++used_;
    }

    /// Removes a slot that search() found. Those after it whose search comes by move up.
    void remove(const Slot* found) {
        const std::size_t mask = slots_.size() - 1;
        auto hole = static_cast<std::size_t>(found - slots_.data());
        slots_[hole] = Slot();
        --used_;
        for (std::size_t at = (hole + 1) & mask; !slots_[at].isFree(); at = (at + 1) & mask) {
            const std::size_t fromHome = (at - home(slots_[at].hash())) & mask;
            if (fromHome < ((at - hole) & mask)) continue;
            slots_[hole] = slots_[at];
            slots_[at] = Slot();
            hole = at;
        }
    }

  private:
    /// The upper bits of a product: ids that follow each other lie apart.
    [[nodiscard]] std::size_t home(std::uint32_t hash) const {
        constexpr std::uint32_t kGolden = 0x9E3779B9U;
        return (hash * kGolden) >> shift_;
    }
    void place(const Slot& slot) {
        std::size_t at = home(slot.hash());
        while (!slots_[at].isFree()) at = (at + 1) & (slots_.size() - 1);
        slots_[at] = slot;
    }
    void grow() {
        constexpr std::size_t kFirstSlots = 16;
        std::vector<Slot> old(slots_.empty() ? kFirstSlots : slots_.size() * 2);
        old.swap(slots_);
        shift_ = 32 - std::countr_zero(slots_.size());
        for (const Slot& slot : old)
            if (!slot.isFree()) place(slot);
    }

    std::vector<Slot> slots_;  ///< a power of two of them, at most half of them used
    std::size_t used_ = 0;
    int shift_ = 0;
};

/// Map from id to T.
template <class T>
class ById {
  public:
    void clear() { slots_.clear(); }
    /// The id must not be there yet.
    void add(UINT id, T value) { slots_.add({id, true, value}); }
    [[nodiscard]] const T* find(UINT id) const {
        const Slot* slot = slotOf(id);
        return slot && slot->used ? &slot->value : nullptr;
    }
    /// False when there is none.
    bool remove(UINT id) {
        const Slot* slot = slotOf(id);
        if (!slot || !slot->used) return false;
        slots_.remove(slot);
        return true;
    }

  private:
    struct Slot {
        UINT id = 0;
        bool used = false;
        T value{};
        [[nodiscard]] bool isFree() const { return !used; }
        [[nodiscard]] std::uint32_t hash() const { return UDManager::hashUINT(id); }
    };
    [[nodiscard]] const Slot* slotOf(UINT id) const {
        return slots_.search(UDManager::hashUINT(id),
                             [id](const Slot& other) { return other.id == id; });
    }
    Slots<Slot> slots_;
};

// Words are short: a call of the C library costs more than all their bytes. They are taken eight
// or four at a time here, the last ones overlapping those before.

template <class Part>
[[nodiscard]] std::uint64_t partAt(const char* text) {
    Part part;
    std::memcpy(&part, text, sizeof part);
    return part;
}

[[nodiscard]] inline std::uint32_t hashOf(std::string_view word) {
    using Eight = std::uint64_t;
    using Four = std::uint32_t;
    constexpr std::uint64_t kFactor = 0x9FB21C651E98DF25U;
    const char* const text = word.data();
    const std::size_t size = word.size();
    std::uint64_t hash = size * kFactor;
    const auto mix = [&hash](std::uint64_t part) {
        hash = (hash ^ part) * kFactor;
        hash ^= hash >> 32;
    };
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) mix(partAt<Eight>(text + at));
        mix(partAt<Eight>(text + size - 8));
    } else if (size >= 4) {
        mix(partAt<Four>(text) | partAt<Four>(text + size - 4) << 32);
    } else {
        for (const char c : word) mix(static_cast<unsigned char>(c));
    }
    return static_cast<std::uint32_t>(hash);
}

[[nodiscard]] inline bool sameWord(std::string_view first, std::string_view second) {
    using Eight = std::uint64_t;
    using Four = std::uint32_t;
    if (first.size() != second.size()) return false;
    const char* const a = first.data();
    const char* const b = second.data();
    const std::size_t size = first.size();
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8)
            if (partAt<Eight>(a + at) != partAt<Eight>(b + at)) return false;
        return partAt<Eight>(a + size - 8) == partAt<Eight>(b + size - 8);
    }
    if (size >= 4) {
        return partAt<Four>(a) == partAt<Four>(b) &&
               partAt<Four>(a + size - 4) == partAt<Four>(b + size - 4);
    }
    for (std::size_t at = 0; at < size; ++at)
        if (a[at] != b[at]) return false;
    return true;
}

/// Table of entries, each found by its key().
template <class T>
class ByKey {
  public:
    void clear() { slots_.clear(); }
    /// Borrows an entry; its key must not be there yet.
    void add(T& value) { slots_.add({&value, hashOf(value.key())}); }
    [[nodiscard]] T* find(std::string_view key) const {
        const std::uint32_t hash = hashOf(key);
        const Slot* slot = slots_.search(hash, [&](const Slot& other) {
            return other.hashed == hash && sameWord(other.value->key(), key);
        });
        return slot ? slot->value : nullptr;
    }

  private:
    struct Slot {
        T* value = nullptr;
        std::uint32_t hashed = 0;
        [[nodiscard]] bool isFree() const { return !value; }
        [[nodiscard]] std::uint32_t hash() const { return hashed; }
    };
    Slots<Slot> slots_;
};

}  // namespace toolbox::udkey
