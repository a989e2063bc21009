// Conversion by a table of the 256 bytes' characters.
#include "dialog/pickers/wide_names.h"

#include <algorithm>
#include <array>

#include "base/windows1252.h"

namespace toolbox::pickers {
namespace {

/// The character of each byte.
const std::array<char16_t, 256>& characters() {
    static const std::array<char16_t, 256> kAll = [] {
        std::array<char16_t, 256> all{};
        for (std::size_t i = 0; i < all.size(); ++i) {
            const char byte = static_cast<char>(i);
            const std::string utf8 = base::utf8From1252({&byte, 1});
            std::string_view rest = utf8;
            all[i] = static_cast<char16_t>(base::takeUtf8(rest));
        }
        return all;
    }();
    return kAll;
}

char16_t wideOf(char byte) {
    return characters()[static_cast<unsigned char>(byte)];
}

/// The byte of a character; nothing where Windows-1252 has none.
std::optional<char> byteOf(char16_t character) {
    if (character < 0x80) return static_cast<char>(character);
    const auto& all = characters();
    const auto found = std::find(all.begin() + 0x80, all.end(), character);
    if (found == all.end()) return std::nullopt;
    return static_cast<char>(found - all.begin());
}

/// Cuts the text up to the next NUL off.
std::u16string_view takeName(std::u16string_view& list) {
    const std::u16string_view name = list.substr(0, list.find(u'\0'));
    list.remove_prefix(std::min(name.size() + 1, list.size()));
    return name;
}

bool isSeparator(char16_t c) {
    return c == u'\\' || c == u'/';
}

bool hasFolder(std::u16string_view name) {
    return isSeparator(name.front()) || (name.size() > 1 && name[1] == u':');
}

}  // namespace

std::u16string wideOf(std::string_view bytes) {
    std::u16string wide;
    wide.reserve(bytes.size());
    for (const char byte : bytes) wide.push_back(wideOf(byte));
    return wide;
}

std::optional<std::string> exact1252(std::u16string_view name) {
    std::string bytes;
    bytes.reserve(name.size());
    for (const char16_t character : name) {
        const std::optional<char> byte = byteOf(character);
        if (!byte) return std::nullopt;
        bytes.push_back(*byte);
    }
    return bytes;
}

std::string shown1252(std::u16string_view name) {
    std::string bytes;
    for (const char16_t character : name) {
        const bool isSecondHalf = (character & 0xFC00) == 0xDC00;
        if (!isSecondHalf) bytes.push_back(byteOf(character).value_or('?'));
    }
    return bytes;
}

std::vector<std::u16string> severalNames(std::u16string_view chosen) {
    std::vector<std::u16string> names;
    const std::u16string_view first = takeName(chosen);
    if (first.empty()) return names;
    std::u16string folder(first);
    if (!isSeparator(folder.back())) folder.push_back(u'\\');
    for (auto name = takeName(chosen); !name.empty(); name = takeName(chosen))
        names.push_back(hasFolder(name) ? std::u16string(name) : folder + std::u16string(name));
    if (names.empty()) names.emplace_back(first);
    return names;
}

}  // namespace toolbox::pickers
