// Texts of controls, without any window.
#include "dialog/controls/control_texts.h"

#include <algorithm>

#include "base/trimmed.h"

namespace toolbox::controls {

TipParts tipParts(std::string_view text) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return {std::string(text), std::string(text)};
    return {std::string(base::trimmed(text.substr(0, end), '\r')),
            std::string(text.substr(end + 1))};
}

std::vector<std::string> entriesOf(std::string_view text) {
    std::vector<std::string> entries;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('|'), text.size());
        if (end > 0) entries.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return entries;
}

bool isInsertionAtEnd(const FieldText& before, const FieldText& after) {
    const std::size_t length = after.text.size();
    if (after.from != length || after.to != length) return false;  // the caret is elsewhere
    if (before.to != before.text.size()) return false;
    return length > before.from &&
           before.text.compare(0, before.from, after.text, 0, before.from) == 0;
}

std::vector<std::string> withNewest(std::vector<std::string> entries, const std::string& newest,
                                    std::size_t most) {
    std::erase(entries, newest);
    entries.insert(entries.begin(), newest);
    if (entries.size() > most) entries.resize(most);
    return entries;
}

bool canBeKept(std::string_view text) {
    constexpr std::size_t kMost = 1023;
    if (text.empty() || text.size() > kMost || base::trimmed(text, " \t") != text) return false;
    const char first = text.front();
    if (text.size() > 1 && first == text.back() && (first == '"' || first == '\'')) return false;
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return c == '\0' || c == '\r' || c == '\n'; });
}

std::string withoutMnemonics(std::string_view text) {
    std::string out;
    for (const char c : text) out.append(c == '&' ? 2 : 1, c);
    return out;
}

}  // namespace toolbox::controls
