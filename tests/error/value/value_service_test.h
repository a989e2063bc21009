// Identifiers shared by the test and its resource script.
#pragma once

#define IDC_VALUE 101
#define IDC_LIST 103
#define IDC_OTHER 104

#define IDS_LOAD_RANGE 2001
#define IDS_LOAD_UNIT 2002
#define IDS_NOT_A_BEAM 2003
