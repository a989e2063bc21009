// Where a dialog stands.
#include "dialog/dialog_state_win32.h"

void TvDialog::arrange() {}
