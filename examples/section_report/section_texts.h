// The program's texts: their numbers, and how the message service finds them.
#pragma once

enum SectionText : unsigned short {
    kTitle = 2000,
    kBeam = 2007,
    kLabels,
    kUsualLabel,
    kRestored,
    kNotChanged,
    kBadToken,
    kKeysUsed,
    kDeviation,
    kFirstDescription = 2020,  ///< of the keys, in the order of their ids
};

/// Makes the texts known where they are no resources of the program; on Windows they are.
void registerSectionTexts();
