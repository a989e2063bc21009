// The names of the kinds of formats, for users.
#pragma once

#include "toolbox/formats.h"

namespace toolbox::format {

/// Text `id` of the module that owns `window` (null: the application); empty when there is none.
[[nodiscard]] RWCString typeName(HWND window, unsigned int id);

}  // namespace toolbox::format
