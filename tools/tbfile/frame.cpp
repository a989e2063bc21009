#include "frame.h"

#include <algorithm>

namespace tbfile {

bool isPadded(std::string_view field) {
    const std::size_t text = std::min(field.find('\0'), field.size());
    const char* at = field.data() + text;
    const char* end = field.data() + field.size();
    std::uint64_t rest = 0;
    for (; end - at >= 8; at += 8) rest |= toolbox::base::load<std::uint64_t>(at);
    for (; at < end; ++at) rest |= static_cast<unsigned char>(*at);
    return rest == 0;
}

namespace {

void readVersions(const char* tail, const blocks::Layout& layout, Label& label) {
    if (layout.tail >= 8) label.version = wordAt(tail);
    if (layout.tail >= 12) label.recordVersion = wordAt(tail + 4);
}

}  // namespace

Frame frameAt(Window& file, const Shape& shape, std::uint64_t offset, std::uint64_t limit,
              Label* label) {
    const blocks::Layout layout = shape.layout();
    Frame frame;
    frame.offset = offset;
    if (limit < offset + layout.head()) {
        const auto rest = static_cast<std::size_t>(limit > offset ? limit - offset : 0);
        const char* head = file.at(offset, rest);
        constexpr std::size_t kId = 4;
        frame.padded =
            head && (rest <= kId ||
                     isPadded({head + kId, std::min<std::size_t>(rest - kId, layout.description)}));
        frame.plausible = frame.padded;
        return frame;
    }
    const char* head = file.at(offset, layout.head());
    if (!head) return frame;
    frame.hasHead = true;
    frame.id = wordAt(head);
    frame.length = wordAt(head + 4 + layout.description);
    frame.end = offset + shape.around() + frame.length;
    frame.padded = isPadded({head + 4, layout.description});
    frame.plausible = frame.padded && frame.length <= blocks::kMostBytes;
    frame.fits = frame.end <= limit;
    if (!frame.fits) return frame;
    if (label) label->description = blocks::textIn(head + 4, layout.description);
    const char* tail = file.at(frame.end - layout.tail, layout.tail);
    frame.terminated = tail && wordAt(tail + layout.tail - 4) == blocks::kTerminator;
    if (label && tail) readVersions(tail, layout, *label);
    return frame;
}

Label labelOf(Window& file, const Shape& shape, const Frame& frame) {
    const blocks::Layout layout = shape.layout();
    Label label;
    if (const char* head = file.at(frame.offset, layout.head()))
        label.description = blocks::textIn(head + 4, layout.description);
    if (const char* tail = file.at(frame.end - layout.tail, layout.tail))
        readVersions(tail, layout, label);
    return label;
}

}  // namespace tbfile
