// A date as people write it.
#pragma once

#include "toolbox/dates.h"
#include "toolbox/strings.h"

/// "14 August 2026" or "14 août 2026", in the language of the message service; French writes the
/// first of a month "1er". The dates' own language stays as it was.
[[nodiscard]] CString dateInWords(const TarvDate& date);
