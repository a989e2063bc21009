// The frame of a block in a file: what stands around its data, and whether it holds together.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "file/block/layout.h"
#include "window.h"

namespace tbfile {

namespace blocks = toolbox::blocks;

/// Where blocks begin in a file and how they are laid out.
struct Shape {
    std::uint32_t format = blocks::kFormatWritten;

    [[nodiscard]] blocks::Layout layout() const { return blocks::Layout(format); }
    [[nodiscard]] std::uint32_t start() const {
        return format == blocks::kOldestFormat ? blocks::kOldHeaderBytes : blocks::kHeaderBytes;
    }
    /// Bytes of a block beside its data.
    [[nodiscard]] std::uint32_t around() const { return layout().head() + layout().tail; }
};

struct Frame {
    std::uint64_t offset = 0;
    std::uint64_t end = 0;     ///< where its length says that it ends
    std::uint32_t id = 0;      ///< 0 when the file ends within it
    std::uint32_t length = 0;  ///< of the data
    bool hasHead = false;      ///< the file has everything before the data
    bool fits = false;         ///< it ends within the file
    bool terminated = false;   ///< and does so with a terminator
    bool padded = false;       ///< behind the text of its description there are zeros only
    /// Nothing contradicts that a writer wrote this head: it is padded, and its length is one that
    /// a file can have. Data rarely looks so.
    bool plausible = false;

    [[nodiscard]] bool isWhole() const { return fits && terminated; }
    [[nodiscard]] bool isIndex() const { return id == blocks::kIndexId; }
};

/// The texts and numbers of a whole frame.
struct Label {
    std::string description;  ///< Windows-1252
    std::uint32_t version = 0;
    std::uint32_t recordVersion = 0;
};
[[nodiscard]] Label labelOf(Window& file, const Shape& shape, const Frame& frame);

/// What stands at a place, taken for a block that must end at `limit` at the latest. Reads its
/// label too, where one is given and it fits.
[[nodiscard]] Frame frameAt(Window& file, const Shape& shape, std::uint64_t offset,
                            std::uint64_t limit, Label* label = nullptr);

[[nodiscard]] inline std::uint32_t wordAt(const char* bytes) {
    return toolbox::base::load<std::uint32_t>(bytes);
}

/// Behind the first zero of a field there are only zeros.
[[nodiscard]] bool isPadded(std::string_view field);

}  // namespace tbfile
