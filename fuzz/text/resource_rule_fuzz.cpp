// The rules of a validated text are those that a plain split of the resource text gives, and they
// judge texts as a plain reading of them does; its sets hold what lists of intervals hold. The
// limits of a number's rule judge as two numbers do.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "require.h"
#include "support/text_fakes.h"
#include "toolbox/text.h"

namespace {

/// A set of characters another way: a list of intervals, read off the front of the definition.
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

using Texts = std::vector<std::string>;

Texts split(const std::string& text, char separator) {
    Texts fields(1);
    for (const char c : text) {
        if (c == separator)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

/// Blanks, a sign and digits; nothing else, and nothing that an int does not hold.
std::optional<int> decimal(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    std::string digits = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    const bool negative = digits[0] == '-';
    if (negative || digits[0] == '+') digits.erase(0, 1);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) return {};
    double value = 0;  // exact as far as it matters
    for (const char c : digits) value = value * 10 + (c - '0');
    if (negative) value = -value;
    if (value < -2147483648.0 || value > 2147483647.0) return {};
    return static_cast<int>(value);
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

    /// In the order in which a message names the active ones.
    [[nodiscard]] Texts arguments() const {
        Texts texts;
        if (bits & TvString::MinLength) texts.push_back(std::to_string(least));
        if (bits & TvString::MaxLength) texts.push_back(std::to_string(most));
        if (!valid.empty()) texts.push_back(SetModel(valid).inWords("to", "and"));
        if (!invalid.empty()) texts.push_back(SetModel(invalid).inWords("to", "and"));
        texts.insert(texts.end(), forbidden.begin(), forbidden.end());
        return texts;
    }

    [[nodiscard]] int broken(const std::string& text) const {
        const SetModel allowed(valid);
        const SetModel refused(invalid);
        const auto length = static_cast<int>(text.size());
        int rules = 0;
        if (least != -1 && length < least) rules |= TvString::MinLength;
        if (most != -1 && length > most) rules |= TvString::MaxLength;
        for (const char c : text) {
            if (!valid.empty() && invalid.empty() && !allowed.has(c)) rules |= TvString::ValidChars;
            if (!invalid.empty() && valid.empty() && refused.has(c))
                rules |= TvString::InvalidChars;
        }
        if (std::ranges::count(forbidden, text) > 0) rules |= TvString::ForbiddenValues;
        return rules;
    }

    [[nodiscard]] std::string cleaned(const std::string& text) const {
        const SetModel allowed(valid);
        const SetModel refused(invalid);
        std::string kept;
        for (const char c : text)
            if ((valid.empty() || allowed.has(c)) && !refused.has(c)) kept += c;
        return kept;
    }
};

std::optional<Rules> modelOf(const std::string& resource) {
    Texts fields = split(resource, '|');
    if (fields[0] != "TVSTRING") return {};
    fields.resize(std::max<std::size_t>(fields.size(), 7));
    Rules rules;
    const auto takeText = [&](std::string& out, const std::string& field, int bit) {
        if (field.empty()) return;
        out = field;
        rules.bits |= bit;
    };
    const auto takeNumber = [&](int& out, const std::string& field, int bit) {
        const auto number = decimal(field);
        out = number.value_or(-1);
        if (number) rules.bits |= bit;
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

/// The first place of each number in turn gets its text.
std::string filled(std::string message, const Texts& arguments) {
    for (std::size_t n = 1;; ++n) {
        const std::string place = "%" + std::to_string(n);
        const std::size_t at = message.find(place);
        if (at == std::string::npos) return message;
        if (n > arguments.size()) continue;
        message = message.substr(0, at) + arguments[n - 1] + message.substr(at + place.size());
    }
}

constexpr unsigned int kRule = 1;
constexpr unsigned short kRange = 2;

void checkSet(const std::string& definition, const std::string& text) {
    const TvCharSet set((CString(definition)));
    const SetModel model(definition);
    require(set.isValid() == model.valid);
    require(set.getDetailedCharsSet() == model.members());
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
    require(field.isValid(&message, static_cast<const CString*>(nullptr), &failed) ==
            (broken == 0));
    require(static_cast<unsigned char>(failed) == broken);
    require(message.str() == (broken ? filled(rules.message, rules.arguments()) : "untouched"));

    field.removeInvalidChars();
    require(field.value().str() == rules.cleaned(text));
}

void checkRules(toolbox::testing::FakedTexts& texts, const std::string& resource,
                const std::string& text) {
    texts.strings.put(kRule, resource);
    std::optional<Rules> rules = modelOf(resource);
    // A text with the tag but not one rule counts as one that failed to parse.
    if (rules && rules->bits == 0) rules.reset();
    require(parsed<CString>(kRule) == rules);
    require(parsed<RWCString>(kRule) == rules);
    if (!rules) {
        require(TvString(kRule).rules() == 0);
        return;
    }
    checkText(*rules, text);
}

/// The fields between commas, of which several in a row count as one.
void checkRange(toolbox::testing::FakedTexts& texts, const std::string& resource) {
    texts.strings.put(kRange, resource);
    Texts fields = split(resource.substr(0, 257), ',');
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
