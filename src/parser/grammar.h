// The grammar of formulas as LR(1) tables.
//
// There are 16 rules:
//
//    1 expression  = expression + term       9 signed  = - operand
//    2 expression  = expression - term      10 signed  = operand
//    3 expression  = term                   11 operand = CELL : CELL
//    4 term        = term * factor          12 operand = primary
//    5 term        = term / factor          13 primary = CELL
//    6 term        = factor                 14 primary = ( expression )
//    7 factor      = signed ^ factor        15 primary = NUM
//    8 factor      = signed                 16 primary = FUNC ( expression )
//
// Rules 3, 6, 8, 10 and 12 only rename a value. kSettled has them worked out at compile time: one
// look-up takes a new value to the state in which something happens next.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace toolbox::parser {

enum class Token : std::uint8_t {
    plus,
    minus,
    times,
    divide,
    exp,
    colon,
    oparen,
    cparen,
    num,
    cell,
    func,
    eol,
    bad
};
inline constexpr std::size_t kTokens = 13;

enum class Symbol : std::uint8_t { expression, term, factor, signedOperand, operand, primary };
inline constexpr std::size_t kSymbols = 6;

inline constexpr std::size_t kRules = 16;
inline constexpr std::size_t kStates = 31;

/// The states that more than the tables must know.
enum State : std::uint8_t {
    kStart = 0,
    kWhole = 1,  ///< after the whole expression
    kCell = 7,
    kNumber = 10,
    kFunction = 11,
    kColon = 18,          ///< after the colon of a range
    kInParentheses = 19,  ///< after an expression between parentheses
    kLastCell = 26,       ///< after the second cell of a range
    kInArgument = 28,     ///< after the argument of a function
};

/// Entries of the parse stack; the state at its bottom takes one.
inline constexpr int kStackDepth = 20;

/// One step of the parser: 0 is an error, 1 to 29 shifts to that state, reduceBy(n) reduces.
using Action = std::uint8_t;
inline constexpr Action kError = 0;
inline constexpr Action kAccept = 64;
constexpr Action reduceBy(int rule) {
    return static_cast<Action>(32 + rule);
}
constexpr bool isReduction(Action action) {
    return action > 32 && action < kAccept;
}

inline constexpr std::array<Symbol, kRules + 1> kLeftSide = {
    Symbol::expression,  // no rule 0
    Symbol::expression,    Symbol::expression,    Symbol::expression, Symbol::term,
    Symbol::term,          Symbol::term,          Symbol::factor,     Symbol::factor,
    Symbol::signedOperand, Symbol::signedOperand, Symbol::operand,    Symbol::operand,
    Symbol::primary,       Symbol::primary,       Symbol::primary,    Symbol::primary};

namespace table {
constexpr Action r1 = reduceBy(1), r2 = reduceBy(2), r3 = reduceBy(3), r4 = reduceBy(4),
                 r5 = reduceBy(5), r6 = reduceBy(6), r7 = reduceBy(7), r8 = reduceBy(8),
                 r9 = reduceBy(9), r10 = reduceBy(10), r11 = reduceBy(11), r12 = reduceBy(12),
                 r13 = reduceBy(13), r14 = reduceBy(14), r15 = reduceBy(15), r16 = reduceBy(16),
                 acc = kAccept;
}  // namespace table

