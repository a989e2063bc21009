// Parses the text of file types and completes names by them. Patterns are matched by going back to
// the last '*' only, so the time is bounded by the product of the lengths.
#include "dialog/pickers/file_filters.h"

#include <algorithm>

#include "base/trimmed.h"
#include "base/windows1252.h"
#include "dialog/pickers/folders.h"

namespace toolbox::pickers {
namespace {

/// The parts between separators, without the blanks around each.
std::vector<std::string_view> partsOf(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(base::trimmed(text.substr(0, end)));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

bool hasEmpty(const std::vector<std::string_view>& parts) {
    return std::ranges::any_of(parts, &std::string_view::empty);
}

bool isSame(char a, char b) {
    return base::upper1252(a) == base::upper1252(b);
}

bool standsForAll(std::string_view pattern) {
    return pattern == "*" || pattern == "*.*";
}

/// The "tbf" of "*.tbf"; empty for a pattern that is not as simple.
std::string_view extensionOf(std::string_view pattern) {
    if (!pattern.starts_with("*.")) return {};
    pattern.remove_prefix(2);
    return pattern.find_first_of("*?") == std::string_view::npos ? pattern : std::string_view();
}

bool isSameText(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, isSame);
}

bool hasExtensionOfAType(std::string_view name, const std::vector<FileFilter>& filters) {
    return std::ranges::any_of(filters, [&](const FileFilter& filter) {
        return std::ranges::any_of(filter.patterns, [&](const CString& pattern) {
            return !standsForAll(pattern.view()) && matchesPattern(name, pattern.view());
        });
    });
}

/// What a name without extension gets under one type.
std::string_view extensionFor(const FileFilter& type, std::string_view otherwise) {
    std::string_view first;
    for (const CString& pattern : type.patterns) {
        const std::string_view own = extensionOf(pattern.view());
        if (!own.empty() && isSameText(own, otherwise)) return otherwise;
        if (first.empty()) first = own;
    }
    return first.empty() ? otherwise : first;
}

}  // namespace

std::optional<std::vector<FileFilter>> parseFilters(std::string_view text) {
    text = text.substr(0, text.find_last_not_of("| ") + 1);
    const std::vector<std::string_view> parts = partsOf(text, '|');
    if (parts.size() % 2 != 0 || hasEmpty(parts)) return std::nullopt;
    std::vector<FileFilter> filters;
    for (std::size_t i = 0; i < parts.size(); i += 2) {
        const std::vector<std::string_view> patterns = partsOf(parts[i + 1], ';');
        if (hasEmpty(patterns)) return std::nullopt;
        filters.push_back({CString(parts[i]), {patterns.begin(), patterns.end()}});
    }
    return filters;
}

std::string systemFilter(const std::vector<FileFilter>& filters) {
    std::string out;
    for (const FileFilter& filter : filters) {
        out.append(filter.name.view()).push_back('\0');
        for (const CString& pattern : filter.patterns) {
            if (&pattern != &filter.patterns.front()) out.push_back(';');
            out.append(pattern.view());
        }
        out.push_back('\0');
    }
    if (!out.empty()) out.push_back('\0');
    return out;
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
    if (standsForAll(pattern)) return true;
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;  // the last '*' passed
    std::size_t resume = 0;                     // where its text ends so far
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            resume = at;
        } else if (in < pattern.size() && (pattern[in] == '?' || isSame(pattern[in], name[at]))) {
            ++in;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

std::string withExtension(const std::string& name, const std::vector<FileFilter>& filters,
                          int chosen, std::string_view extension) {
    const std::string_view file = fileNameOf(name);
    if (file.empty() || hasExtensionOfAType(file, filters)) return name;
    const auto index = static_cast<std::size_t>(chosen);
    const FileFilter* const type = index < filters.size() ? &filters[index] : nullptr;
    const std::size_t point = file.rfind('.');
    const bool hasOwn = point != std::string_view::npos && point > 0 && point + 1 < file.size();
    if (type && hasOwn && std::ranges::any_of(type->patterns, standsForAll, &CString::view))
        return name;
    const std::string_view added = type ? extensionFor(*type, extension) : extension;
    if (added.empty()) return name;
    if (!hasOwn || !isSameText(file.substr(point + 1), added))
        return name.substr(0, name.find_last_not_of('.') + 1) + "." + std::string(added);
    return name;
}

}  // namespace toolbox::pickers
