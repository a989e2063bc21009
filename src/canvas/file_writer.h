// Writing a drawing's file.
#pragma once

#include <string_view>

#include "toolbox/strings.h"

namespace toolbox::canvas {

/// Writes the bytes beside the file of that name, then in its place. 0 with the system's reason in
/// `why`, unless null; the file is then as it was.
int writeWhole(const char* fileName, std::string_view bytes, CString* why);

}  // namespace toolbox::canvas
