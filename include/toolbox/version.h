// The library's version, for the preprocessor. Major changes break the interface, minor ones add to
// it, patches do neither.
#pragma once

#define TOOLBOX_VERSION_MAJOR 1
#define TOOLBOX_VERSION_MINOR 0
#define TOOLBOX_VERSION_PATCH 0
#define TOOLBOX_VERSION_TEXT "1.0.0"
