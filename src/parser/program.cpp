// The stack machine that computes a compiled formula.
#include "parser/program.h"

#include "parser/grammar.h"

namespace toolbox::parser {

double sumRange(const CellTable& cells, CellRef first, CellRef last) {
    double sum = cellValue(cells, first);
    while (first.row < last.row) {
        ++first.row;
        sum += cellValue(cells, first);
    }
    while (first.col < last.col) {
        ++first.col;
        sum += cellValue(cells, first);
    }
    return sum;
}

double apply(Function function, double x) {
    switch (function) {
        case Function::abs:
            return std::fabs(x);
        case Function::acos:
            return std::acos(x);
        case Function::asin:
            return std::asin(x);
        case Function::atan:
            return std::atan(x);
        case Function::cosh:
            return std::cosh(x);
        case Function::cos:
            return std::cos(x);
        case Function::exp:
            return std::exp(x);
        case Function::log10:
            return std::log10(x);
        case Function::log:
            return std::log(x);
        case Function::pow10:
            return std::pow(10.0, x);
        case Function::roundDown:
            return std::floor(x);
        case Function::roundUp:
            return std::ceil(x);
        case Function::round:
            return std::ceil(x + 0.5);
        case Function::sinh:
            return std::sinh(x);
        case Function::sin:
            return std::sin(x);
        case Function::sqrt:
            return std::sqrt(x);
        case Function::sqr:
            return x * x;
        case Function::tanh:
            return std::tanh(x);
        case Function::tan:
            return std::tan(x);
        case Function::trunc:
            return std::floor(x);
    }
    return 0;
}

double run(std::span<const Step> program, const CellTable& cells) {
    // The top is kept in a variable of its own, so the first load saves a value that is never read.
    double below[kStackDepth + 1];
    double* free = below;
    double top = 0;
    using enum Operation;
    // The compiler of formulas emits an operation only where its operands have been loaded.
    // NOLINTBEGIN(clang-analyzer-core.*)
    for (const Step& step : program) {
        switch (step.code) {
            case kLoadNumber:
                *free++ = top;
                top = step.number;
                break;
            case kLoadCell:
                *free++ = top;
                top = cellValue(cells, step.cell);
                break;
            case kSumRange:
                *free++ = top;
                top = sumRange(cells, step.cell, step.last);
                break;
            case stepCode(add, Operand::number):
                top = top + step.number;
                break;
            case stepCode(add, Operand::cell):
                top = top + cellValue(cells, step.cell);
                break;
            case stepCode(add, Operand::stack):
                top = *--free + top;
                break;
            case stepCode(subtract, Operand::number):
                top = top - step.number;
                break;
            case stepCode(subtract, Operand::cell):
                top = top - cellValue(cells, step.cell);
                break;
            case stepCode(subtract, Operand::stack):
                top = *--free - top;
                break;
            case stepCode(multiply, Operand::number):
                top = top * step.number;
                break;
            case stepCode(multiply, Operand::cell):
                top = top * cellValue(cells, step.cell);
                break;
            case stepCode(multiply, Operand::stack):
                top = *--free * top;
                break;
            case stepCode(divide, Operand::number):
                top = quotient(top, step.number);
                break;
            case stepCode(divide, Operand::cell):
                top = quotient(top, cellValue(cells, step.cell));
                break;
            case stepCode(divide, Operand::stack):
                top = quotient(*--free, top);
                break;
            case stepCode(power, Operand::number):
                top = std::pow(top, step.number);
                break;
            case stepCode(power, Operand::cell):
                top = std::pow(top, cellValue(cells, step.cell));
                break;
            case stepCode(power, Operand::stack):
                top = std::pow(*--free, top);
                break;
            case kNegate:
                top = -top;
                break;
            default:
                top = apply(static_cast<Function>(step.code - kApply), top);
                break;
        }
    }
    // NOLINTEND(clang-analyzer-core.*)
    return top;
}

}  // namespace toolbox::parser
