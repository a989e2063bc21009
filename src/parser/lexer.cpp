// Reads numbers and names. A number of few digits is converted by one exact operation on the way;
// all others go through base::realFromChars.
#include "parser/lexer.h"

#include <cmath>
#include <string_view>
#include <system_error>

#include "base/real_chars.h"

namespace toolbox::parser {
namespace {

constexpr std::array<std::string_view, kFunctions> kNames = {
    "ABS",       "ACOS",    "ASIN",  "ATAN", "COSH", "COS",  "EXP", "LOG10", "LOG", "POW10",
    "ROUNDDOWN", "ROUNDUP", "ROUND", "SINH", "SIN",  "SQRT", "SQR", "TANH",  "TAN", "TRUNC"};

/// Where the names that start with a letter begin; [letter + 1] is where they end.
constexpr auto kFirstName = [] {
    std::array<std::uint8_t, 27> first{};
    for (std::size_t letter = 0; letter <= 26; ++letter)
        while (first[letter] < kFunctions &&
               static_cast<std::size_t>(kNames[first[letter]][0] - 'A') < letter)
            ++first[letter];
    return first;
}();
static_assert(sizeof kFirstName == 27 && kFirstName[26] == kFunctions);

constexpr bool longerNamesFirst() {
    for (std::size_t i = 0; i < kFunctions; ++i)
        for (std::size_t j = i + 1; j < kFunctions; ++j)
            if (kNames[j].starts_with(kNames[i]) || kNames[j][0] < kNames[i][0]) return false;
    return true;
}
static_assert(longerNamesFirst());

/// Powers of ten that a double holds exactly.
constexpr auto kPowersOfTen =
    std::to_array({1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22});
constexpr int kMostExact = static_cast<int>(kPowersOfTen.size()) - 1;
static_assert(kMostExact == 22);

/// Digits that 64 bits always hold.
constexpr std::ptrdiff_t kSafeDigits = 19;

bool startsWith(const char* text, std::string_view name) {
    for (const char c : name)
        if (capital(*text++) != c) return false;
    return true;
}

}  // namespace

Token Lexer::readNumber() {
    std::uint64_t digits = 0;
    const auto take = [&] {
        const char* const from = at_;
        for (; isDigit(*at_); ++at_) digits = digits * 10 + static_cast<std::uint64_t>(*at_ - '0');
        return at_ - from;
    };
    std::ptrdiff_t count = take();
    std::ptrdiff_t decimals = 0;
    if (*at_ == '.') {
        ++at_;
        decimals = take();
        count += decimals;
    }
    if (count == 0) return bad(FormulaFault::badNumber);

    int exponent = 0;
    if (capital(*at_) == 'E') {
        ++at_;
        const bool negative = *at_ == '-';
        if (negative || *at_ == '+') ++at_;
        for (int i = 0; i < 3 && isDigit(*at_); ++i) exponent = exponent * 10 + (*at_++ - '0');
        if (negative) exponent = -exponent;
    }

    // A whole number below 2^53 times or over an exact power of ten: one operation rounds it right.
    const std::ptrdiff_t scale = exponent - decimals;
    if (count > kSafeDigits || digits > (std::uint64_t{1} << 53) || scale > kMostExact ||
        scale < -kMostExact)
        return convertNumber();
    const double whole = static_cast<double>(static_cast<std::int64_t>(digits));
    number_ = scale < 0 ? whole / kPowersOfTen[static_cast<std::size_t>(-scale)]
                        : whole * kPowersOfTen[static_cast<std::size_t>(scale)];
    return Token::num;
}

Token Lexer::convertNumber() {
    const auto [end, error] = base::realFromChars(start_, at_, number_);
    if (error != std::errc{} || std::isinf(number_)) return bad(FormulaFault::numberOutOfRange);
    if (number_ == 0)
        for (const char* c = start_; c != at_ && capital(*c) != 'E'; ++c)
            if (*c != '0' && *c != '.') return bad(FormulaFault::numberOutOfRange);
    return Token::num;
}

Token Lexer::readName() {
    // No function has a digit as its second character, and most names are cells.
    if (!isDigit(at_[1])) {
        const auto letter = static_cast<std::size_t>(capital(*at_) - 'A');
        for (std::size_t i = kFirstName[letter]; i < kFirstName[letter + 1]; ++i)
            if (startsWith(at_, kNames[i])) {
                at_ += kNames[i].size();
                function_ = static_cast<Function>(i);
                return Token::func;
            }
    }
    int col = 0;
    int row = 0;
    if (!readCellName(at_, col, row, capital)) return bad(FormulaFault::unknownName);
    cell_ = {static_cast<std::uint8_t>(col), static_cast<std::uint8_t>(row)};
    return Token::cell;
}

}  // namespace toolbox::parser
