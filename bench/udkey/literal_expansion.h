// Token expansion written down word by word from its rule: what the library's result is held
// against, and the slow end of the comparison.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace literal {

/// `isToken(word)` tells valid tokens, `valueOf(word)` gives their texts.
template <class IsToken, class ValueOf>
std::string expand(const std::string& text, IsToken isToken, ValueOf valueOf) {
    std::string result = text;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t start = text.find_first_not_of('$', at);
        if (start == std::string::npos) break;
        const std::size_t end = std::min(text.find('$', start), text.size());
        at = end;
        const std::string word = text.substr(start, end - start);
        if (!isToken(word)) continue;
        const std::size_t first = result.find("$" + word);
        if (first == std::string::npos) break;
        const std::size_t second = result.find('$', first + 1);
        if (second == std::string::npos) break;
        result.replace(first, second + 1 - first, valueOf(word));
    }
    return result;
}

}  // namespace literal
