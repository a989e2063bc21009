// Identifiers of the exchange tests' resources.
#pragma once

#define IDD_FIELDS 100
#define IDC_TEXT 101
#define IDC_LINES 102
#define IDC_NUMBER 103
#define IDC_CHECK 104
#define IDC_THREE 105
#define IDC_FIRST 106
#define IDC_SECOND 107
#define IDC_THIRD 108
#define IDC_DROPDOWN 109
#define IDC_CHOICE 110
#define IDC_LIST 111
#define IDC_DATE 112
#define IDC_PICKER 113
#define IDC_VALUE 114
#define IDC_NONE 199

#define IDS_NAME 3000
#define IDS_FORCE 3001
#define IDS_ORDER 3002
