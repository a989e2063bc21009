// Identifiers of the controls of the progress meter's dialog, for resource scripts and code. The
// cancel button is IDCANCEL.
#pragma once

#define IDC_METER_LINE_0 2024
#define IDC_METER_LINE_1 2034
#define IDC_METER_BAR 2044
#define IDC_METER_ELAPSED 2054
// The time left; a template may do without it.
#define IDC_METER_LEFT 2064
