// Cuts a formula into tokens, in one pass over the caller's text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "parser/grammar.h"
#include "toolbox/parser.h"

namespace toolbox::parser {

/// The functions, in the order in which their names are tried: a name precedes the names that it
/// begins with.
enum class Function : std::uint8_t {
    abs,
    acos,
    asin,
    atan,
    cosh,
    cos,
    exp,
    log10,
    log,
    pow10,
    roundDown,
    roundUp,
    round,
    sinh,
    sin,
    sqrt,
    sqr,
    tanh,
    tan,
    trunc
};
inline constexpr std::size_t kFunctions = 20;

/// A cell as a token holds it.
struct CellRef {
    std::uint8_t col;
    std::uint8_t row;
};

constexpr bool isCapital(char c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
/// ASCII only, whatever the locale.
constexpr char capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// Reads a cell's name at `at` and moves past what it reads. `col` and `row` change as far as the
/// reading got: `col` by a first letter, even one beyond the grid, `row` by a digit after a column
/// of the grid. True when they are a cell of the grid. A letter is a capital after `letter`.
template <class Letter>
bool readCellName(const char*& at, int& col, int& row, Letter letter) {
    char c = letter(*at);
    if (!isCapital(c)) return false;
    ++at;
    col = c - 'A';
    c = letter(*at);
    if (isCapital(c)) {
        ++at;
        col = col * 26 + (c - 'A') + 26;
    }
    if (col >= kColumns || !isDigit(*at)) return false;
    row = *at++ - '0';
    if (isDigit(*at)) row = row * 10 + (*at++ - '0');
    --row;
    return row >= 0 && row < kRows;
}

/// A text and the token last read from it.
class Lexer {
  public:
    explicit Lexer(const char* text) : text_(text), at_(text), start_(text) {}

    /// The next token; eol again and again at the end.
    Token next();

    // What comes with a token: of num, of cell, of func, of bad.
    [[nodiscard]] double number() const { return number_; }
    [[nodiscard]] CellRef cell() const { return cell_; }
    [[nodiscard]] Function function() const { return function_; }
    [[nodiscard]] FormulaFault fault() const { return fault_; }

    /// Bytes before the token.
    [[nodiscard]] std::size_t position() const { return static_cast<std::size_t>(start_ - text_); }
    [[nodiscard]] std::size_t tokensRead() const { return tokensRead_; }

  private:
    Token bad(FormulaFault fault) {
        fault_ = fault;
        return Token::bad;
    }
    Token readNumber();
    Token convertNumber();
    Token readName();

    const char* text_;
    const char* at_;
    const char* start_;
    std::size_t tokensRead_ = 0;
    double number_ = 0;
    CellRef cell_{};
    Function function_{};
    FormulaFault fault_ = FormulaFault::none;
};

namespace lexing {

/// The token of a character that is one by itself; num and cell stand for "a number (a name) starts
/// here", bad for anything else.
inline constexpr auto kTokenOf = [] {
    std::array<Token, 256> tokens{};
    tokens.fill(Token::bad);
    constexpr char kSingle[] = "+-*/^:()";
    for (std::size_t i = 0; kSingle[i] != '\0'; ++i)
        tokens[static_cast<unsigned char>(kSingle[i])] = static_cast<Token>(i);
    for (unsigned char c = '0'; c <= '9'; ++c) tokens[c] = Token::num;
    tokens['.'] = Token::num;
    for (unsigned char c = 'A'; c <= 'Z'; ++c) tokens[c] = tokens[c + 32U] = Token::cell;
    tokens['\0'] = Token::eol;
    return tokens;
}();
static_assert(sizeof kTokenOf == 256);

}  // namespace lexing

inline Token Lexer::next() {
    ++tokensRead_;
    while (*at_ == ' ') ++at_;
    start_ = at_;
    const Token token = lexing::kTokenOf[static_cast<unsigned char>(*at_)];
    if (token <= Token::cparen) {
        ++at_;
        return token;
    }
    if (token == Token::num) return readNumber();
    if (token == Token::cell) return readName();
    return token == Token::bad ? bad(FormulaFault::badCharacter) : token;
}

}  // namespace toolbox::parser
