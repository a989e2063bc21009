// Numbers of the texts of dialogs and of the result table, in workbench_texts.inc.
#pragma once

enum DialogText : unsigned short {
    // Rules of typed numbers.
    kSpanRule = 3200,
    kUniformRule,
    kPositionRule,
    kForceRule,

    kLoadOffBeam = 3205,  ///< position, span
    kNoSection,
    kPendingLoad,
    kPositionHeading,
    kForceHeading,
    kNameNeeded,

    kSampleValue = 3235,
    kNotCopied,

    kNoMessages = 3240,
    kAboutLines,  ///< version, bits, C++ standard, log file

    kMenuEdit = 3250,
    kMenuCopy,
    kMenuFormat,  ///< header
    kMenuHide,    ///< header
    kChooseColumn,
    kRowsCopied,  ///< how many
};
