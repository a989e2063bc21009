// The rules of a validated text are the same again after they are written into a resource text, and
// of what breaks none of them nothing is removed; a set holds the characters that it lists.
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "require.h"
#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

constexpr unsigned int kRule = 1;

struct Rules {
    int bits = 0;
    int least = -1;
    int most = -1;
    std::array<CString, 4> texts;  ///< message, initial value, valid and invalid characters
    std::vector<std::string> forbidden;

    bool operator==(const Rules&) const = default;

    /// The resource text that says the same.
    [[nodiscard]] std::string written() const {
        const auto number = [](int n) { return n == -1 ? "" : std::to_string(n); };
        std::string text = "TVSTRING|" + (bits & TvString::HasMessage ? texts[0].str() : "") + '|' +
                           number(least) + '|' + number(most);
        for (const int i : {1, 2, 3}) text += '|' + texts[i].str();
        for (const std::string& value : forbidden) text += '|' + value;
        return text;
    }
};

std::optional<Rules> parsed() {
    Rules rules;
    CArray<CString> forbidden;
    auto& [message, initial, valid, invalid] = rules.texts;
    rules.bits = TvStringParseResStr(kRule, &message, &initial, &rules.least, &rules.most, &valid,
                                     &invalid, &forbidden);
    if (rules.bits == 0) return {};
    for (const CString& value : forbidden) rules.forbidden.push_back(value.str());
    return rules;
}

/// A set of intervals of one character each, made of what a set lists, is the same set.
void checkSet(const std::string& definition, const std::string& text) {
    const TvCharSet set((CString(definition)));
    const std::string members = set.getDetailedCharsSet().str();
    std::string intervals;
    for (const char c : members) intervals += std::string("[[") + c + c + "]]";
    const TvCharSet again((CString(intervals)));
    require(again.isValid() && again.getDetailedCharsSet().str() == members);
    const auto has = [&](char c) { return members.find(c) != std::string::npos; };
    for (const char c : text.substr(0, 16)) require(set.charIsInSet(c) == has(c));
    require(set.allStringCharsAreInSet(text) == std::ranges::all_of(text, has));
    require(set.atLeastOneStringCharIsInSet(text) == std::ranges::any_of(text, has));
}

void checkText(const Rules& rules, const std::string& text) {
    TvString field(kRule);
    field = text.c_str();
    char failed = -1;
    CString message("untouched");
    const bool isValid = field.isValid(&message, static_cast<const CString*>(nullptr), &failed) != 0;
    require(isValid == (failed == 0));
    require(!isValid || message.str() == "untouched");
    field.removeInvalidChars();
    // With both sets, neither is checked.
    const bool areBothGiven = !rules.texts[2].str().empty() && !rules.texts[3].str().empty();
    require(!isValid || areBothGiven || field.value().str() == text);
    const std::string kept = field.value().str();
    field.removeInvalidChars();
    require(field.value().str() == kept);
}

}  // namespace

/// The resource text, a NUL, a text to be judged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string resource = bytes.substr(0, bytes.find('\0'));
    const std::string text = bytes.substr(std::min(size, resource.size() + 1)).c_str();
    toolbox::testing::FakedTexts texts;
    texts.strings.put(1094, "default %1");
    texts.strings.put(1095, "and");
    texts.strings.put(1097, "to");
    checkSet(resource, text);
    texts.strings.put(kRule, resource);
    const std::optional<Rules> rules = parsed();
    if (!rules) {
        require(TvString(kRule).rules() == 0);
        return 0;
    }
    checkText(*rules, text);
    texts.strings.put(kRule, rules->written());
    require(parsed() == rules);
    return 0;
}
