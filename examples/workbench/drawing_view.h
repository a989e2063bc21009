// The drawing of a document.
#pragma once

#include "view.h"

void registerDrawingClass(HINSTANCE instance);
