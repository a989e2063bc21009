// The size of the buffers in which templates are loaded and printed.
#pragma once

namespace toolbox::text {

/// 511 characters of a template, or of what it prints. Each call has its own: while a box is shown,
/// further reports may come in.
using MessageBuffer = char[512];

}  // namespace toolbox::text
