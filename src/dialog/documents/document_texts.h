// Texts of the dialogs about documents.
#pragma once

#include "text/printed_text.h"

namespace toolbox::documents {

using text::printed;

/// Their numbers.
enum TextId : unsigned short {
    kInUse = 1550,  ///< what happened
    kMayTakeOver,   ///< what happened, when its program was heard of last
    kNotHeardOf,    ///< the same; it is not known when
    kSecondsAgo,    ///< how many; minutes, hours and days follow
    kMinutesAgo,
    kHoursAgo,
    kDaysAgo,
    kChangedOnDisk,  ///< name
    kDamaged,        ///< name
    kInPlace,        ///< why
    kUnsavedWork,    ///< name, when it was saved, its size
    kUnnamed,
    kUnknownTime,
    kKilobytes,     ///< how many
    kOpenReadOnly,  // buttons
    kTakeOver,
    kSaveElsewhere,
    kReplace,
    kTakeTheirs,
    kOpenRescued,
    kWriteInPlace,
    kRecover,
    kLater,
    kDeleteWork,
    kCancel,
    kHeadings,     ///< of the list of unsaved work, divided by '|'
    kDamagedWork,  ///< document
    kReallyDelete,
    kNotDeleted  ///< document
};

}  // namespace toolbox::documents
