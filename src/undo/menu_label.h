// The text of a menu's item for a step.
#pragma once

#include <string_view>

#include "toolbox/strings.h"

namespace toolbox::undo {

/// `text` as an item shows it that showed `former`: its key after a tab stays, and when it
/// underlined a letter the first is underlined. A '&' of the text itself is shown as one; control
/// characters become blanks.
[[nodiscard]] CString menuLabel(const CString& text, std::string_view former);

}  // namespace toolbox::undo
