// Numbers of the texts of dialogs and of the result table, in workbench_texts.inc.
#pragma once

enum DialogText : unsigned short {
    // Range texts: message, limits, how the number is shown.
    kSpanRange = 3200,
    kUniformRange,
    kPositionRange,
    kForceRange,
    kNoNumber,     ///< what was typed
    kLoadOffBeam,  ///< position, span
    kNoSection,
    kPendingLoad,
    kPositionHeading,
    kForceHeading,
    kNumber,
    kNumberNeeded,
    kNameNeeded,

    kUnknownKey = 3220,  ///< word, as the next
    kKeyNotAvailable,
    kUnclosedToken,
    kKeyOutsideToken,

    kKeyHeading = 3230,
    kDescriptionHeading,
    kHeaderHeading,
    kSampleHeading,
    kPlaceHeading,
    kSampleValue,
    kNotCopied,
    kTokenCopied,  ///< key
    kWholeNumber,

    kNoMessages = 3240,
    kAboutLines,  ///< version, bits, C++ standard, log file

    kMenuEdit = 3250,
    kMenuCopy,
    kMenuFormat,  ///< header
    kMenuHide,    ///< header
    kChooseColumn,
    kRowsCopied,  ///< how many
};
