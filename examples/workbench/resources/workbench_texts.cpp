// On Windows the texts are resources; elsewhere they are handed to the library as a table.
#include "resources/workbench_texts.h"

#if defined(_WIN32)

void registerWorkbenchTexts() {}

#else

#include <array>

#include "toolbox/platform.h"

void registerWorkbenchTexts() {
    static constexpr auto kTexts = std::to_array<toolbox::platform::StringEntry>({
#define SECTION_TEXT(id, french, english) {id, french, english},
#define WORKBENCH_TEXT(id, french, english) {id, french, english},
#include "resources/workbench_texts.inc"
#include "section_csv_texts.inc"
#undef SECTION_TEXT
#undef WORKBENCH_TEXT
    });
    toolbox::platform::setApplicationStrings(kTexts);
}

#endif
