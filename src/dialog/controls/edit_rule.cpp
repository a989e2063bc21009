// The rule of a field is a table of characters. Leaving characters out of a pasted text is
// harmless, but out of a number it makes another number: that is taken whole or not at all.
#include "dialog/controls/edit_rule.h"

#include "base/trimmed.h"
#include "toolbox/text.h"

namespace toolbox::controls {
namespace {

constexpr std::string_view kAround = " \t\r\n\v\f\xA0";

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

std::size_t place(char c) {
    return static_cast<unsigned char>(c);
}

}  // namespace

EditRule::EditRule() {
    for (std::size_t i = 0; i < allowed_.size(); ++i)
        allowed_[i] = !isControl(static_cast<char>(i));
}

EditRule EditRule::ofText(const TvString& rule) {
    EditRule made;
    TvString sieve(rule);
    for (std::size_t i = 1; i < made.allowed_.size(); ++i) {
        const char one[] = {static_cast<char>(i), '\0'};
        sieve = one;
        sieve.removeInvalidChars();
        if (sieve.value().empty()) made.allowed_[i] = false;
    }
    return made;
}

EditRule EditRule::ofNumber(const Allows& allows, const Allows& allowsInFormula) {
    EditRule made;
    for (std::size_t i = 0; i < made.allowed_.size(); ++i) {
        const char c = static_cast<char>(i);
        made.allowed_[i] = !isControl(c) && allows && allows(c);
        made.inFormula_[i] = !isControl(c) && allowsInFormula && allowsInFormula(c);
    }
    made.isNumber_ = true;
    return made;
}

bool EditRule::mayType(std::string_view before, char c) const {
    if (allowed_[place(c)]) return true;
    const bool startsFormula = c == '=' && base::trimmed(before).empty();
    return (startsFormula || base::trimmed(before).starts_with('=')) && inFormula_[place(c)];
}

std::optional<std::string> EditRule::pasted(std::string_view text, const Insertion& where,
                                            std::string_view units) const {
    text = text.substr(0, text.find('\0'));
    if (isNumber_) return pastedNumber(text, where, units);
    if (!where.isMultiLine) text = text.substr(0, text.find_first_of("\r\n"));
    std::string kept;
    for (const char c : text) {
        if (kept.size() >= where.room) break;
        const bool isLayout = where.isMultiLine && (c == '\r' || c == '\n' || c == '\t');
        if (isLayout || allowed_[place(c)]) kept += c;
    }
    // Half a line end would show as a character.
    if (where.isMultiLine && kept.size() == where.room && kept.ends_with('\r')) kept.pop_back();
    return kept;
}

std::optional<std::string> EditRule::pastedNumber(std::string_view text, const Insertion& where,
                                                  std::string_view units) const {
    text = base::trimmed(text, kAround);
    if (!units.empty() && text.size() > units.size() && text.ends_with(units))
        text = base::trimmed(text.substr(0, text.size() - units.size()), kAround);
    if (text.size() > where.room) return std::nullopt;
    std::string whole(where.before);
    for (const char c : text) {
        if (!mayType(whole, c)) return std::nullopt;
        whole += c;
    }
    return std::string(text);
}

}  // namespace toolbox::controls
