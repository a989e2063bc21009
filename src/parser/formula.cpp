// The driver of the LR(1) tables. It computes a value at each reduction and emits the formula's
// program on the way; where it stops at an error it works out what the writer of the text needs to
// know.
#include "parser/formula.h"

#include <algorithm>
#include <cmath>

#include "parser/grammar.h"
#include "parser/lexer.h"

namespace toolbox::parser {
namespace {

/// What an error in this state, at this token, means to the writer of the formula.
FormulaFault faultIn(std::uint8_t state, Token token, const Lexer& lexer) {
    const bool insideParentheses = state == kInParentheses || state == kInArgument;
    if (token == Token::bad) return lexer.fault();
    if (state == kFunction) return FormulaFault::parenthesisExpected;
    if (state == kColon) return FormulaFault::cellExpected;
    if (state == kWhole && token == Token::cparen) return FormulaFault::unopened;
    if (insideParentheses && token == Token::eol) return FormulaFault::unclosed;
    if (state == kWhole || insideParentheses) return FormulaFault::operatorExpected;
    return FormulaFault::operandExpected;
}

/// What precedes a token.
struct Preceding {
    Token token = Token::eol;  ///< eol at the start of the text
    std::size_t position = 0;  ///< of that token
    std::size_t opening = 0;   ///< of the innermost parenthesis that is open
};

/// Reads the start of a text again, up to the token at `position`. Only errors need it, so that
/// parsing does not have to remember positions.
Preceding precedingToken(const char* text, std::size_t position) {
    Preceding found;
    std::array<std::size_t, kStackDepth> openings{};
    std::size_t open = 0;
    Lexer lexer(text);
    for (Token token = lexer.next(); lexer.position() < position; token = lexer.next()) {
        found.token = token;
        found.position = lexer.position();
        // The stack has accepted these tokens, so no more are open than it has entries.
        if (token == Token::oparen && open < openings.size()) openings[open++] = found.position;
        if (token == Token::cparen && open > 0) --open;
    }
    if (open > 0) found.opening = openings[open - 1];
    return found;
}

class FormulaParser {
  public:
    FormulaParser(const char* text, const CellTable& cells, Emitter& out)
        : text_(text), lexer_(text), cells_(cells), out_(out) {}

    Parsed parse();

  private:
    /// A value with the state that it led to. A function's name waits in the entry of its token, a
    /// cell in its own.
    struct Entry {
        double value;
        CellRef cell;
        Function function;
        std::uint8_t state;
    };

    [[nodiscard]] Entry& top(int below = 0) { return stack_[top_ - below]; }

    /// Puts the current token on the stack and reads the next one.
    bool shift(Action state) {
        if (top_ == kStackDepth - 1) {
            fail(FormulaFault::tooDeep);
            return false;
        }
        Entry& entry = stack_[++top_];
        entry.state = state;
        token_ = lexer_.next();
        return true;
    }

    /// Replaces the entries of a rule's right side by its value.
    void reduce(int length, Symbol symbol, double value) {
        top_ -= length - 1;
        top().value = value;
        top().state = kSettled[top(1).state][static_cast<std::size_t>(symbol)]
                              [static_cast<std::size_t>(token_)];
    }
    void reduceBinary(Operation operation, Symbol symbol, double value) {
        out_.binary(operation, value);
        reduce(3, symbol, value);
    }

    // Each is false when the text turns out not to be a formula.
    bool shiftBy(Action state);
    bool reduceRule(Action rule);
    bool shiftNumber();
    bool shiftCell();
    bool shiftFunction();
    bool reduceRange();

    void explain();
    void fail(FormulaFault fault) { fail(fault, lexer_.position()); }
    void fail(FormulaFault fault, std::size_t position) {
        result_.fault = fault;
        result_.position = position;
    }

