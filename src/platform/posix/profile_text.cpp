// The notation of profile files, in the encodings that they come in.
#include "platform/posix/profile_text.h"

#include <algorithm>

#include "base/trimmed.h"
#include "base/windows1252.h"
#include "platform/profile_names.h"

namespace toolbox::platform::posix {
namespace {

using Kind = LineMeaning::Kind;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16leMark = "\xFF\xFE";
constexpr std::string_view kUtf16beMark = "\xFE\xFF";

std::string_view trimmed(std::string_view text) {
    return base::trimmed(text, kProfileBlanks);
}

/// The part of a line that Windows sees.
std::string_view visible(std::string_view line) {
    return trimmed(line.substr(0, line.find('\0')));
}

std::size_t lineLength(std::string_view text) {
    const std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos) return text.size();
    return end + (text.substr(end).starts_with("\r\n") ? 2 : 1);
}

LineMeaning meaning(std::string_view line) {
    const std::string_view seen = visible(line);
    if (seen.empty()) return {};
    if (seen.front() == '[') {
        const std::size_t end = seen.rfind(']');
        if (end != std::string_view::npos)
            return {Kind::header, foldedName(seen.substr(1, end - 1))};
    }
    return {Kind::entry, foldedName(seen.substr(0, seen.find('=')))};
}

constexpr LineSyntax kSyntax{lineLength, meaning, true};

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unit = [&](std::size_t i) {
        const auto low = static_cast<unsigned char>(bytes[i + (bigEndian ? 1 : 0)]);
        const auto high = static_cast<unsigned char>(bytes[i + (bigEndian ? 0 : 1)]);
        return static_cast<char32_t>(high << 8 | low);
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code = unit(i);
        if (code >= 0xD800 && code < 0xDC00 && i + 3 < bytes.size()) {
            const char32_t next = unit(i + 2);
            if (next >= 0xDC00 && next < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
                i += 2;
            }
        }
        base::appendUtf8(text, code);
    }
    return text;
}

std::string toUtf16(std::string_view text, bool bigEndian) {
    std::string bytes;
    const auto put = [&](char32_t unit) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    };
    while (!text.empty()) {
        char32_t code = base::takeUtf8(text);
        if (code >= 0x10000) {
            code -= 0x10000;
            put(0xD800 + (code >> 10));
            put(0xDC00 + (code & 0x3FF));
        } else {
            put(code);
        }
    }
    return bytes;
}

}  // namespace

ProfileText::ProfileText(std::string_view bytes)
    : encoding_(encodingOf(bytes)), text_(kSyntax, decoded(bytes, encoding_)) {}

ProfileText::Encoding ProfileText::encodingOf(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark)) return Encoding::utf8;
    if (bytes.starts_with(kUtf16leMark)) return Encoding::utf16le;
    if (bytes.starts_with(kUtf16beMark)) return Encoding::utf16be;
    return Encoding::windows1252;
}

std::string ProfileText::decoded(std::string_view bytes, Encoding encoding) {
    switch (encoding) {
        case Encoding::windows1252:
            return std::string(bytes);
        case Encoding::utf8:
            return std::string(bytes.substr(kUtf8Mark.size()));
        case Encoding::utf16le:
            return fromUtf16(bytes.substr(kUtf16leMark.size()), false);
        case Encoding::utf16be:
            return fromUtf16(bytes.substr(kUtf16beMark.size()), true);
    }
    return {};
}

std::string ProfileText::bytes() const {
    std::string text = text_.text();
    switch (encoding_) {
        case Encoding::windows1252:
            return text;
        case Encoding::utf8:
            return std::string(kUtf8Mark) + text;
        case Encoding::utf16le:
            return std::string(kUtf16leMark) + toUtf16(text, false);
        case Encoding::utf16be:
            return std::string(kUtf16beMark) + toUtf16(text, true);
    }
    return {};
}

/// A caller's text as it stands in the file's text.
std::string ProfileText::inside(std::string_view text) const {
    return encoding_ == Encoding::windows1252 ? std::string(text) : base::utf8From1252(text);
}

std::optional<std::string> ProfileText::value(std::string_view section,
                                              std::string_view entry) const {
    const std::string* line = text_.find(foldedName(inside(section)), foldedName(inside(entry)));
    if (!line) return std::nullopt;
    const std::string_view seen = visible(*line);
    const std::size_t equals = seen.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    const std::string_view text = shownValue(seen.substr(equals + 1));
    return encoding_ == Encoding::windows1252 ? std::string(text) : base::utf8To1252(text);
}

bool ProfileText::set(std::string_view section, std::string_view entry, std::string_view value) {
    const std::string sectionName = inside(trimmed(section));
    const std::string entryName = inside(trimmed(entry));
    std::string line = entryName;
    if (const std::string* old = text_.find(foldedName(sectionName), foldedName(entryName))) {
        const std::string_view seen = visible(*old);  // the name stays as the file spells it
        line = trimmed(seen.substr(0, seen.find('=')));
    }
    line += '=';
    line += inside(value);
    return text_.put(foldedName(sectionName), "[" + sectionName + "]", foldedName(entryName), line);
}

bool ProfileText::erase(std::string_view section, std::string_view entry) {
    return text_.erase(foldedName(inside(section)), foldedName(inside(entry)));
}

}  // namespace toolbox::platform::posix
