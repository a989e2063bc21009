// Identifiers of the sheet tests' resources.
#pragma once

#define IDD_SPAN 100
#define IDC_SPAN 101
#define IDC_BUTTON 102
#define IDC_LOAD 103
