// One conversion of a printf template: its parts, and printing a value of known type by it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/template_text.h"

namespace toolbox::base {

/// Collects text in a caller's buffer and drops what does not fit.
class BoundedText {
  public:
    BoundedText(char* out, std::size_t size) : out_(out), room_(size > 0 ? size - 1 : 0) {
        if (size == 0) out_ = nullptr;
    }
    void append(std::string_view text);
    void fill(char c, std::int64_t count);  ///< a count below 1 adds nothing
    std::size_t finish();                   ///< terminates; returns the characters kept
    [[nodiscard]] bool full() const { return kept_ == room_; }

  private:
    char* out_;
    std::size_t room_;
    std::size_t kept_ = 0;
};

/// Size of an integer argument.
enum class ArgumentLength {
    plain,
    byte,
    half,
    word,
    longWord,
    bits32,
    bits64,
    pointer,
    longDouble
};

struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeros = false;
    bool starWidth = false;      ///< the width is an argument
    bool starPrecision = false;  ///< the precision is an argument
    std::int64_t width = 0;
    std::int64_t precision = -1;  ///< -1: none given
    ArgumentLength length = ArgumentLength::plain;
    char kind = '\0';  ///< the conversion's letter; NUL when the template ends before it

    void setWidth(int given);  ///< a negative width asks for left justification
    void setPrecision(int given) { precision = given < 0 ? -1 : given; }
};

/// Reads the conversion whose '%' stands at `at` and returns the first character after it.
const char* parseConversion(const char* at, Conversion& out);

/// Prints by d i (long long), u o x X p (unsigned long long), e E f F g G (double), c (long long)
/// or s (text): the value holds the type named.
void printConversion(BoundedText& out, const Conversion& conversion, const TemplateValue& value);

}  // namespace toolbox::base
