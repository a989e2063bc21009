#include "literal_grid.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace literal {
namespace {

enum { PLUS, MINUS, TIMES, DIVIDE, EXP, COLON, OPAREN, CPAREN, NUM, CELL, FUNC, EOL, BAD };

/// Positive: shift to that state; negative: reduce by that rule; 0: error; 99: accept.
using Row = signed char[13];
constexpr Row kOperand = {0, 5, 0, 0, 0, 0, 9, 0, 10, 7, 11, 0, 0};
constexpr int kAccept = 99;

struct Tables {
    signed char action[31][13] = {};

    Tables() {
        for (const int state : {0, 5, 9, 12, 13, 14, 15, 16, 20})
            std::memcpy(action[state], kOperand, sizeof kOperand);
        action[5][MINUS] = 0;
        const int reductions[][2] = {{2, 3},   {3, 6},   {4, 8},   {6, 10}, {7, 13}, {8, 12},
                                     {10, 15}, {17, 9},  {21, 1},  {22, 2}, {23, 4}, {24, 5},
                                     {25, 7},  {26, 11}, {27, 14}, {29, 16}};
        for (const auto& [state, rule] : reductions)
            std::memset(action[state], -rule, sizeof action[state]);
        for (const int state : {1, 19, 28}) {
            action[state][PLUS] = 12;
            action[state][MINUS] = 13;
        }
        for (const int state : {2, 21, 22}) {
            action[state][TIMES] = 14;
            action[state][DIVIDE] = 15;
        }
        action[1][EOL] = kAccept;
        action[4][EXP] = 16;
        action[7][COLON] = 18;
        action[11][OPAREN] = 20;
        action[18][CELL] = 26;
        action[19][CPAREN] = 27;
        action[28][CPAREN] = 29;
    }
};
const Tables kTables;

bool isOperandState(int state) {
    return state == 0 || state == 9 || (state >= 12 && state <= 16) || state == 20;
}

double callFunction(const char* name, double x) {
    if (!std::strcmp(name, "ABS")) return std::fabs(x);
    if (!std::strcmp(name, "ACOS")) return std::acos(x);
    if (!std::strcmp(name, "ASIN")) return std::asin(x);
    if (!std::strcmp(name, "ATAN")) return std::atan(x);
    if (!std::strcmp(name, "COSH")) return std::cosh(x);
    if (!std::strcmp(name, "COS")) return std::cos(x);
    if (!std::strcmp(name, "EXP")) return std::exp(x);
    if (!std::strcmp(name, "LOG10")) return std::log10(x);
    if (!std::strcmp(name, "LOG")) return std::log(x);
    if (!std::strcmp(name, "POW10")) return std::pow(10.0, x);
    if (!std::strcmp(name, "ROUNDDOWN")) return std::floor(x);
    if (!std::strcmp(name, "ROUNDUP")) return std::ceil(x);
    if (!std::strcmp(name, "ROUND")) return std::ceil(x + 0.5);
    if (!std::strcmp(name, "SINH")) return std::sinh(x);
    if (!std::strcmp(name, "SIN")) return std::sin(x);
    if (!std::strcmp(name, "SQRT")) return std::sqrt(x);
    if (!std::strcmp(name, "SQR")) return x * x;
    if (!std::strcmp(name, "TANH")) return std::tanh(x);
    if (!std::strcmp(name, "TAN")) return std::tan(x);
    return std::floor(x);
}

}  // namespace

bool Grid::error = false;
char Grid::buffer_[kLongestText];
StackEntry Grid::stack_[kStackEntries];
StackEntry Grid::current_;

void Grid::push(const StackEntry& entry) {
    if (top_ == kStackEntries - 1) {
        overflowed_ = true;
        failed_ = true;
    } else {
        stack_[++top_] = entry;
    }
}

StackEntry Grid::pop() {
    return stack_[top_--];
}

double Grid::cellValue(int col, int row) {
    const Record* cell = cells_[col][row].get();
    if (!cell) return 0.0;
    return cell->kind == 0 ? HUGE_VAL : cell->value;
}

bool Grid::isFunction(const char* name) {
    const std::size_t length = std::strlen(name);
    if (std::strncmp(name, input_, length) != 0) return false;
    std::strcpy(current_.name, name);
    input_ += length;
    return true;
}

bool Grid::readCell(const char** input, int* col, int* row) {
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    if (!isLetter(**input)) return false;
    *col = *(*input)++ - 'A';
    if (isLetter(**input)) *col = *col * 26 + (*(*input)++ - 'A') + 26;
    if (*col >= kGridSize) return false;
    char digits[3] = "";
    const int most = static_cast<int>(std::log10(kGridSize + 1.0)) + 1;
    for (int i = 0; i < most && **input >= '0' && **input <= '9'; ++i) digits[i] = *(*input)++;
    if (digits[0] == '\0') return false;
    *row = std::atoi(digits) - 1;
    return *row >= 0 && *row < kGridSize;
}

int Grid::readNumber() {
    char digits[kLongestText];
    int length = 0;
    bool point = false;
    while ((*input_ >= '0' && *input_ <= '9') || (*input_ == '.' && !point)) {
        if (*input_ == '.') point = true;
        digits[length++] = *input_++;
    }
    if (length == 1 && digits[0] == '.') return BAD;
    if (*input_ == 'E') {
        digits[length++] = *input_++;
        if (*input_ == '+' || *input_ == '-') digits[length++] = *input_++;
        for (int i = 0; i < 3 && *input_ >= '0' && *input_ <= '9'; ++i)
            digits[length++] = *input_++;
    }
    digits[length] = '\0';
    errno = 0;
    current_.value = std::strtod(digits, nullptr);
    // Denormals are numbers here, though some systems report them.
    if (errno == ERANGE && (current_.value == 0 || std::isinf(current_.value))) return BAD;
    return NUM;
}

