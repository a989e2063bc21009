// Formulas by recursive descent, with nothing in common with the library's parser but the language.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace recursive {

/// Values of the cells by column and row.
using Cells = std::array<std::array<double, 10>, 10>;
using Value = std::optional<double>;

struct Answer {
    double value;
    bool namesCell;
};

struct Rules {
    static double power10(double x) { return std::pow(10.0, x); }
    static double round(double x) { return std::ceil(x + 0.5); }
    static double square(double x) { return x * x; }
};

/// The longest name comes first.
inline const std::map<std::string_view, double (*)(double), std::greater<>> kFunctions = {
    {"ABS", std::fabs},        {"ACOS", std::acos},   {"ASIN", std::asin},
    {"ATAN", std::atan},       {"COS", std::cos},     {"COSH", std::cosh},
    {"EXP", std::exp},         {"LOG", std::log},     {"SIN", std::sin},
    {"SINH", std::sinh},       {"SQRT", std::sqrt},   {"TAN", std::tan},
    {"TANH", std::tanh},       {"LOG10", std::log10}, {"ROUNDUP", std::ceil},
    {"ROUNDDOWN", std::floor}, {"TRUNC", std::floor}, {"POW10", Rules::power10},
    {"ROUND", Rules::round},   {"SQR", Rules::square}};

class Descent {
  public:
    Descent(std::string_view text, const Cells& cells) : rest_(text), cells_(cells) {}

    /// Nothing when the text is not a valid formula. Only the machine limits its depth.
    std::optional<Answer> all() {
        const Value value = sum();
        if (!value || peek() != '\0') return {};
        return Answer{*value, namesCell_};
    }

  private:
    using Place = std::pair<std::size_t, std::size_t>;  ///< column and row

    char peek(std::size_t ahead = 0) {
        if (ahead == 0) rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
        return ahead < rest_.size() ? rest_[ahead] : '\0';
    }
    bool take(char c) {
        if (peek() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    Value sum() {
        Value left = product();
        while (left && (peek() == '+' || peek() == '-')) {
            const bool plus = take('+') || !take('-');
            const Value right = product();
            if (!right) return {};
            left = plus ? *left + *right : *left - *right;
        }
        return left;
    }

    Value product() {
        Value left = power();
        while (left && (peek() == '*' || peek() == '/')) {
            const bool times = take('*') || !take('/');
            const Value right = power();
            if (!right) return {};
            left = times ? *left * *right : *right == 0 ? HUGE_VAL : *left / *right;
        }
        return left;
    }

    Value power() {
        const bool negative = take('-');
        Value base = operand();
        if (base && negative) base = -*base;
        if (!base || !take('^')) return base;
        const Value exponent = power();
        return exponent ? Value(std::pow(*base, *exponent)) : Value();
    }

    Value operand() {
        const char c = peek();
        if (c == '(') return parentheses();
        if (isDigit(c) || c == '.') return number();
        for (const auto& [name, function] : kFunctions)
            if (rest_.starts_with(name)) {
                rest_.remove_prefix(name.size());
                const Value inner = parentheses();
                return inner ? Value(function(*inner)) : Value();
            }
        return cells();
    }

    Value parentheses() {
        if (!take('(')) return {};
        const Value inner = sum();
        return inner && take(')') ? inner : Value();
    }

    Value cells() {
        const auto first = cell();
        if (!first) return {};
        const auto [left, top] = *first;
        if (!take(':')) return cells_[left][top];
        const auto last = cell();
        if (!last) return {};
        const auto [right, bottom] = *last;
        if ((left != right && top != bottom) || right < left || bottom < top) return {};
        Value total;
        for (std::size_t col = left; col <= right; ++col)
            for (std::size_t row = top; row <= bottom; ++row)
                total = total ? *total + cells_[col][row] : cells_[col][row];
        return total;
    }

    std::optional<Place> cell() {
        const char letter = peek();
        std::size_t digits = 0;
        while (digits < 2 && isDigit(peek(1 + digits))) ++digits;
        if (letter < 'A' || letter > 'J' || digits == 0) return {};
        const int row = std::atoi(std::string(rest_.substr(1, digits)).c_str());
        if (row < 1 || row > 10) return {};
        rest_.remove_prefix(1 + digits);
        namesCell_ = true;
        return Place{static_cast<std::size_t>(letter - 'A'), static_cast<std::size_t>(row - 1)};
    }

    Value number() {
        constexpr const char* kDigits = "0123456789";
        std::string text;
        move(kDigits, text);
        move(".", text, 1);
        move(kDigits, text);
        if (text == ".") return {};
        const bool nothing = text.find_first_of("123456789") == text.npos;
        if (rest_.starts_with('E')) {
            move("E", text, 1);
            move("+-", text, 1);
            move(kDigits, text, 3);
        }
        const double value = std::strtod(text.c_str(), nullptr);
        if (std::isinf(value) || (value == 0 && !nothing)) return {};
        return value;
    }
    /// At most `most` of the characters.
    void move(const char* characters, std::string& to, std::size_t most = std::string::npos) {
        const std::size_t n = std::min({rest_.find_first_not_of(characters), rest_.size(), most});
        to += rest_.substr(0, n);
        rest_.remove_prefix(n);
    }
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    std::string_view rest_;
    const Cells& cells_;
    bool namesCell_ = false;
};

}  // namespace recursive
