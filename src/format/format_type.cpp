// What the kinds of formats share: the root class, names for users, the saved form.
#include "format/format_type.h"

#include <algorithm>
#include <charconv>

#include "toolbox/platform.h"

FormatType::~FormatType() = default;

RWCString FormatType::getTypeName(HWND) const {
    return {};
}

namespace toolbox::format {
namespace {

constexpr std::size_t kColumns = 4;

HINSTANCE moduleOf([[maybe_unused]] HWND window) {
#if defined(_WIN32)
    if (window) return reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE));
#endif
    return nullptr;
}

}  // namespace

RWCString typeName(HWND window, unsigned int id) {
    char name[99];
    platform::current().strings->load(moduleOf(window), id, platform::Language::system, name,
                                      sizeof name);
    return RWCString(name);
}

void saveNumber(std::string& out, int number) {
    char digits[12];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    if (count < kColumns) out.append(kColumns - count, ' ');
    out.append(digits, count) += '-';
}

void saveJustify(std::string& out, Justification justify) {
    out += justify == Left ? 'L' : 'R';
}

std::optional<int> SavedTextReader::number() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\v\f\r"), rest_.size()));
    const std::string_view field = rest_.substr(0, kColumns);
    // from_chars takes no plus sign.
    const std::size_t plus = field.starts_with('+') && !field.starts_with("+-") ? 1 : 0;
    int value = 0;
    const auto [end, error] =
        std::from_chars(field.data() + plus, field.data() + field.size(), value);
    if (error != std::errc()) return std::nullopt;
    rest_.remove_prefix(static_cast<std::size_t>(end - field.data()));
    if (!rest_.starts_with('-')) return std::nullopt;
    rest_.remove_prefix(1);
    return value;
}

std::optional<char> SavedTextReader::letter() {
    if (rest_.empty()) return std::nullopt;
    return rest_.front();
}

RWCString saveColumn(const FormatType& format) {
    std::string text;
    saveNumber(text, format.getWidth());
    saveJustify(text, format.getJustify());
    return text;
}

int restoreColumn(FormatType& format, const RWCString& text) {
    SavedTextReader reader(text);
    const auto width = reader.number();
    const auto letter = width ? reader.letter() : std::nullopt;
    if (!letter) return 0;
    const int widthDone = format.setWidth(*width);
    return restoreJustify(format, *letter) && widthDone;
}

int restoreJustify(FormatType& format, char letter) {
    if (letter == 'L') return format.setJustify(Left);
    if (letter == 'R') return format.setJustify(Right);
    return 0;
}

}  // namespace toolbox::format
