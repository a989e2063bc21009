// Which identifiers a file that is made has already.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <unordered_set>
#include <vector>

namespace tbfile {

/// Differs from one run of the program to the next.
struct SeededHash {
    std::uint64_t seed = std::random_device{}();

    std::size_t operator()(std::uint32_t id) const {
        const std::uint64_t mixed = (id ^ seed) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(mixed >> 32);
    }
};

/// As long as identifiers rise, as in most files, they only stand in a list. The first that does
/// not rise makes it a hash table, seeded so that no file can be made whose identifiers
/// all collide.
class Identifiers {
  public:
    [[nodiscard]] bool has(std::uint32_t id) const;
    /// False when it was there.
    bool add(std::uint32_t id);

  private:
    std::vector<std::uint32_t> rising_;
    std::unordered_set<std::uint32_t, SeededHash> table_;
};

}  // namespace tbfile
