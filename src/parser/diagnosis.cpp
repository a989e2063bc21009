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
    {FormulaFault::badNumber, "Un nombre a au moins un chiffre.",
     "A number has at least one digit."},
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
    {FormulaFault::unclosed, "Une parenth\350se n'est pas ferm\351e.",
     "A parenthesis is not closed."},
    {FormulaFault::cellExpected, "Une plage va d'une cellule \340 une autre.",
     "A range goes from one cell to another."},
    {FormulaFault::badRange,
     "Une plage suit une seule colonne ou une seule ligne, en ordre croissant.",
     "A range runs along one column or one row, upwards."},
    {FormulaFault::tooDeep, "La formule a trop de parties ouvertes.",
     "The formula has too many open parts."},
};
static_assert(std::size(kFaultTexts) == static_cast<std::size_t>(FormulaFault::tooDeep) + 1);

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
