// The result table of a document: one line for each beam, one column for each selected key.
#pragma once

#include "view.h"

void registerTableClass(HINSTANCE instance);
