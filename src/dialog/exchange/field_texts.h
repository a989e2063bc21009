// The sentences about entries: numbers 1340 to 1359 of the library's texts.
#pragma once

#include "toolbox/messages.h"
#include "toolbox/strings.h"

namespace toolbox::dialog {

enum FieldTextId : unsigned short {
    kTooLong = 1340,
    kNoSuchCharacter = 1341,
    kDateOrder = 1342,
    kNoSuchDay = 1343
};

/// A text with its arguments printed.
template <class... Args>
[[nodiscard]] CString printed(FieldTextId id, const Args&... args) {
    RWCString text;
    GMSG::getString(static_cast<unsigned short>(id), text, args...);
    return text;
}

}  // namespace toolbox::dialog
