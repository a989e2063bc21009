// The library's texts and UTF-8.
//
// Strings of the library are bytes in Windows-1252. Terminals, and most files of other programs,
// hold UTF-8: a program converts where such a text leaves or enters.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/export.h"

namespace toolbox {

/// Every byte has a character; the five that Windows-1252 leaves undefined give the control
/// characters of their numbers.
[[nodiscard]] TB_API std::string toUtf8(std::string_view windows1252);

/// A character that Windows-1252 does not have, and a byte that is not UTF-8, give '?'.
[[nodiscard]] TB_API std::string fromUtf8(std::string_view utf8);

}  // namespace toolbox
