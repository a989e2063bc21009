// Numbers of the texts in workbench_texts.inc.
#pragma once

enum WorkbenchText : unsigned short {
    kFirstKeyDescription = 3000,  ///< of the keys, in the order of their identifiers
};

/// Makes the texts known where they are no resources of the program; on Windows they are.
void registerWorkbenchTexts();