// clang-format off
inline constexpr auto kActions = [] {
    using namespace table;
    return std::array<std::array<Action, kTokens>, kStates>{{
    //          +    -    *    /    ^    :    (    )  NUM CELL FUNC  EOL  BAD
    /*  0 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /*  1 */ {{12,  13,   0,   0,   0,   0,   0,   0,   0,   0,   0, acc,   0}},
    /*  2 */ {{r3,  r3,  14,  15,  r3,  r3,  r3,  r3,  r3,  r3,  r3,  r3,  r3}},
    /*  3 */ {{r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6,  r6}},
    /*  4 */ {{r8,  r8,  r8,  r8,  16,  r8,  r8,  r8,  r8,  r8,  r8,  r8,  r8}},
    /*  5 */ {{ 0,   0,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /*  6 */ {{r10, r10, r10, r10, r10, r10, r10, r10, r10, r10, r10, r10, r10}},
    /*  7 */ {{r13, r13, r13, r13, r13,  18, r13, r13, r13, r13, r13, r13, r13}},
    /*  8 */ {{r12, r12, r12, r12, r12, r12, r12, r12, r12, r12, r12, r12, r12}},
    /*  9 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 10 */ {{r15, r15, r15, r15, r15, r15, r15, r15, r15, r15, r15, r15, r15}},
    /* 11 */ {{ 0,   0,   0,   0,   0,   0,  20,   0,   0,   0,   0,   0,   0}},
    /* 12 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 13 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 14 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 15 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 16 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 17 */ {{r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9,  r9}},
    /* 18 */ {{ 0,   0,   0,   0,   0,   0,   0,   0,   0,  26,   0,   0,   0}},
    /* 19 */ {{12,  13,   0,   0,   0,   0,   0,  27,   0,   0,   0,   0,   0}},
    /* 20 */ {{ 0,   5,   0,   0,   0,   0,   9,   0,  10,   7,  11,   0,   0}},
    /* 21 */ {{r1,  r1,  14,  15,  r1,  r1,  r1,  r1,  r1,  r1,  r1,  r1,  r1}},
    /* 22 */ {{r2,  r2,  14,  15,  r2,  r2,  r2,  r2,  r2,  r2,  r2,  r2,  r2}},
    /* 23 */ {{r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4,  r4}},
    /* 24 */ {{r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5,  r5}},
    /* 25 */ {{r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7,  r7}},
    /* 26 */ {{r11, r11, r11, r11, r11, r11, r11, r11, r11, r11, r11, r11, r11}},
    /* 27 */ {{r14, r14, r14, r14, r14, r14, r14, r14, r14, r14, r14, r14, r14}},
    /* 28 */ {{12,  13,   0,   0,   0,   0,   0,  29,   0,   0,   0,   0,   0}},
    /* 29 */ {{r16, r16, r16, r16, r16, r16, r16, r16, r16, r16, r16, r16, r16}},
    /* 30 */ {{ 0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0}},
    }};
}();

/// The state after a reduction to a symbol, by the state below it.
inline constexpr std::array<std::array<std::uint8_t, kSymbols>, kStates> kGoto = {{
    //       expression term factor signed operand primary
    /*  0 */ {{ 1,        2,    3,     4,     6,     8}},
    /*  1 */ {{30,       30,   30,    30,    30,    30}},
    /*  2 */ {{30,       30,   30,    30,    30,    30}},
    /*  3 */ {{30,       30,   30,    30,    30,    30}},
    /*  4 */ {{30,       30,   30,    30,    30,    30}},
    /*  5 */ {{30,       30,   30,    30,    17,     8}},
    /*  6 */ {{30,       30,   30,    30,    30,    30}},
    /*  7 */ {{30,       30,   30,    30,    30,    30}},
    /*  8 */ {{30,       30,   30,    30,    30,    30}},
    /*  9 */ {{19,        2,    3,     4,     6,     8}},
    /* 10 */ {{30,       30,   30,    30,    30,    30}},
    /* 11 */ {{30,       30,   30,    30,    30,    30}},
    /* 12 */ {{30,       21,    3,     4,     6,     8}},
    /* 13 */ {{30,       22,    3,     4,     6,     8}},
    /* 14 */ {{30,       30,   23,     4,     6,     8}},
    /* 15 */ {{30,       30,   24,     4,     6,     8}},
    /* 16 */ {{30,       30,   25,     4,     6,     8}},
    /* 17 */ {{30,       30,   30,    30,    30,    30}},
    /* 18 */ {{30,       30,   30,    30,    30,    30}},
    /* 19 */ {{30,       30,   30,    30,    30,    30}},
    /* 20 */ {{28,        2,    3,     4,     6,     8}},
    /* 21 */ {{30,       30,   30,    30,    30,    30}},
    /* 22 */ {{30,       30,   30,    30,    30,    30}},
    /* 23 */ {{30,       30,   30,    30,    30,    30}},
    /* 24 */ {{30,       30,   30,    30,    30,    30}},
    /* 25 */ {{30,       30,   30,    30,    30,    30}},
    /* 26 */ {{30,       30,   30,    30,    30,    30}},
    /* 27 */ {{30,       30,   30,    30,    30,    30}},
    /* 28 */ {{30,       30,   30,    30,    30,    30}},
    /* 29 */ {{30,       30,   30,    30,    30,    30}},
    /* 30 */ {{30,       30,   30,    30,    30,    30}},
}};
// clang-format on
static_assert(sizeof kActions == kStates * kTokens && sizeof kGoto == kStates * kSymbols);

constexpr bool onlyRenames(Action action) {
    return action == reduceBy(3) || action == reduceBy(6) || action == reduceBy(8) ||
           action == reduceBy(10) || action == reduceBy(12);
}

/// The state on top once a value that became `symbol` above `below` is renamed as far as it goes
/// before `token`: [below][symbol][token].
inline constexpr auto kSettled = [] {
    std::array<std::array<std::array<std::uint8_t, kTokens>, kSymbols>, kStates> settled{};
    for (std::size_t below = 0; below < kStates; ++below)
        for (std::size_t symbol = 0; symbol < kSymbols; ++symbol)
            for (std::size_t token = 0; token < kTokens; ++token) {
                std::uint8_t state = kGoto[below][symbol];
                while (onlyRenames(kActions[state][token])) {
                    const Symbol left = kLeftSide[kActions[state][token] - 32U];
                    state = kGoto[below][static_cast<std::size_t>(left)];
                }
                settled[below][symbol][token] = state;
            }
    return settled;
}();
static_assert(sizeof kSettled == kStates * kSymbols * kTokens);

}  // namespace toolbox::parser
