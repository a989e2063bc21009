// The header of a block file, as far as it can be read.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame.h"

namespace tbfile {

enum class HeaderFault { tooShort, terminator, format, description, date };

struct Header {
    std::uint32_t version = 0;
    std::uint32_t mask = 0;
    std::string description;              ///< Windows-1252
    std::array<std::int32_t, 3> dates{};  ///< creation, time stamp, net: day numbers
    std::uint32_t indexOffset = 0;
    Shape shape;  ///< what the header says
    std::vector<HeaderFault> faults;

    [[nodiscard]] bool has(HeaderFault fault) const;
    /// A reader of the library accepts it.
    [[nodiscard]] bool isReadable() const {
        return !has(HeaderFault::tooShort) && !has(HeaderFault::terminator);
    }
    [[nodiscard]] bool wholeWords() const { return (mask & blocks::kWholeWords) != 0; }
};

/// What is missing reads as 0.
[[nodiscard]] Header readHeader(Window& file);

/// The 160 bytes of a header of format version 210.
[[nodiscard]] std::array<char, blocks::kHeaderBytes> headerBytes(const Header& header);

/// A day number as 2001-04-30; empty when it is no date.
[[nodiscard]] std::string dayText(std::int32_t day);
/// The day number of such a text.
[[nodiscard]] std::optional<std::int32_t> dayOf(std::string_view text);

}  // namespace tbfile
