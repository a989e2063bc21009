// What a field lets its user type and paste.
#pragma once

#include <bitset>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

class TvString;

namespace toolbox::controls {

/// Where something is inserted: what stands before it, how many more characters the field takes,
/// whether it has several lines.
struct Insertion {
    std::string_view before;
    std::size_t room = 0;
    bool isMultiLine = false;
};

using Allows = std::function<bool(char)>;

/// The rule of a field.
class EditRule {
  public:
    /// Every character.
    EditRule();
    /// The characters that a validated text keeps.
    [[nodiscard]] static EditRule ofText(const TvString& rule);
    /// Characters of numbers, and those after a '=' in front; none of these: no formulas.
    [[nodiscard]] static EditRule ofNumber(const Allows& allows, const Allows& allowsInFormula);

    [[nodiscard]] bool isNumber() const { return isNumber_; }
    /// Whether a character may follow what stands before it.
    [[nodiscard]] bool mayType(std::string_view before, char c) const;
    /// What a pasted text inserts: of a text its characters that are allowed, as many as there is
    /// room for; of a number all but blanks and line ends around it and `units` at its end, and
    /// nothing at all (none) when it has other characters or is too long.
    [[nodiscard]] std::optional<std::string> pasted(std::string_view text, const Insertion& where,
                                                    std::string_view units) const;

  private:
    [[nodiscard]] std::optional<std::string> pastedNumber(std::string_view text,
                                                          const Insertion& where,
                                                          std::string_view units) const;

    std::bitset<256> allowed_;
    std::bitset<256> inFormula_;  // nothing but in numbers
    bool isNumber_ = false;
};

}  // namespace toolbox::controls
