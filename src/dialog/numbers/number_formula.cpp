// The formula grid's parser over an empty grid. Commas become points beforehand, so that places
// stay.
#include "dialog/numbers/number_formula.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/entered_number.h"
#include "dialog/numbers/number_messages.h"
#include "parser/formula.h"
#include "parser/lexer.h"
#include "text/text_resources.h"

namespace toolbox::numbers {
namespace {

CString faultAt(std::size_t position, std::string_view what) {
    return sentence(Sentence::formulaFault, {std::to_string(position + 1), what});
}

CString faultText(FormulaFault fault) {
    // The grid's sentence speaks of cells.
    if (fault == FormulaFault::unknownName) return sentence(Sentence::formulaUnknownName);
    return formulaFaultText(fault, GMSG::language);
}

/// Where a formula names its first cell; its length when it names none.
std::size_t firstCell(const std::string& formula) {
    parser::Lexer lexer(formula.c_str());
    for (;;) {
        const parser::Token token = lexer.next();
        if (token == parser::Token::cell) return lexer.position();
        if (token == parser::Token::eol || token == parser::Token::bad) return formula.size();
    }
}

/// A comma between digits that could separate thousands, with the number around it.
CString commaMessage(std::string_view formula, std::size_t comma) {
    const std::size_t before = formula.find_last_not_of("0123456789", comma - 1);
    const std::size_t first = before == std::string_view::npos ? 0 : before + 1;
    constexpr std::size_t kThousand = 4;  // a comma and three digits
    const std::string_view number = formula.substr(first, comma + kThousand - first);
    return entryMessage({base::EntryFault::twoReadings, comma - first}, number, "", "");
}

/// The first such comma; the length when there is none.
std::size_t commaWithTwoReadings(std::string_view formula) {
    for (std::size_t at = 0; at < formula.size(); ++at)
        if (formula[at] == ',' && base::separatesThousands(formula, at)) return at;
    return formula.size();
}

struct Computed {
    double value = 0;
    CString why;  ///< empty for a result
};

/// `offset` bytes precede the formula in the text that was entered.
Computed compute(std::string formula, std::size_t offset, bool oneReading) {
    const std::size_t comma = oneReading ? commaWithTwoReadings(formula) : formula.size();
    if (comma < formula.size()) return {0, commaMessage(formula, comma)};
    std::ranges::replace(formula, ',', '.');
    const std::size_t end = formula.find('\0');  // the parser would take it for the end
    if (end != std::string::npos) formula[end] = '\1';
    const std::size_t cell = firstCell(formula);
    if (cell < formula.size())
        return {0, faultAt(offset + cell, sentence(Sentence::formulaNamesCell).view())};
    parser::Emitter none({});
    const parser::Parsed parsed = parser::parseFormula(formula.c_str(), parser::kNoCells, none);
    if (parsed.kind == CellKind::text)
        return {0, faultAt(offset + parsed.position, faultText(parsed.fault).view())};
    if (!std::isfinite(parsed.value) || std::fabs(parsed.value) >= HUGE_VAL)
        return {0, sentence(Sentence::formulaNoResult)};
    return {parsed.value + 0.0, {}};  // not a negative zero
}

}  // namespace

bool isFormula(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first != std::string_view::npos && text[first] == '=';
}

bool computeFormula(std::string_view text, bool oneReading, double& result, CString* why) {
    const std::size_t start = text.find('=') + 1;
    Computed computed = compute(std::string(text.substr(start)), start, oneReading);
    if (!computed.why.empty()) {
        if (why) *why = computed.why;
        return false;
    }
    result = computed.value;
    return true;
}

CString resultText(double result) {
    constexpr int kDigits = 15;
    char text[40];
    const char* const end =
        std::to_chars(text, text + sizeof text, result, std::chars_format::scientific, kDigits - 1)
            .ptr;
    return CString(text, static_cast<std::size_t>(end - text));
}

}  // namespace toolbox::numbers
