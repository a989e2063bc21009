// What the kinds of formats share: their names for users, and the saved form, which is numbers in 4
// columns, each followed by "-", and a letter.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolbox/formats.h"

namespace toolbox::format {

/// Text `id` of the module that owns `window` (null: the application); empty when there is none.
[[nodiscard]] RWCString typeName(HWND window, unsigned int id);

/// Appends a number, right-aligned in 4 columns, and "-". A longer number is appended whole.
void saveNumber(std::string& out, int number);
/// Appends "L" or "R".
void saveJustify(std::string& out, Justification justify);

/// Reads a saved form part by part. Each call gives nothing once a part is missing.
class SavedTextReader {
  public:
    explicit SavedTextReader(const RWCString& text) : rest_(text.c_str()) {}

    /// A number and "-": blanks are skipped, then at most 4 characters count, the sign included.
    std::optional<int> number();
    /// The letter, whatever it is.
    std::optional<char> letter();

  private:
    std::string_view rest_;
};

/// The saved form of a format that has a width and a justification only.
[[nodiscard]] RWCString saveColumn(const FormatType& format);
/// Reads one back through the setters of `format`: all of them, or none when a part is missing.
[[nodiscard]] int restoreColumn(FormatType& format, const RWCString& text);

/// Sets the justification that a letter stands for: 1 when it stands for one that is accepted.
int restoreJustify(FormatType& format, char letter);

}  // namespace toolbox::format
