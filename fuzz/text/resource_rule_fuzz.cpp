// The rules of a validated text are the same again after they are written into a resource text, and
// they judge texts as a plain reading of them does; a set holds the characters that it lists. The
// limits of a number's rule enclose what it accepts.
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

using Texts = std::vector<std::string>;

struct Rules {
    int bits = 0;
    std::string message = "default %1";
    std::string initial;
    int least = -1;
    int most = -1;
    std::string valid;
    std::string invalid;
    Texts forbidden;

    bool operator==(const Rules&) const = default;

    /// The resource text that says the same.
    [[nodiscard]] std::string written() const {
        const auto number = [](int n) { return n == -1 ? "" : std::to_string(n); };
        std::string text = "TVSTRING|" + (bits & TvString::HasMessage ? message : "") + '|' +
                           number(least) + '|' + number(most) + '|' + initial + '|' + valid + '|' +
                           invalid;
        for (const std::string& value : forbidden) text += '|' + value;
        return text;
    }
    /// What neither set refuses of a text.
    [[nodiscard]] std::string kept(std::string text) const {
        const TvCharSet allowed((CString(valid))), refused((CString(invalid)));
        std::erase_if(text, [&](char c) {
            return (!valid.empty() && !allowed.charIsInSet(c)) || refused.charIsInSet(c);
        });
        return text;
    }
    [[nodiscard]] int broken(const std::string& text) const {
        const auto length = static_cast<int>(text.size());
        int rules = 0;
        if (least != -1 && length < least) rules |= TvString::MinLength;
        if (most != -1 && length > most) rules |= TvString::MaxLength;
        // With both sets, neither is checked.
        if ((valid.empty() || invalid.empty()) && kept(text) != text)
            rules |= valid.empty() ? TvString::InvalidChars : TvString::ValidChars;
        if (std::ranges::count(forbidden, text) > 0) rules |= TvString::ForbiddenValues;
        return rules;
    }
};

/// The library's reading, through either kind of text.
template <class Text>
std::optional<Rules> parsed(unsigned int id) {
    std::array<Text, 4> texts;
    Rules rules;
    CArray<Text> forbidden;
    rules.bits = TvStringParseResStr(id, &texts[0], &texts[1], &rules.least, &rules.most, &texts[2],
                                     &texts[3], &forbidden);
    if (rules.bits == 0) return {};
    rules.message = texts[0].str();
    rules.initial = texts[1].str();
    rules.valid = texts[2].str();
    rules.invalid = texts[3].str();
    for (const Text& value : forbidden) rules.forbidden.push_back(value.str());
    return rules;
}

constexpr unsigned int kRule = 1;
constexpr unsigned short kRange = 2;

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
    const int broken = rules.broken(text);
    char failed = -1;
    CString message("untouched");
    require(field.isValid(&message, static_cast<const CString*>(nullptr), &failed) == !broken);
    require(static_cast<unsigned char>(failed) == broken);
    require(broken || message.str() == "untouched");

    field.removeInvalidChars();
    require(field.value().str() == rules.kept(text));
}

void checkRules(toolbox::testing::FakedTexts& texts, const std::string& resource,
                const std::string& text) {
    texts.strings.put(kRule, resource);
    const std::optional<Rules> rules = parsed<CString>(kRule);
    require(parsed<RWCString>(kRule) == rules);
    if (!rules) {
        require(TvString(kRule).rules() == 0);
        return;
    }
    checkText(*rules, text);
    texts.strings.put(kRule, rules->written());
    require(parsed<CString>(kRule) == rules);
}

/// What is accepted has no gap, and what is refused is told.
void checkRange(toolbox::testing::FakedTexts& texts, const std::string& resource) {
    texts.strings.put(kRange, resource);
    std::string accepted;
    for (double x : {-1e300, -1000.0, -1.0, 0.0, 0.5, 1.0, 99.0, 1e6, 1e300}) {
        texts.prompt.boxes.clear();
        const bool accepts = GMSG::checkDouble(x, kRange) != 0;
        require(texts.prompt.boxes.size() == (accepts || resource.empty() ? 0 : 1));
        if (accepted.empty() || accepts != (accepted.back() == 'y'))
            accepted += accepts ? 'y' : 'n';
    }
    require(accepted.size() < 3 || accepted == "nyn");
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
    static int module;
    GMSG::setInstance(&module);
    checkSet(resource, text);
    checkRules(texts, resource, text);
    checkRange(texts, resource);
    return 0;
}
