// Identifiers of the resources of the dialog tests.
#pragma once

#define IDD_PLAIN 500
#define IDD_BROKEN 501  // names a window class that does not exist
#define IDD_SIZABLE 502
#define IDD_PALETTE 503
#define IDC_NAME 1001
#define IDC_NOTE 1002
#define IDC_LIST 1003
#define IDC_BOX 1004
#define IDC_LINE 1006
#define IDC_CIRCLE 1007
#define IDC_WIDTH 1008
#define IDA_FRAME 510
#define ID_COPY 601
#define ID_SAVE 602
#define ID_HELP_TOPICS 603
