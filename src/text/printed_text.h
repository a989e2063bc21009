// The library's texts by the numbers that its families give them, with what is put into them.
#pragma once

#include <type_traits>

#include "toolbox/messages.h"

namespace toolbox::text {

template <class Id, class... Args>
requires std::is_enum_v<Id>
[[nodiscard]] CString printed(Id id, const Args&... args) {
    RWCString text;
    GMSG::getString(static_cast<unsigned short>(id), text, args...);
    return CString(text);
}

}  // namespace toolbox::text
