// Texts of what is done to tags, and of their editor.
#pragma once

#include <cstddef>

#include "toolbox/messages.h"
#include "toolbox/strings.h"
#include "toolbox/tag_edits.h"

namespace toolbox::tag {

/// What the user did to so many tags, as a menu says it.
[[nodiscard]] inline CString stepText(TvTagEdit::Action action, std::size_t count) {
    constexpr unsigned short kFirst = 1450;  // of each action for one tag, then for several
    RWCString text;
    GMSG::getString(static_cast<unsigned short>(kFirst + 2 * action + (count > 1)), text);
    return text;
}

}  // namespace toolbox::tag
