// The program's texts: their numbers, and how the message service finds them.
#pragma once

#include "toolbox/messages.h"

enum SectionText : unsigned short {
    kTitle = 2000,
    kBeam = 2007,  ///< span, load
    kLabels,
    kUsualLabel,
    kRestored,    ///< how many
    kNotChanged,  ///< key, value
    kBadToken,    ///< column, word
    kKeysUsed,
    kDeviation,                ///< of masses and section moduli, in percent
    kFirstDescription = 2020,  ///< of the keys, in the order of their identifiers
    kNameHeader = 2041,
    kNotWritten,   ///< file
    kNotReadable,  ///< file
    kStored,       ///< file
    kHeader,       ///< version, format, mask, description
    kDates,        ///< of creation, time stamp and net; offset of the index
    kIndex,        ///< description, number of blocks
    kFetched,      ///< how many are equal, of how many
    kReported,
    kNotPrinted,
    kUsage,
    kUsageOfKeys,  ///< its second part
};

/// Makes the texts known where they are no resources of the program; on Windows they are.
void registerSectionTexts();

/// A text in the language of the message service, printed with its arguments.
template <class... Args>
[[nodiscard]] CString text(unsigned short id, const Args&... args) {
    RWCString out;
    GMSG::getString(id, out, args...);
    return out;
}
