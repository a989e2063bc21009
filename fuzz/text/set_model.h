// A set of characters another way: a list of intervals, read off the front of the definition.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolbox/char_sets.h"

struct SetModel {
    std::vector<std::pair<signed char, signed char>> items;
    bool valid = true;

    explicit SetModel(std::string_view rest) {
        while (!rest.empty() && valid) {
            const auto at = [&](std::size_t i) { return static_cast<signed char>(rest[i]); };
            if (!rest.starts_with("[[")) {
                items.emplace_back(at(0), at(0));
                rest.remove_prefix(1);
            } else if (rest.size() >= 6 && rest.substr(4, 2) == "]]" && at(2) <= at(3)) {
                items.emplace_back(at(2), at(3));
                rest.remove_prefix(6);
            } else {
                valid = false;
            }
        }
    }

    [[nodiscard]] bool has(char c) const {
        return std::ranges::any_of(items, [code = static_cast<signed char>(c)](const auto& item) {
            return item.first <= code && code <= item.second;
        });
    }

    [[nodiscard]] std::string members() const {
        std::string all;
        for (const auto& [first, last] : items)
            for (int c = first; c <= last; ++c) all += static_cast<char>(c);
        return all;
    }

    /// The set in words, with `to` inside intervals and `word` in place of the last comma.
    [[nodiscard]] std::string inWords(const std::string& to, const std::string& word) const {
        const auto quoted = [](signed char c) {
            return "'" + TvCharSet::getVisibleChar(static_cast<char>(c)).str() + "'";
        };
        std::string text;
        for (const auto& [first, last] : items) {
            if (!text.empty()) text += ", ";
            text += quoted(first);
            if (first != last) text.append(" ").append(to).append(" ").append(quoted(last));
        }
        const std::size_t comma = text.find_last_of(',');
        if (comma == std::string::npos) return text;
        return text.substr(0, comma) + " " + word + text.substr(comma + 1);
    }
};
