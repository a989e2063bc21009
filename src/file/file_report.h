// Failures of reads and writes, shown to the user.
#pragma once

#include "toolbox/platform.h"

namespace toolbox {

/// Shows the system's text for a code through the message service; nothing when there is no text.
void reportFileError(platform::ErrorCode code);

}  // namespace toolbox
