// The bytes of stored tags, all little-endian: a count of tags (int), then each with
//     number (int), length of the text (int), the text, anchor, offset, width, margin, least and
//     greatest scale (doubles), align, level, border (bytes), flags (byte: 1 leader, 2 locked,
//     4 unplaced, 8 filled, 16 bold, 32 italic), family (byte), font size (double), colours of the
//     text, the line and the fill (3 bytes each), width of the line and 6 lengths of dashes
//     (doubles).
// They stand between the head and the check sum of canvas/sealed.h.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/sealed.h"
#include "toolbox/tags.h"

namespace toolbox::tag {

inline constexpr canvas::Seal kSeal{0x47545654, 100, 0};  // "TVTG"

struct Numbered {
    TvTagId id = 0;
    std::shared_ptr<const TvTag> tag;
};

[[nodiscard]] std::string bytesOf(const std::vector<Numbered>& tags);
/// The bytes of one tag without its number; equal tags have equal bytes.
void addFields(std::string& bytes, const TvTag& tag);

/// Opens the sealed bytes that `stored` begins with and reads all tags, or says why not. Numbers
/// are other than 0 and no two the same, and every tag is one that a set takes.
[[nodiscard]] int readSealed(std::string_view stored, canvas::Opened& opened,
                             std::vector<Numbered>& tags, CString* why);

}  // namespace toolbox::tag
