// Names between Windows-1252 and the system's 16-bit characters, without loss.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolbox::pickers {

/// The five bytes without a character become the control characters of their numbers.
[[nodiscard]] std::u16string wideOf(std::string_view bytes);

/// None for a name that has a character which Windows-1252 does not have.
[[nodiscard]] std::optional<std::string> exact1252(std::u16string_view name);

/// With '?' for each character that Windows-1252 does not have: to be shown, never to be used.
[[nodiscard]] std::string shown1252(std::u16string_view name);

/// The names that a dialog for several files gives: one whole name, or a folder and names in it,
/// each ended by a NUL and the last by two. A name in the list that has a folder of its own stays
/// as it is. Reads no further than the text given.
[[nodiscard]] std::vector<std::u16string> severalNames(std::u16string_view chosen);

}  // namespace toolbox::pickers
