// On Windows the texts are resources; elsewhere they are handed to the library as a table.
#include "section_texts.h"

#if defined(_WIN32)

void registerSectionTexts() {}

#else

#include <array>

#include "toolbox/platform.h"

void registerSectionTexts() {
    static constexpr auto kTexts = std::to_array<toolbox::platform::StringEntry>({
#define SECTION_TEXT(id, french, english) {id, french, english},
#include "section_texts.inc"
#undef SECTION_TEXT
    });
    toolbox::platform::setApplicationStrings(kTexts);
}

#endif
