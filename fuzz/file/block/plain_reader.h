// What the bytes of a block file hold, read plainly: no index in memory, no extents, no chunks.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "file/block/block_kit.h"

namespace block_kit {

inline constexpr std::uint32_t kIndexId = 0xFFFFFFEF;
inline constexpr std::uint32_t kEnd = 0xFFFFFFFF;

/// A field's text: up to its first NUL.
inline std::string textIn(std::string_view field) {
    return std::string(field.substr(0, field.find('\0')));
}

class PlainReader {
  public:
    explicit PlainReader(std::string_view bytes) : bytes_(bytes) {
        if (bytes.size() >= 156 && wordAt(bytes, 152) == kEnd)
            format_ = 100;
        else if (bytes.size() >= 160 && wordAt(bytes, 156) == kEnd)
            format_ = wordAt(bytes, 152);
        else
            return;
        auto index = blockAt(wordAt(bytes, 148), kIndexId);
        if (!index) index = found(kIndexId);
        if (!index) return;
        opens_ = true;
        for (std::size_t at = 0; at + 8 <= index->data.size(); at += 8)
            entries_.push_back({wordAt(index->data, at), wordAt(index->data, at + 4)});
    }

    [[nodiscard]] bool opens() const { return opens_; }
    [[nodiscard]] const std::vector<BlocItem>& entries() const { return entries_; }

    [[nodiscard]] std::uint32_t offsetOf(std::uint32_t id) const {
        const auto entry = std::ranges::find(entries_, id, &BlocItem::id);
        return entry == entries_.end() ? 0 : entry->offset;
    }

    [[nodiscard]] std::optional<Block> block(std::uint32_t id) const {
        const auto block = blockAt(offsetOf(id), id);
        const bool mayBeElsewhere = (wordAt(bytes_, 4) & 1) != 0;
        return block || !mayBeElsewhere ? block : found(id);
    }

  private:
    /// The whole block at a place. Of its terminator one byte has to be there, with any value.
    [[nodiscard]] std::optional<Block> blockAt(std::size_t at, std::uint32_t id) const {
        const std::size_t description = format_ >= 210 ? 128 : 64;
        const std::size_t versions = format_ >= 210 ? 8 : format_ >= 200 ? 4 : 0;
        const std::size_t head = 4 + description + 4;
        if (at > bytes_.size() || head > bytes_.size() - at || wordAt(bytes_, at) != id) return {};
        const std::size_t length = wordAt(bytes_, at + head - 4);
        const std::size_t room = bytes_.size() - at - head;
        if (length >= room || versions >= room - length) return {};
        const std::size_t after = at + head + length;
        return Block{id, std::string(bytes_.substr(at + head, length)),
                     textIn(bytes_.substr(at + 4, description)),
                     versions >= 4 ? wordAt(bytes_, after) : 0,
                     versions >= 8 ? wordAt(bytes_, after + 4) : 0};
    }

    /// The block at the first terminator that its identifier follows, both whole words of the file.
    [[nodiscard]] std::optional<Block> found(std::uint32_t id) const {
        for (std::size_t at = 0; at + 8 <= bytes_.size(); at += 4)
            if (wordAt(bytes_, at) == kEnd && wordAt(bytes_, at + 4) == id)
                return blockAt(at + 4, id);
        return {};
    }

    std::string_view bytes_;
    std::uint32_t format_ = 0;
    bool opens_ = false;
    std::vector<BlocItem> entries_;
};

/// Whether an open file names the blocks that its bytes name, in their order, and gives just those
/// that stand whole in them.
inline bool givesWhatItHolds(TarvFileRead& file, const PlainReader& bytes) {
    const Block before{77, "kept", "as it was"};
    const auto gives = [&](std::uint32_t id) {
        TarvBlocFile out = made(before);
        const std::optional<Block> block = bytes.block(id);
        return file.getBloc(id, out) == (block ? 1 : 0) && seen(out) == block.value_or(before);
    };
    // Blocks are fetched with the entries still in the index's data, and again once they are
    // unpacked.
    for (int again = 0; again < 2; ++again) {
        for (const BlocItem& entry : bytes.entries())
            if (!gives(entry.id)) return false;
        for (const std::uint32_t id : {0u, 1u, kIndexId, kEnd})
            if (!gives(id)) return false;

        TarvFileIndex& index = *file.getIndex();
        if (index.getNbrItem() != bytes.entries().size()) return false;
        unsigned long id = 0;
        int more = index.getFirstID(id);
        for (const BlocItem& entry : bytes.entries()) {
            if (!more || id != entry.id || index.getOffset(id) != bytes.offsetOf(entry.id))
                return false;
            more = index.getNextID(id);
        }
        if (more) return false;
    }
    return true;
}

}  // namespace block_kit
