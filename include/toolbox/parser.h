// A small spreadsheet: columns A to J and rows 1 to 10 of cells, each empty or holding a text, a
// number or a formula over the other cells.
//
//   Parser grid;
//   grid.setCell("A1", 3.0);
//   grid.setCell("A2", "sqr(A1) + 1");
//   double area = grid.getCell("A2");            // 10
//
// A formula has + - * / ^ ( ), numbers, cells (B7), sums over a part of one column or row (A1:A9)
// and the functions ABS ACOS ASIN ATAN COS COSH EXP LOG (natural) LOG10 POW10 ROUND ROUNDDOWN
// ROUNDUP SIN SINH SQR SQRT TAN TANH TRUNC. Small letters count as capitals, blanks as nothing.
// A minus sign binds tighter than ^ (-2^2 is 4) and does not follow another sign (--3 is not a
// valid formula), ^ groups to the right, ROUND(x) is ceil(x + 0.5) (2.0 gives 3), TRUNC(x) is
// floor(x), a number ends after three digits of exponent, and at most 19 parts of a formula may be
// open at a time: 17 nested parentheses around a number, for example.
//
// A division by zero gives HUGE_VAL. So does a text cell that is read; an empty cell gives 0.
// A number too large for a double, or too small for one but not zero, is not a number; the range
// between, denormals included, is the same on every system and under every locale.
//
// The grid lives as long as its Parser. All calls come from the user-interface thread. Setting and
// reading cells never throws.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/strings.h"

namespace toolbox {

namespace parser {
struct Cell;
// The size of a grid.
inline constexpr int kColumns = 10;
inline constexpr int kRows = 10;
/// By column, then row; null is an empty cell.
using CellTable = std::array<std::array<std::shared_ptr<Cell>, kRows>, kColumns>;
}  // namespace parser

/// What a cell holds.
enum class CellKind : signed char { empty = -1, text = 0, value = 1, formula = 2 };

/// A cell of a grid; both count from 0 (B7 is row 6, column 1).
struct CellPosition {
    int row = 0;  ///< from 0
    int col = 0;  ///< from 0
    bool operator==(const CellPosition&) const = default;
};

/// Why a text is not a formula.
enum class FormulaFault {
    none,
    empty,                ///< nothing but blanks
    badCharacter,         ///< a character that no formula has
    badNumber,            ///< no digit, a second point, a fourth digit of the exponent
    numberOutOfRange,     ///< no double is near it
    unknownName,          ///< neither a function nor a cell of the grid
    operandExpected,      ///< an operator, a parenthesis or the end where a value must stand
    operatorExpected,     ///< something that cannot follow a value
    parenthesisExpected,  ///< a function without its parenthesis
    unopened,             ///< a closing parenthesis without its opening one
    unclosed,             ///< the end before a closing parenthesis
    cellExpected,         ///< something other than a cell after a colon
    badRange,             ///< a range that runs backwards or is not one column or one row
    tooDeep,              ///< more open parts than are allowed
    decimalComma,         ///< a comma after a number: decimals follow a point
};

/// What diagnoseFormula() finds.
struct FormulaDiagnosis {
    /// What setCell would make of the text: text, value or formula.
    CellKind kind = CellKind::text;
    /// FormulaFault::none for a formula and a number.
    FormulaFault fault = FormulaFault::none;
    /// Bytes before the part of the text that is at fault: a malformed number or name from its
    /// start, an unclosed parenthesis (the innermost) where it opens; the text's length when
    /// something is missing at its end.
    std::size_t position = 0;
};

/// Checks a text without setting a cell. Nothing is written, no flag changes.
[[nodiscard]] TB_API FormulaDiagnosis diagnoseFormula(const char* text);

/// One sentence for a fault, in French for language 1 and in English for any other. Never null;
/// empty for FormulaFault::none. Static.
[[nodiscard]] TB_API const char* formulaFaultText(FormulaFault fault, int language);

/// The cells that a formula names, each once, in the order of the text; those of a range one by
/// one. Empty for a text that is not a formula.
[[nodiscard]] TB_API std::vector<CellPosition> cellsNamedBy(const char* text);

/// What Parser::recalculate did.
struct Recalculation {
    /// The formula cells read, each after those that it names.
    std::vector<CellPosition> order;
    /// The cells of one cycle, each naming the next and the last naming the first; empty when there
    /// is none.
    std::vector<CellPosition> cycle;
};

}  // namespace toolbox

