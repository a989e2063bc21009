// Texts that are formulas more often than not, the same ones for the same seed on every system.
#pragma once

#include <cstdint>
#include <string>

class FormulaGenerator {
  public:
    explicit FormulaGenerator(std::uint64_t seed) : state_(seed * 2654435769U + 1) {}

    /// A formula; about one in four is damaged afterwards: a character changed, dropped or doubled.
    std::string next() {
        text_.clear();
        expression(static_cast<int>(below(5)));
        if (below(4) == 0 && !text_.empty()) damage();
        return text_;
    }

    std::uint32_t below(std::uint32_t bound) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>((state_ >> 33) % bound);
    }

  private:
    void expression(int depth) {
        operand(depth);
        for (std::uint32_t more = below(3); more > 0; --more) {
            blank();
            text_ += "+-*/^"[below(5)];
            blank();
            operand(depth);
        }
    }

    void operand(int depth) {
        static constexpr const char* kFunctions[] = {
            "abs",   "ACOS", "asin",  "Atan",      "COSH",    "COS",   "EXP",
            "LOG10", "LOG",  "POW10", "roundDown", "ROUNDUP", "Round", "sinh",
            "sin",   "SQRT", "sqr",   "TANH",      "tan",     "TRUNC"};
        if (below(5) == 0) text_ += '-';
        const std::uint32_t choice = below(depth > 0 ? 8 : 5);
        if (choice < 2) {
            number();
        } else if (choice < 4) {
            cell();
        } else if (choice == 4) {
            range();
        } else {
            if (choice > 5) text_ += kFunctions[below(20)];
            text_ += '(';
            expression(depth - 1);
            text_ += ')';
        }
    }

    void number() {
        digits(1 + below(below(8) == 0 ? 25 : 4));
        if (below(3) == 0) {
            text_ += '.';
            digits(below(6));
        }
        if (below(6) == 0) {
            text_ += below(2) ? 'E' : 'e';
            if (below(2)) text_ += "+-"[below(2)];
            digits(below(below(8) == 0 ? 5 : 3));
        }
    }
    void digits(std::uint32_t count) {
        for (; count > 0; --count) text_ += static_cast<char>('0' + below(10));
    }

    void cell() { name(below(10), below(10)); }
    void range() {
        std::uint32_t col = below(10);
        std::uint32_t row = below(10);
        name(col, row);
        text_ += ':';
        (below(2) ? col : row) += below(4);
        name(col, row);
    }
    void name(std::uint32_t col, std::uint32_t row) {
        text_ += static_cast<char>((below(2) ? 'A' : 'a') + col);
        text_ += std::to_string(row + 1);
    }

    void blank() {
        if (below(4) == 0) text_ += ' ';
    }

    void damage() {
        const auto at = below(static_cast<std::uint32_t>(text_.size()));
        switch (below(3)) {
            case 0:
                text_[at] = static_cast<char>(' ' + below(95));
                break;
            case 1:
                text_.erase(at, 1);
                break;
            default:
                text_.insert(at, 1, text_[at]);
                break;
        }
    }

    std::uint64_t state_;
    std::string text_;
};
