// What the program says, in French and in English.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "terminal/characters.h"

namespace tbfile {

enum class Text {
#define TBFILE_TEXT(name, french, english) name,
#include "texts.inc"
#undef TBFILE_TEXT
};

enum class Language { french, english };

/// Sets the language of every text from then on; English at the start.
void speak(Language language);
[[nodiscard]] Language spokenLanguage();

using Arguments = std::initializer_list<std::string>;

/// A text in UTF-8. %1 to %9 in it are replaced by the arguments, which are UTF-8, are made
/// visible() and are not looked at again. {1:block|blocks} is the singular or the plural for the
/// number that argument 1 is; 0 is singular in French.
[[nodiscard]] std::string say(Text text, Arguments arguments = {});

/// 1 048 576 in French, 1,048,576 in English.
[[nodiscard]] std::string grouped(std::uint64_t number);

}  // namespace tbfile
