// A formula in its compiled form: steps for a stack machine, run each time the cell is read.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "parser/lexer.h"
#include "toolbox/parser.h"

namespace toolbox::parser {

/// What a step does with the value on top of the machine's stack and one operand.
enum class Operation : std::uint8_t { load, add, subtract, multiply, divide, power };
/// Where the operand comes from; an operand from the stack is its top, and the other value is below
/// it.
enum class Operand : std::uint8_t { number, cell, stack };

using StepCode = std::uint8_t;
constexpr StepCode stepCode(Operation operation, Operand operand) {
    return static_cast<StepCode>(static_cast<unsigned>(operation) * 3U +
                                 static_cast<unsigned>(operand));
}
inline constexpr StepCode kLoadNumber = stepCode(Operation::load, Operand::number);
inline constexpr StepCode kLoadCell = stepCode(Operation::load, Operand::cell);
inline constexpr StepCode kNegate = 18;
inline constexpr StepCode kSumRange = 19;
inline constexpr StepCode kApply = 20;  ///< the function is kApply + its number

struct Step {
    double number;  ///< operand of a number step
    StepCode code;
    CellRef cell;  ///< operand of a cell step, first cell of a range
    CellRef last;  ///< last cell of a range
};
static_assert(sizeof(Step) <= 16);

/// True for steps that read a cell or a range.
constexpr bool namesCell(const Step& step) {
    if (step.code >= kNegate) return step.code == kSumRange;
    return step.code % 3U == static_cast<unsigned>(Operand::cell);
}

/// A cell that is not empty. Several tables may share it.
struct Cell {
    CellKind kind = CellKind::text;
    double value = HUGE_VAL;    ///< of a formula: as last computed; of a text: HUGE_VAL
    std::string text;           ///< of a text: as given; of a formula: in capitals
    std::vector<Step> program;  ///< of a formula

    // Of a formula: the count of changes at which, and the grid in which, it was computed.
    std::uint64_t computedAt = 0;
    const void* computedIn = nullptr;
};

/// The value of a cell inside a formula.
inline double cellValue(const CellTable& cells, CellRef at) {
    const Cell* cell = cells[at.col][at.row].get();
    return cell ? cell->value : 0.0;
}

/// The sum of a range's cells, which are in one column or in one row, first before last.
double sumRange(const CellTable& cells, CellRef first, CellRef last);

[[nodiscard]] inline double quotient(double left, double right) {
    return right == 0 ? HUGE_VAL : left / right;
}
double apply(Function function, double x);

/// Computes the value of a program.
double run(std::span<const Step> program, const CellTable& cells);

/// Writes steps into the room it is given, while a formula is parsed. What needs no cell becomes a
/// single number, and an operand that is one number or one cell becomes part of the step that uses
/// it.
class Emitter {
  public:
    explicit Emitter(std::span<Step> room)
        : begin_(room.data()), end_(room.data()), limit_(room.data() + room.size()) {}

    void number(double value) { append({value, kLoadNumber, {}, {}}); }
    void cell(CellRef at) { append({0, kLoadCell, at, {}}); }
    void range(CellRef first, CellRef last) { append({0, kSumRange, first, last}); }
    void negate(double result) { unary(kNegate, result); }
    void apply(Function function, double result) {
        unary(static_cast<StepCode>(kApply + static_cast<unsigned>(function)), result);
    }
    /// `result` is what the operation gives now: the constant when both sides are.
    void binary(Operation operation, double result) {
        if (overflowed_) return;
        if (end_[-1].code > kLoadCell) {
            append({0, stepCode(operation, Operand::stack), {}, {}});
        } else if (end_[-1].code == kLoadNumber && end_ - begin_ > 1 &&
                   end_[-2].code == kLoadNumber) {
            --end_;
            end_[-1].number = result;
        } else {
            end_[-1].code = stepCode(operation, static_cast<Operand>(end_[-1].code));
        }
    }

    /// True when the room did not suffice; the steps are then useless.
    [[nodiscard]] bool overflowed() const { return overflowed_; }
    [[nodiscard]] std::span<const Step> steps() const { return {begin_, end_}; }

  private:
    void append(const Step& step) {
        if (end_ == limit_) overflowed_ = true;
        if (!overflowed_) *end_++ = step;
    }
    void unary(StepCode code, double result) {
        if (overflowed_) return;
        if (end_[-1].code == kLoadNumber)
            end_[-1].number = result;
        else
            append({0, code, {}, {}});
    }

    Step* begin_;
    Step* end_;
    Step* limit_;
    bool overflowed_ = false;
};

}  // namespace toolbox::parser
