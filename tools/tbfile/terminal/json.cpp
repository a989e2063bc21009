// Writes JSON straight into a text: a listing has a row for every block.
#include "terminal/json.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "terminal/characters.h"

namespace tbfile {
namespace {

bool standsForItself(char c) {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

void appendEscape(std::string& out, char32_t code) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    if (code == '"' || code == '\\')
        out += {'\\', static_cast<char>(code)};
    else if (code == '\n')
        out += "\\n";
    else if (code == '\t')
        out += "\\t";
    else
        out += {'\\', 'u', '0', '0', kDigits[code >> 4], kDigits[code & 15]};
}

void append(std::string& out, std::string_view utf8) {
    out += '"';
    for (std::size_t at = 0; at < utf8.size();) {
        const auto* const from = utf8.begin() + at;
        const auto plain = std::find_if_not(from, utf8.end(), standsForItself) - from;
        out.append(utf8, at, static_cast<std::size_t>(plain));
        at += static_cast<std::size_t>(plain);
        if (at == utf8.size()) break;
        const Character character = characterAt(utf8, at);
        if (character.bytes == 0)
            out += kReplacement;
        else if (character.bytes == 1 || isControl(character.code))
            appendEscape(out, character.code);
        else
            out.append(utf8, at, character.bytes);
        at += std::max<std::size_t>(character.bytes, 1);
    }
    out += '"';
}

void append(std::string& out, const std::string& text) {
    append(out, std::string_view(text));
}
void append(std::string& out, std::nullptr_t) {
    out += "null";
}
void append(std::string& out, bool value) {
    out += value ? "true" : "false";
}
void append(std::string& out, const Json& json) {
    out += json.text;
}
template <class Number>
requires std::is_same_v<Number, std::uint64_t> || std::is_same_v<Number, std::int64_t>
void append(std::string& out, Number number) {
    std::array<char, 20> digits{};
    out.append(digits.data(),
               std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

}  // namespace

Json jsonObject(std::initializer_list<JsonMember> members) {
    std::string text = "{";
    for (const JsonMember& member : members) {
        if (text.size() > 1) text += ',';
        text.append("\"").append(member.key).append("\":");
        std::visit([&](const auto& value) { append(text, value); }, member.value);
    }
    return {text += '}'};
}

void JsonArray::add(const Json& element) {
    if (text_.size() > 1) text_ += ',';
    text_ += element.text;
}

}  // namespace tbfile