int Grid::nextToken() {
    while (*input_ == ' ') ++input_;
    if (*input_ == '\0') return EOL;
    if (std::strchr("0123456789.", *input_)) return readNumber();
    if (*input_ >= 'A' && *input_ <= 'Z') {
        if (isFunction("ABS") || isFunction("ACOS") || isFunction("ASIN") || isFunction("ATAN") ||
            isFunction("COSH") || isFunction("COS") || isFunction("EXP") || isFunction("LOG10") ||
            isFunction("LOG") || isFunction("POW10") || isFunction("ROUNDDOWN") ||
            isFunction("ROUNDUP") || isFunction("ROUND") || isFunction("SINH") ||
            isFunction("SIN") || isFunction("SQRT") || isFunction("SQR") || isFunction("TANH") ||
            isFunction("TAN") || isFunction("TRUNC"))
            return FUNC;
        if (readCell(&input_, &current_.cell.col, &current_.cell.row)) {
            namesCell_ = true;
            return CELL;
        }
        return BAD;
    }
    switch (*input_++) {
        case '+':
            return PLUS;
        case '-':
            return MINUS;
        case '*':
            return TIMES;
        case '/':
            return DIVIDE;
        case '^':
            return EXP;
        case ':':
            return COLON;
        case '(':
            return OPAREN;
        case ')':
            return CPAREN;
        default:
            return BAD;
    }
}

void Grid::shift(int state) {
    current_.state = static_cast<unsigned char>(state);
    push(current_);
    token_ = nextToken();
}

int Grid::goTo(int below, int rule) {
    const bool operand = isOperandState(below);
    if (rule <= 3) return below == 0 ? 1 : below == 9 ? 19 : below == 20 ? 28 : 30;
    if (rule <= 6) {
        if (below == 0 || below == 9 || below == 20) return 2;
        return below == 12 ? 21 : below == 13 ? 22 : 30;
    }
    if (rule <= 8) {
        if (below >= 14 && below <= 16) return below + 9;
        return operand ? 3 : 30;
    }
    if (rule <= 10) return operand ? 4 : 30;
    if (rule <= 12) return operand ? 6 : below == 5 ? 17 : 30;
    return operand || below == 5 ? 8 : 30;
}

double Grid::rangeSum(const CellReference& first, const CellReference& last) {
    if (first.row != last.row ? first.col != last.col || last.row < first.row
                              : last.col < first.col) {
        failed_ = true;
        return 0;
    }
    double sum = cellValue(first.col, first.row);
    if (first.row != last.row)
        for (int row = first.row + 1; row <= last.row; ++row) sum += cellValue(first.col, row);
    else
        for (int col = first.col + 1; col <= last.col; ++col) sum += cellValue(col, first.row);
    return sum;
}

void Grid::reduce(int rule) {
    StackEntry result = pop();
    StackEntry left;
    switch (rule) {
        case 1:
            pop();
            result.value = pop().value + result.value;
            break;
        case 2:
            pop();
            result.value = pop().value - result.value;
            break;
        case 4:
            pop();
            result.value = pop().value * result.value;
            break;
        case 5:
            pop();
            left = pop();
            result.value = result.value == 0 ? HUGE_VAL : left.value / result.value;
            break;
        case 7:
            pop();
            result.value = std::pow(pop().value, result.value);
            break;
        case 9:
            pop();
            result.value = -result.value;
            break;
        case 11: {
            pop();
            left = pop();
            const CellReference last = result.cell;
            result.value = rangeSum(left.cell, last);
            break;
        }
        case 13: {
            const CellReference cell = result.cell;
            result.value = cellValue(cell.col, cell.row);
            break;
        }
        case 14:
            result = pop();
            pop();
            break;
        case 16:
            result = pop();
            pop();
            left = pop();
            result.value = callFunction(left.name, result.value);
            break;
        default:
            break;
    }
    result.state = static_cast<unsigned char>(goTo(stack_[top_].state, rule));
    push(result);
}

double Grid::parse(char* text, int* kind) {
    const std::size_t length = std::strlen(text);
    for (std::size_t i = 0; i <= length; ++i)
        buffer_[i] = text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
    input_ = buffer_;
    failed_ = namesCell_ = overflowed_ = false;
    top_ = -1;
    StackEntry bottom;
    bottom.state = 0;
    push(bottom);
    token_ = nextToken();
    bool accepted = false;
    while (!accepted && !failed_) {
        const int action = kTables.action[stack_[top_].state][token_];
        if (action == kAccept)
            accepted = true;
        else if (action > 0)
            shift(action);
        else if (action < 0)
            reduce(-action);
        else
            failed_ = true;
    }
    if (failed_) {
        *kind = 0;
        return 0;
    }
    *kind = namesCell_ ? 2 : 1;
    std::memcpy(text, buffer_, length + 1);
    return stack_[top_].value;
}

void Grid::setCell(int row, int col, const char* text) {
    error = false;
    cells_[col][row].reset();
    std::string copy = text;
    int kind;
    const double value = parse(copy.data(), &kind);
    cells_[col][row] = std::make_unique<Record>(Record{kind, value, std::move(copy)});
}

double Grid::getCell(int row, int col) {
    Record& cell = *cells_[col][row];
    if (cell.kind == 2) {
        int kind;
        cell.value = parse(cell.text.data(), &kind);
    }
    const double value = cell.kind == 0 ? HUGE_VAL : cell.value;
    if (value == HUGE_VAL) error = true;
    return value;
}

}  // namespace literal
