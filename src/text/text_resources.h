// Texts of string tables, in the language of the message service, and the buffers they are printed
// in.
#pragma once

#include <string>

#include "toolbox/messages.h"
#include "toolbox/platform.h"

namespace toolbox::text {

[[nodiscard]] inline platform::Language textLanguage() {
    return GMSG::language == GMSG::French ? platform::Language::french
                                          : platform::Language::english;
}

/// 511 characters of a template, or of what it prints. Each call has its own: while a box is shown,
/// further reports may come in.
using MessageBuffer = char[512];

/// Loads from one module (null: the application), as StringResources::load does.
int loadFrom(HINSTANCE module, unsigned int id, char* out, int size);

/// Loads from the message service's module and, when that has no such text, from the application;
/// texts 1300 to 1699 last from the library itself.
int loadText(unsigned int id, char* out, int size);

/// The whole text, however long; empty when there is none.
[[nodiscard]] std::string loadText(unsigned int id);

}  // namespace toolbox::text
