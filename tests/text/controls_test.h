// Identifiers shared by the tests and their resource script.
#pragma once

#define IDC_TEST_EDIT 101
#define IDC_TEST_COMBO 102
#define IDC_TEST_LIST 103

#define IDS_TEST_INT_RANGE 2001
#define IDS_TEST_LONG_RANGE 2002
#define IDS_TEST_REAL_RANGE 2003
#define IDS_TEST_DISPLAY 2004