/// A grid of cells.
///
/// Cells are given by row and column from 0, or by name ("B7", capitals only). Outside the grid
/// nothing is stored and 0 is read.
///
/// Each cell is charged to a budget in bytes, whatever it really takes: 16 for a number; for a text
/// its length without an odd last byte plus 10; for a formula the same plus 18.
class TB_API Parser {
  public:
    /// An empty grid. The budget is the address space that the process has left, less 1000, and at
    /// most 2147483647. Clears the error flag.
    Parser();
    ~Parser();
    /// The copy shares the cells that the original holds at that moment: reading a formula in one
    /// grid stores its value for both. Cells set or deleted later are each grid's own. A shared
    /// cell lives until the last grid releases it.
    Parser(const Parser& other);
    Parser& operator=(const Parser& other);

    /// Clears the error flag and replaces the cell: by a formula or a number when the text is one,
    /// else by the text unchanged, of any length. A text that is a formula or a number is turned
    /// into capitals in the caller's buffer (ASCII letters only); a constant text is left alone.
    /// When the budget does not cover the new cell, a bell and "Not enough memory to
    /// allocate cell." go to standard output and the cell stays empty; when a formula holds too
    /// many open parts, a bell and "Parser stack overflow." do and the text is a text cell. A null
    /// text changes nothing but the error flag.
    void setCell(int row, int col, char* text);
    void setCell(int row, int col, const char* text);

    /// As above, by name. A name that does not read is not refused: as much of it as reads replaces
    /// the column and row of the cell set last (at first A1), and that cell is set. Callers pass
    /// valid names.
    void setCell(const char* cellName, char* text);
    void setCell(const char* cellName, const char* text);

    /// Sets the number rounded to 8 significant digits: 1/3 is stored as 0.33333333. An infinity or
    /// not-a-number becomes a text cell.
    void setCell(int row, int col, double value);
    void setCell(const char* cellName, double value);

    // A literal 0 is a number here, and a null pointer is no text.
    template <std::integral Number>
    void setCell(int row, int col, Number value) {
        setCell(row, col, static_cast<double>(value));
    }
    template <std::integral Number>
    void setCell(const char* cellName, Number value) {
        setCell(cellName, static_cast<double>(value));
    }
    void setCell(int, int, std::nullptr_t) { setError(0); }
    void setCell(const char*, std::nullptr_t) { setError(0); }

    /// The cell's value. A formula is computed and its value stored in the cell; the formulas that
    /// it names are not: they count with their stored values, so read those first, or
    /// recalculate(). Sets the error flag when the value is HUGE_VAL. 0 for a name that does not
    /// read.
    double getCell(int row, int col);
    double getCell(const char* cellName);

    /// What is left of the budget, in bytes.
    [[nodiscard]] long getMemoryLeft() const;

    /// The error flag, one for all grids: not 0 once a value read was HUGE_VAL, until the next
    /// setCell of any grid.
    static int isError();
    static void setError(int error);

    /// What the cell holds, empty outside the grid.
    [[nodiscard]] toolbox::CellKind cellKind(int row, int col) const;
    /// The text of a text or formula cell, else the empty string.
    [[nodiscard]] CString cellText(int row, int col) const;
    // The highest column, and row, that holds a cell; 0 for an empty grid.
    [[nodiscard]] int lastColumn() const;
    [[nodiscard]] int lastRow() const;
    /// True once a cell was deleted or replaced.
    [[nodiscard]] bool isChanged() const;

    /// The cells that the cell's formula names, as cellsNamedBy.
    [[nodiscard]] std::vector<toolbox::CellPosition> cellsNamedBy(int row, int col) const;

    /// Reads (as getCell) every formula after the formulas that it names. Formulas of a cycle, and
    /// those that depend on one, are not read and keep their values; one cycle is named.
    toolbox::Recalculation recalculate();

  private:
    /// A copied grid reads its formulas again: they may name other cells than the original's, and
    /// the grid may lie where another one did.
    struct CopyIsAChange {
        CopyIsAChange() = default;
        CopyIsAChange(const CopyIsAChange&);
        CopyIsAChange& operator=(const CopyIsAChange&);
    };

    void setNumber(double value);
    void setByName(const char* cellName, const char* text, char* capitals);
    void setAt(int row, int col, const char* text, char* capitals);
    void act(const char* text, char* capitals);
    void store(toolbox::parser::Cell cell);
    void deleteCell(int col, int row);
    void lowerLastColumn();
    void lowerLastRow();
    void compute(toolbox::parser::Cell& cell) const;
    [[nodiscard]] toolbox::parser::Cell* find(int row, int col) const;

    toolbox::parser::CellTable cells_;
    int currentColumn_ = 0;
    int currentRow_ = 0;
    int lastColumn_ = 0;
    int lastRow_ = 0;
    bool changed_ = false;
    std::int32_t memoryLeft_ = 0;
    [[no_unique_address]] CopyIsAChange copyIsAChange_;
};
