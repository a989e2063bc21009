// String tables registered by the application; where its own has no text the library's stands in.
#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <string_view>

#include "platform/host.h"

namespace toolbox::platform {
namespace {

constexpr auto kSupplied = std::to_array<StringEntry>({
#define TOOLBOX_TEXT(id, french, english) {id, french, english},
#include "toolbox_texts.inc"
#undef TOOLBOX_TEXT
});

using Table = std::span<const StringEntry>;

/// Tables by handle. A handle is the address of an element, so it never moves.
std::deque<Table>& modules() {
    static std::deque<Table> tables;
    return tables;
}

Table& applicationTable() {
    static Table table;
    return table;
}

const char* textIn(Table table, unsigned int id, Language language) {
    const auto entry = std::ranges::find(table, id, &StringEntry::id);
    if (entry == table.end()) return nullptr;
    const char* wanted = language == Language::english ? entry->english : entry->french;
    const char* other = language == Language::english ? entry->french : entry->english;
    return wanted ? wanted : other;
}

const char* find(HINSTANCE module, unsigned int id, Language language) {
    if (!module) {
        const char* text = textIn(applicationTable(), id, language);
        return text ? text : textIn(kSupplied, id, language);
    }
    for (Table& table : modules())
        if (static_cast<void*>(&table) == module) return textIn(table, id, language);
    return nullptr;
}

class TableStrings final : public StringResources {
  public:
    int load(HINSTANCE module, unsigned int id, Language language, char* out, int size) override {
        if (size <= 0) return 0;
        const char* text = find(module, id, language);
        const std::string_view found = text ? text : "";
        const std::size_t kept = std::min(found.size(), static_cast<std::size_t>(size) - 1);
        std::memcpy(out, found.data(), kept);
        out[kept] = '\0';
        return static_cast<int>(kept);
    }
};

}  // namespace

HINSTANCE registerStrings(std::span<const StringEntry> entries) {
    Table& table = modules().emplace_back(entries);
    return reinterpret_cast<HINSTANCE>(&table);
}

void setApplicationStrings(std::span<const StringEntry> entries) {
    applicationTable() = entries;
}

HINSTANCE libraryModule() {
    return nullptr;
}

StringResources& hostStrings() {
    static TableStrings strings;
    return strings;
}

}  // namespace toolbox::platform
