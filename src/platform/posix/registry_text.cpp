// The notation of the registry's file: sections are keys, entries are typed values.
#include "platform/posix/registry_text.h"

#include <charconv>

#include "base/codec.h"
#include "base/trimmed.h"
#include "base/windows1252.h"
#include "toolbox/win_types.h"

namespace toolbox::platform::posix {
namespace {

using Kind = LineMeaning::Kind;

constexpr std::string_view kFirstLine = "REGEDIT4\r\n\r\n";

std::string_view trimmed(std::string_view text) {
    return base::trimmed(text, " \t\r\n");
}

std::string folded(std::string_view name) {
    std::string result(name);
    for (char& c : result) c = base::upper1252(c);
    return result;
}

/// Reads a text in quotes at the start of `text` and takes it off. False when it has no end.
bool takeQuoted(std::string_view& text, std::string& out) {
    out.clear();
    for (std::size_t i = 1; i < text.size(); ++i) {
        char c = text[i];
        if (c == '"') {
            text.remove_prefix(i + 1);
            return true;
        }
        if (c == '\\' && ++i == text.size()) return false;
        out += text[i];
    }
    return false;
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result += '"';
}

/// Splits `"name"=data` or `@=data`; the default value has the empty name.
bool splitValueLine(std::string_view line, std::string& name, std::string_view& data) {
    line = trimmed(line);
    name.clear();
    if (line.starts_with('@'))
        line.remove_prefix(1);
    else if (!line.starts_with('"') || !takeQuoted(line, name))
        return false;
    line = trimmed(line);
    if (!line.starts_with('=')) return false;
    data = trimmed(line.substr(1));
    return true;
}

/// A line that ends with a backslash goes on in the next one.
std::size_t lineLength(std::string_view text) {
    for (std::size_t from = 0;;) {
        const std::size_t end = text.find('\n', from);
        if (end == std::string_view::npos) return text.size();
        const std::size_t last = text.find_last_not_of("\r\n", end);
        const bool goesOn = last != std::string_view::npos && last >= from && text[last] == '\\';
        from = end + 1;
        if (!goesOn) return from;
    }
}

LineMeaning meaning(std::string_view line) {
    const std::string_view seen = trimmed(line);
    if (seen.empty()) return {};
    if (seen.front() == '[' && seen.back() == ']')
        return {Kind::header, folded(seen.substr(1, seen.size() - 2))};
    std::string name;
    std::string_view data;
    if (splitValueLine(line, name, data)) return {Kind::entry, "=" + folded(name)};
    return {Kind::entry, std::string(seen)};  // comments and the like: never asked for
}

constexpr LineSyntax kSyntax{lineLength, meaning, false};

std::optional<std::uint32_t> hexNumber(std::string_view text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<std::string> hexBytes(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        std::string_view one = text.substr(0, comma);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
        // A continued line puts a backslash and a line break before the next byte.
        const std::size_t start = one.find_first_not_of(" \t\r\n\\");
        if (start == std::string_view::npos) continue;
        const auto byte = hexNumber(trimmed(one.substr(start)));
        if (!byte || *byte > 0xFF) return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

/// Reads `hex:..` (REG_BINARY) and `hex(n):..`.
std::optional<RegistryValue> hexValue(std::string_view data) {
    RegistryValue value{REG_BINARY, {}};
    data.remove_prefix(3);
    if (data.starts_with('(')) {
        const auto type = hexNumber(data.substr(1, data.find(')') - 1));
        if (!type || data.find(')') == std::string_view::npos) return std::nullopt;
        value.type = *type;
        data.remove_prefix(data.find(')') + 1);
    }
    if (!data.starts_with(':')) return std::nullopt;
    auto bytes = hexBytes(data.substr(1));
    if (!bytes) return std::nullopt;
    value.data = std::move(*bytes);
    return value;
}

std::optional<RegistryValue> parsed(std::string_view data) {
    constexpr std::string_view kDword = "dword:";
    if (data.starts_with('"')) {
        RegistryValue value{REG_SZ, {}};
        if (!takeQuoted(data, value.data) || !data.empty()) return std::nullopt;
        value.data += '\0';
        return value;
    }
    if (data.starts_with(kDword)) {
        const auto number = hexNumber(data.substr(kDword.size()));
        if (!number) return std::nullopt;
        RegistryValue value{REG_DWORD, std::string(sizeof *number, '\0')};
        base::store(value.data.data(), *number);
        return value;
    }
    if (data.starts_with("hex")) return hexValue(data);
    return std::nullopt;
}

void appendHex(std::string& out, std::uint32_t number, std::size_t digits) {
    for (std::size_t i = digits; i-- > 0;) out += "0123456789abcdef"[number >> (4 * i) & 0xF];
}

/// Only a text without control characters and with one terminator can stand in quotes.
bool isPlainText(const RegistryValue& value) {
    if (value.type != REG_SZ || value.data.empty() || value.data.back() != '\0') return false;
    for (const char c : std::string_view(value.data).substr(0, value.data.size() - 1))
        if (static_cast<unsigned char>(c) < ' ') return false;
    return true;
}

std::string printed(const RegistryValue& value) {
    if (isPlainText(value))
        return quoted(std::string_view(value.data).substr(0, value.data.size() - 1));
    std::string text;
    if (value.type == REG_DWORD && value.data.size() == sizeof(std::uint32_t)) {
        text = "dword:";
        appendHex(text, base::load<std::uint32_t>(value.data.data()), 8);
        return text;
    }
    text = "hex";
    if (value.type != REG_BINARY) {
        char digits[8];
        const auto end = std::to_chars(digits, digits + sizeof digits, value.type, 16).ptr;
        text.append("(").append(digits, end).append(")");
    }
    text += ':';
    const std::size_t start = text.size();
    for (const char c : value.data) {
        if (text.size() > start) text += ',';
        appendHex(text, static_cast<unsigned char>(c), 2);
    }
    return text;
}

}  // namespace

RegistryText::RegistryText(std::string_view bytes)
    : text_(kSyntax, bytes.empty() ? kFirstLine : bytes) {}

std::optional<RegistryValue> RegistryText::value(std::string_view key,
                                                 std::string_view name) const {
    const std::string* line = text_.find(folded(key), "=" + folded(name));
    std::string found;
    std::string_view data;
    if (!line || !splitValueLine(*line, found, data)) return std::nullopt;
    return parsed(data);
}

bool RegistryText::set(std::string_view key, std::string_view name, const RegistryValue& value) {
    std::string line = name.empty() ? "@" : quoted(name);
    line += '=';
    line += printed(value);
    return text_.put(folded(key), "[" + std::string(key) + "]", "=" + folded(name), line);
}

}  // namespace toolbox::platform::posix