    const char* text_;
    Lexer lexer_;
    const CellTable& cells_;
    Emitter& out_;
    Token token_ = Token::eol;
    bool namesCell_ = false;
    int top_ = 0;
    std::size_t lastCell_ = 0;  ///< position of the cell read last
    Parsed result_;
    Entry stack_[kStackDepth];
};

bool FormulaParser::shiftNumber() {
    const double value = lexer_.number();
    if (!shift(kNumber)) return false;
    out_.number(value);
    reduce(1, Symbol::primary, value);
    return true;
}

bool FormulaParser::shiftCell() {
    namesCell_ = true;
    const CellRef cell = lexer_.cell();
    lastCell_ = lexer_.position();
    if (!shift(top().state == kColon ? kLastCell : kCell)) return false;
    top().cell = cell;
    return true;
}

bool FormulaParser::shiftFunction() {
    const Function function = lexer_.function();
    if (!shift(kFunction)) return false;
    top().function = function;
    return true;
}

bool FormulaParser::reduceRange() {
    const CellRef first = top(2).cell;
    const CellRef last = top().cell;
    const bool sameColumn = first.col == last.col && first.row <= last.row;
    const bool sameRow = first.row == last.row && first.col <= last.col;
    if (!sameColumn && !sameRow) {
        fail(FormulaFault::badRange, lastCell_);
        return false;
    }
    out_.range(first, last);
    reduce(3, Symbol::operand, sumRange(cells_, first, last));
    return true;
}

bool FormulaParser::shiftBy(Action state) {
    switch (state) {
        case kNumber:
            return shiftNumber();
        case kCell:
        case kLastCell:
            return shiftCell();
        case kFunction:
            return shiftFunction();
        default:
            return shift(state);
    }
}

bool FormulaParser::reduceRule(Action rule) {
    using enum Operation;
    switch (rule) {
        case reduceBy(1):
            reduceBinary(add, Symbol::expression, top(2).value + top().value);
            break;
        case reduceBy(2):
            reduceBinary(subtract, Symbol::expression, top(2).value - top().value);
            break;
        case reduceBy(4):
            reduceBinary(multiply, Symbol::term, top(2).value * top().value);
            break;
        case reduceBy(5):
            reduceBinary(divide, Symbol::term, quotient(top(2).value, top().value));
            break;
        case reduceBy(7):
            reduceBinary(power, Symbol::factor, std::pow(top(2).value, top().value));
            break;
        case reduceBy(9):
            out_.negate(-top().value);
            reduce(2, Symbol::signedOperand, -top().value);
            break;
        case reduceBy(11):
            return reduceRange();
        case reduceBy(13):
            out_.cell(top().cell);
            reduce(1, Symbol::primary, cellValue(cells_, top().cell));
            break;
        case reduceBy(14):
            reduce(3, Symbol::primary, top(1).value);
            break;
        case reduceBy(16): {
            const Function function = top(3).function;
            const double value = apply(function, top(1).value);
            out_.apply(function, value);
            reduce(4, Symbol::primary, value);
            break;
        }
        default:  // the rules that only rename are settled by the tables
            return false;
    }
    return true;
}

/// Records what is wrong at the current token, and where.
void FormulaParser::explain() {
    if (top_ == 0 && token_ == Token::eol) return fail(FormulaFault::empty);
    FormulaFault fault = faultIn(top().state, token_, lexer_);
    std::size_t position = lexer_.position();
    const Preceding before = precedingToken(text_, position);
    const bool adjacent = position > 0 && text_[position - 1] != ' ';
    const bool numberHere = token_ == Token::num || fault == FormulaFault::badNumber;
    if (fault == FormulaFault::unclosed) {
        position = before.opening;
    } else if (adjacent && numberHere && before.token == Token::num) {
        // "1.5.2", "1E1234": one number to the writer, two to the lexer.
        fault = FormulaFault::badNumber;
        position = before.position;
    } else if (adjacent && numberHere && before.token == Token::cell) {
        fault = FormulaFault::unknownName;  // "A100"
        position = before.position;
    } else if (adjacent && text_[position] == ',' && before.token == Token::num) {
        fault = FormulaFault::decimalComma;
    }
    fail(fault, position);
}

Parsed FormulaParser::parse() {
    stack_[0].state = kStart;
    token_ = lexer_.next();
    for (bool going = true; going;) {
        const Action action = kActions[top().state][static_cast<std::size_t>(token_)];
        if (action == kError) {
            explain();
            going = false;
        } else if (action == kAccept) {
            result_.kind = namesCell_ ? CellKind::formula : CellKind::value;
            result_.value = top().value;
            going = false;
        } else {
            going = isReduction(action) ? reduceRule(action) : shiftBy(action);
        }
    }
    result_.tokens = lexer_.tokensRead();
    return result_;
}

}  // namespace

Parsed parseFormula(const char* text, const CellTable& cells, Emitter& out) {
    return FormulaParser(text, cells, out).parse();
}

std::vector<Step> compileFormula(const char* text, std::size_t tokens) {
    std::vector<Step> steps(tokens);
    Emitter out(steps);
    const Parsed parsed = parseFormula(text, kNoCells, out);
    steps.resize(parsed.kind == CellKind::text ? 0 : out.steps().size());
    steps.shrink_to_fit();
    return steps;
}

}  // namespace toolbox::parser
