// The places of blocks that an index names, in the order of the file.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "file/block/lookup.h"
#include "toolbox/file_walk.h"

namespace toolbox {

/// Answers for places that mostly rise, as a walk through the file asks.
class IndexPlaces {
  public:
    /// Borrows the entries of the index, if there is one; they are copied only when they are not in
    /// the order of the file, or when a list of checksums has them undamaged.
    explicit IndexPlaces(const BlockFileMap& map);

    /// The entry that names this place.
    [[nodiscard]] const BlocItem* at(std::uint64_t offset);
    /// The first entry that names a place after this one.
    [[nodiscard]] const BlocItem* after(std::uint64_t offset);
    /// The first entry with this identifier.
    [[nodiscard]] const BlocItem* of(std::uint32_t id);

  private:
    const BlocItem* from(std::uint64_t offset);

    const std::vector<BlocItem>* entries_;
    std::vector<BlocItem> sorted_;
    std::size_t cursor_ = 0;
    BlockLookup lookup_;
};

}  // namespace toolbox
