// Identifiers of the controls of the dialogs about documents, for resource scripts and code. The
// buttons with answers follow each other.
#pragma once

#define IDC_DOCUMENT_ICON 1500
#define IDC_DOCUMENT_TEXT 1501
#define IDC_DOCUMENT_LINES 1502
#define IDC_DOCUMENT_ANSWER 1503
#define IDC_DOCUMENT_ANSWER_2 1504
#define IDC_DOCUMENT_ANSWER_3 1505
#define IDC_RECOVERY_LIST 1506
#define IDC_RECOVERY_RECOVER 1507
#define IDC_RECOVERY_DELETE 1508
