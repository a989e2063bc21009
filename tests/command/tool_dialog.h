// What the tool dialog's template and its test share.
#pragma once

#define IDD_PALETTE 100
#define IDD_BROKEN 101  // names a window class that does not exist
#define IDC_LINE 1001
#define IDC_CIRCLE 1002
#define IDC_HELP_TEXT 1003
