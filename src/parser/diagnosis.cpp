// What is wrong with a formula, in words.
#include <iterator>

#include "parser/formula.h"
#include "toolbox/parser.h"

namespace toolbox {
namespace {

struct FaultText {
    FormulaFault fault;
    const char* french;
    const char* english;
};

constexpr FaultText kFaultTexts[] = {
    {FormulaFault::none, "", ""},
    {FormulaFault::empty, "La formule est vide.", "The formula is empty."},
    {FormulaFault::badCharacter, "Ce caract\350re n'a pas sa place dans une formule.",
     "This character has no place in a formula."},
    {FormulaFault::badNumber,
     "Un nombre a au moins un chiffre, au plus un point et au plus trois chiffres d'exposant.",
     "A number has at least one digit, at most one point and at most three digits of exponent."},
    {FormulaFault::numberOutOfRange, "Ce nombre est trop grand ou trop petit.",
     "This number is too large or too small."},
    {FormulaFault::unknownName, "Ni une fonction, ni une cellule de A1 \340 J10.",
     "Neither a function nor a cell from A1 to J10."},
    {FormulaFault::operandExpected, "Il manque une valeur ici.", "A value is missing here."},
    {FormulaFault::operatorExpected, "Il manque un op\351rateur ici.",
     "An operator is missing here."},
    {FormulaFault::parenthesisExpected, "Une fonction est suivie d'une parenth\350se ouvrante.",
     "A function is followed by an opening parenthesis."},
    {FormulaFault::unopened, "Cette parenth\350se n'a pas \351t\351 ouverte.",
     "This parenthesis was not opened."},
    {FormulaFault::unclosed, "Cette parenth\350se n'est pas ferm\351e.",
     "This parenthesis is not closed."},
    {FormulaFault::cellExpected, "Une plage va d'une cellule \340 une autre.",
     "A range goes from one cell to another."},
    {FormulaFault::badRange,
     "Une plage descend une seule colonne ou suit une seule ligne vers la droite.",
     "A range runs down one column or to the right along one row."},
    {FormulaFault::tooDeep, "La formule a trop de parties ouvertes.",
     "The formula has too many open parts."},
    {FormulaFault::decimalComma, "Les d\351cimales suivent un point\240: 1.5 et non 1,5.",
     "Decimals follow a point: 1.5, not 1,5."},
};
static_assert(std::size(kFaultTexts) == static_cast<std::size_t>(FormulaFault::decimalComma) + 1);

}  // namespace

FormulaDiagnosis diagnoseFormula(const char* text) {
    if (!text) return {CellKind::text, FormulaFault::empty, 0};
    parser::Emitter none({});
    const parser::Parsed parsed = parser::parseFormula(text, parser::kNoCells, none);
    return {parsed.kind, parsed.fault, parsed.position};
}

const char* formulaFaultText(FormulaFault fault, int language) {
    for (const FaultText& known : kFaultTexts)
        if (known.fault == fault) return language == 1 ? known.french : known.english;
    return "";
}

}  // namespace toolbox
