// Identifiers of the controls of the format dialogs, for resource scripts and code.
#pragma once

#define IDC_FORMAT_DESCRIPTION 1201
#define IDC_FORMAT_WIDTH 1202
#define IDC_FORMAT_DECIMALS 1203
#define IDC_FORMAT_LEFT 1204
#define IDC_FORMAT_RIGHT 1205
#define IDC_FORMAT_PREVIEW 1206
// What a field may hold, beside it, and what is wrong with the sample, below it.
#define IDC_FORMAT_WIDTH_RANGE 1207
#define IDC_FORMAT_DECIMALS_RANGE 1208
#define IDC_FORMAT_WARNING 1209
