// What the tool dialog's template and its test share.
#pragma once

#define IDD_PALETTE 100
#define IDC_LINE 1001
#define IDC_CIRCLE 1002
