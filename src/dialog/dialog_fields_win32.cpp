// How a dialog's fields are filled and read.
#include "dialog/dialog_state_win32.h"

bool TvDialog::fillFields() {
    return true;
}

bool TvDialog::readFields() {
    return true;
}

void TvDialog::takeBackFields() {}
