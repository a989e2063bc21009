// The rules of a validated text are those that a plain split of the resource text gives, and they
// judge texts as a plain reading of them does; its sets hold the characters that their intervals
// list. The limits of a number's rule judge as two numbers do.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "require.h"
#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

/// A set of characters another way: as a list of them, read off the front of the definition.
struct SetModel {
    std::string members;
    bool valid = true;

    explicit SetModel(std::string_view rest) {
        while (!rest.empty()) {
            const bool interval = rest.starts_with("[[");
            const auto at = [&](std::size_t i) { return static_cast<signed char>(rest[i]); };
            valid = !interval || (rest.size() >= 6 && rest.substr(4, 2) == "]]" && at(2) <= at(3));
            if (!valid) return;
            const std::size_t first = interval ? 2 : 0;
            for (int c = at(first); c <= at(interval ? 3 : 0); ++c) members += static_cast<char>(c);
            rest.remove_prefix(interval ? 6 : 1);
        }
    }
    [[nodiscard]] bool has(char c) const { return members.find(c) != std::string::npos; }
};

using Texts = std::vector<std::string>;

Texts split(const std::string& text, char separator, std::size_t atLeast) {
    Texts fields;
    std::istringstream rest(text);
    for (std::string field; std::getline(rest, field, separator);) fields.push_back(field);
    fields.resize(std::max(fields.size(), atLeast));
    return fields;
}

/// Blanks, a sign and digits; nothing else, and nothing that an int does not hold.
std::optional<int> decimal(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    int value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (error != std::errc() || end != text.end()) return {};
    return value;
}

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

    /// What neither set refuses of a text.
    [[nodiscard]] std::string kept(const std::string& text) const {
        const SetModel allowed(valid), refused(invalid);
        std::string all;
        for (const char c : text)
            if ((valid.empty() || allowed.has(c)) && !refused.has(c)) all += c;
        return all;
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

std::optional<Rules> modelOf(const std::string& resource) {
    const Texts fields = split(resource, '|', 7);
    if (fields[0] != "TVSTRING") return {};
    Rules rules;
    const auto takeText = [&](std::string& out, const std::string& field, int bit) {
        if (field.empty()) return;
        out = field;
        rules.bits |= bit;
    };
    const auto takeNumber = [&](int& out, const std::string& field, int bit) {
        out = decimal(field).value_or(-1);
        if (decimal(field)) rules.bits |= bit;
    };
    takeText(rules.message, fields[1], TvString::HasMessage);
    takeNumber(rules.least, fields[2], TvString::MinLength);
    takeNumber(rules.most, fields[3], TvString::MaxLength);
    takeText(rules.initial, fields[4], TvString::HasDefault);
    takeText(rules.valid, fields[5], TvString::ValidChars);
    takeText(rules.invalid, fields[6], TvString::InvalidChars);
    std::copy_if(fields.begin() + 7, fields.end(), std::back_inserter(rules.forbidden),
                 [](const std::string& field) { return !field.empty(); });
    if (!rules.forbidden.empty()) rules.bits |= TvString::ForbiddenValues;
    return rules;
}

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

void checkSet(const std::string& definition, const std::string& text) {
    const TvCharSet set((CString(definition)));
    const SetModel model(definition);
    require(set.isValid() == model.valid);
    require(set.getDetailedCharsSet() == model.members);
    const auto has = [&](char c) { return model.has(c); };
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
    std::optional<Rules> rules = modelOf(resource);
    // A text with the tag but not one rule counts as one that failed to parse.
    if (rules && rules->bits == 0) rules.reset();
    require(parsed<CString>(kRule) == rules);
    require(parsed<RWCString>(kRule) == rules);
    if (rules)
        checkText(*rules, text);
    else
        require(TvString(kRule).rules() == 0);
}

/// The fields between commas, of which several in a row count as one.
void checkRange(toolbox::testing::FakedTexts& texts, const std::string& resource) {
    texts.strings.put(kRange, resource);
    Texts fields = split(resource.substr(0, 257), ',', 0);
    std::erase(fields, "");
    fields.resize(3);
    const auto limit = [&](std::size_t field) {
        const std::size_t digits = fields[field].find_first_not_of(" \t\n\v\f\r+-");
        // What the C library takes for hexadecimal is a 0 here.
        const bool hexadecimal = digits != std::string::npos && fields[field][digits] == '0' &&
                                 (fields[field][digits + 1] | 0x20) == 'x';
        return hexadecimal ? 0.0 : std::strtod(fields[field].c_str(), nullptr);
    };
    const double least = limit(1);
    const double most = limit(2);
    for (double x : {0.0, least, most, std::nextafter(least, -HUGE_VAL),
                     std::nextafter(most, HUGE_VAL), least / 2 + most / 2}) {
        texts.prompt.boxes.clear();
        const bool accepted = fields[2].empty() ? !resource.empty() : least <= x && x <= most;
        require(GMSG::checkDouble(x, kRange) == accepted);
        require(texts.prompt.boxes.size() == (accepted || resource.empty() ? 0 : 1));
    }
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
