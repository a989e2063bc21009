// Writes and reads stored tags. Counts are held against the bytes that remain before anything is
// reserved.
#include "tag/tag_bytes.h"

#include <unordered_set>

#include "base/codec.h"
#include "tag/sentences.h"

namespace toolbox::tag {
namespace {

enum Flag : unsigned {
    kLeader = 1,
    kLocked = 2,
    kUnplaced = 4,
    kFilled = 8,
    kBold = 16,
    kItalic = 32,
    kAllFlags = 63
};

template <class T>
void add(std::string& bytes, T value) {
    char stored[sizeof value];
    base::store(stored, value);
    bytes.append(stored, sizeof stored);
}

void addByte(std::string& bytes, unsigned value) {
    bytes += static_cast<char>(value);
}

unsigned flagsOf(const TvTag& tag) {
    return (tag.leader ? kLeader : 0U) | (tag.locked ? kLocked : 0U) |
           (tag.unplaced ? kUnplaced : 0U) | (tag.fill.filled ? kFilled : 0U) |
           (tag.font.bold ? kBold : 0U) | (tag.font.italic ? kItalic : 0U);
}

/// Takes values off the front.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] std::size_t place() const { return place_; }
    [[nodiscard]] bool atEnd() const { return place_ == bytes_.size(); }
    [[nodiscard]] std::size_t left() const { return bytes_.size() - place_; }

    template <class T>
    [[nodiscard]] bool take(T& value) {
        if (left() < sizeof value) return false;
        value = base::load<T>(bytes_.data() + place_);
        place_ += sizeof value;
        return true;
    }
    /// A byte that is an enumerator; which ones there are is checked with the whole tag.
    template <class T>
    [[nodiscard]] bool takeEnumerator(T& value) {
        unsigned char byte = 0;
        if (!take(byte)) return false;
        value = static_cast<T>(byte);
        return true;
    }
    [[nodiscard]] bool take(TvColor& color) {
        return take(color.red) && take(color.green) && take(color.blue);
    }
    [[nodiscard]] bool take(TvPoint& point) { return take(point.x) && take(point.y); }
    [[nodiscard]] bool take(std::string& text) {
        std::uint32_t length = 0;
        if (!take(length) || length > left()) return false;
        text = bytes_.substr(place_, length);
        place_ += length;
        return true;
    }

  private:
    std::string_view bytes_;
    std::size_t place_ = 0;
};

[[nodiscard]] bool takeFlags(Reader& reader, TvTag& tag) {
    unsigned char flags = 0;
    if (!reader.take(flags) || flags > kAllFlags) return false;
    tag.leader = (flags & kLeader) != 0;
    tag.locked = (flags & kLocked) != 0;
    tag.unplaced = (flags & kUnplaced) != 0;
    tag.fill.filled = (flags & kFilled) != 0;
    tag.font.bold = (flags & kBold) != 0;
    tag.font.italic = (flags & kItalic) != 0;
    return true;
}

[[nodiscard]] bool takeStyles(Reader& reader, TvTag& tag) {
    if (!reader.takeEnumerator(tag.font.family) || !reader.take(tag.font.size) ||
        !reader.take(tag.font.color) || !reader.take(tag.line.color) ||
        !reader.take(tag.fill.color) || !reader.take(tag.line.width))
        return false;
    for (double& length : tag.line.dash)
        if (!reader.take(length)) return false;
    return true;
}

[[nodiscard]] bool takeFields(Reader& reader, TvTag& tag) {
    return reader.take(tag.text) && reader.take(tag.anchor) && reader.take(tag.offset) &&
           reader.take(tag.width) && reader.take(tag.margin) && reader.take(tag.minScale) &&
           reader.take(tag.maxScale) && reader.takeEnumerator(tag.align) &&
           reader.takeEnumerator(tag.level) && reader.takeEnumerator(tag.border) &&
           takeFlags(reader, tag) && takeStyles(reader, tag) && tag.check(nullptr);
}

/// Reads all of them; false with the place of the tag that is wrong.
[[nodiscard]] bool takeAll(std::string_view bytes, std::vector<Numbered>& tags,
                           std::size_t& place) {
    Reader reader(bytes);
    std::unordered_set<TvTagId> taken;
    std::uint32_t count = 0;
    place = 0;
    if (!reader.take(count)) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        place = reader.place();
        TvTag tag;
        TvTagId id = 0;
        if (!reader.take(id) || id == 0 || !taken.insert(id).second || !takeFields(reader, tag))
            return false;
        tags.push_back({id, std::make_shared<const TvTag>(std::move(tag))});
    }
    place = reader.place();
    return reader.atEnd();
}

}  // namespace

void addFields(std::string& bytes, const TvTag& tag) {
    add(bytes, static_cast<std::uint32_t>(tag.text.size()));
    bytes += tag.text;
    for (const double value : {tag.anchor.x, tag.anchor.y, tag.offset.x, tag.offset.y, tag.width,
                               tag.margin, tag.minScale, tag.maxScale})
        add(bytes, value);
    addByte(bytes, static_cast<unsigned>(tag.align));
    addByte(bytes, static_cast<unsigned>(tag.level));
    addByte(bytes, static_cast<unsigned>(tag.border));
    addByte(bytes, flagsOf(tag));
    addByte(bytes, tag.font.family);
    add(bytes, tag.font.size);
    for (const TvColor color : {tag.font.color, tag.line.color, tag.fill.color})
        for (const unsigned char part : {color.red, color.green, color.blue}) addByte(bytes, part);
    add(bytes, tag.line.width);
    for (const double length : tag.line.dash) add(bytes, length);
}

std::string bytesOf(const std::vector<Numbered>& tags) {
    std::string bytes;
    add(bytes, static_cast<std::uint32_t>(tags.size()));
    for (const Numbered& each : tags) {
        add(bytes, each.id);
        addFields(bytes, *each.tag);
    }
    return bytes;
}

int readSealed(std::string_view stored, canvas::Opened& opened, std::vector<Numbered>& tags,
               CString* why) {
    using canvas::Opening;
    switch (openSealed(stored, kSeal, opened)) {
        case Opening::open:
            break;
        case Opening::foreign:
            return refuse(why, Sentence::noTags);
        case Opening::cutShort:
            return refuse(why, Sentence::cutShort);
        case Opening::newer:
            return refuse(why, Sentence::newer);
        case Opening::altered:
            return refuse(why, Sentence::altered);
    }
    std::size_t place = 0;
    if (takeAll(opened.bytes, tags, place)) return 1;
    return refuse(why, Sentence::impossible, static_cast<unsigned>(kSeal.start() + place));
}

}  // namespace toolbox::tag
