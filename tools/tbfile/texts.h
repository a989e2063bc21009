// What the program says, in French and in English.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace tbfile {

enum class Text {
#define TBFILE_TEXT(name, french, english) name,
#include "texts.inc"
#undef TBFILE_TEXT
};

enum class Language { french, english };

/// The language of every text from now on; English at the start.
void speak(Language language);

using Arguments = std::initializer_list<std::string>;

/// A text in UTF-8. %1 to %9 in it are replaced by the arguments, which are UTF-8 and are not
/// looked at again.
[[nodiscard]] std::string say(Text text, Arguments arguments = {});

/// A text of a file as a terminal may have it: '.' in place of every control character.
[[nodiscard]] std::string visible(std::string utf8);

/// 1 048 576 in French, 1,048,576 in English.
[[nodiscard]] std::string grouped(std::uint64_t number);

}  // namespace tbfile
