// The texts in workbench_texts.inc, by their numbers.
#pragma once

#include "toolbox/messages.h"

enum WorkbenchText : unsigned short {
    kFirstKeyDescription = 3000,  ///< of the keys, in the order of their identifiers
    kFirstKeyHeader = 3020,       ///< in the same order; only those that are words
    kReadOnlyTitle = 3100,        ///< title
    kReadAgain,                   ///< name, as the next
    kOtherOnDisk,
    kGoneFromDisk,
    kSaveFirst = 3111,
    kUntitled,
    kFileFilter = 3114,
    kOpening,
    kSaving,
    kComputing,
    kItemsDone,
    kKeyNotSaved,
    kProgram = 3120,
    kNextStart,
    kWelcome,
    kTableName,
    kDrawingName,
    kCreatedOn,
    kBeamCount,
    kFirstModeHint = 3130,  ///< in the order of the modes' commands
    kNewLabel = 3140,
    kOpenElsewhere = 3152,
    kSettingsNotKept,  ///< their file
    kDrawingFilter,
    kDrawingWritten,     ///< file
    kDrawingNotWritten,  ///< file, the reason
    kDrawingCopied,
    kDrawingNotCopied,  ///< the reason
    kLabelsArranged,    ///< how many were moved, how many found no place
    kBeamHint = 3300,
    kPointLoadHint,
    kUniformLoadHint,
    kPlaceHint,
    kLabelHint,
    kPressOnBeam,
    kDragTheArrow,
    kNoBeamUnder,
    kSpanRefused = 3320,
    kTooManyLoads,
    kNoBeamForLabel,
    kBeamRefused,
    kLabelRefused,
    // Steps of the user, as the menu says them after "Undo".
    kStepAddBeam = 3340,
    kStepEditBeam,
    kStepMoveBeam,
    kStepDeleteBeam,
    kStepAddLoad,
    kStepMoveLoad,
    kStepDeleteLoad,
    kStepLoadUniformly,
    kStepDeleteLabel = 3351,
    kStepArrangeLabels,
};

/// A text of the program, printed with its arguments.
template <class... Args>
[[nodiscard]] CString text(unsigned short id, const Args&... args) {
    RWCString out;
    GMSG::getString(id, out, args...);
    return out;
}

/// Makes the texts known where they are no resources of the program; on Windows they are.
void registerWorkbenchTexts();
