// The sentences about entries: numbers 1340 to 1359 of the library's texts.
#pragma once

#include "text/printed_text.h"

namespace toolbox::dialog {

using text::printed;

enum FieldTextId : unsigned short {
    kTooLong = 1340,
    kNoSuchCharacter = 1341,
    kDateOrder = 1342,
    kNoSuchDay = 1343
};

}  // namespace toolbox::dialog
