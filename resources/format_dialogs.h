// Identifiers of the controls of the format dialogs, for resource scripts and code.
#pragma once

#define IDC_FORMAT_DESCRIPTION 1201
#define IDC_FORMAT_WIDTH 1202
#define IDC_FORMAT_DECIMALS 1203
#define IDC_FORMAT_LEFT 1204
#define IDC_FORMAT_RIGHT 1205
#define IDC_FORMAT_PREVIEW 1206
