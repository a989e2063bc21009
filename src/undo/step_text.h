// What a menu says of the next step.
#pragma once

#include "toolbox/strings.h"

namespace toolbox::undo {

/// "Undo Move load"; without a step "Undo".
[[nodiscard]] CString undoTextOf(const CString& step);
/// "Redo Move load"; without a step "Redo".
[[nodiscard]] CString redoTextOf(const CString& step);

}  // namespace toolbox::undo
