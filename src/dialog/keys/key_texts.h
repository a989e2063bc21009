// Texts of the list of keys.
#pragma once

#include "text/printed_text.h"

namespace toolbox::keys {

using text::printed;

/// Their numbers.
enum TextId : unsigned short {
    kAllKeysName = 1370,
    kKeyHeading = 1371,
    kDescriptionHeading = 1372,
    kHeaderHeading = 1373,
    kUnitsHeading = 1374,
    kSampleHeading = 1375,
    kPlaceHeading = 1376,
    kNotSaved = 1377,
    kResetSeveral = 1378,
    kNotCopied = 1379,
    kNoBar = 1380,
    kSampleText = 1381
};

}  // namespace toolbox::keys
