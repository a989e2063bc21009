// The version of the library: the macros are that of the headers that a program is compiled with,
// the functions that of the library that it runs with. With a shared library these may differ, and
// a program that needs what a later version added asks first:
//     if (toolbox::version() < TOOLBOX_VERSION) ...
//
// Major changes break the interface, minor ones add to it, patches do neither. Resource scripts may
// include this header for the macros.
#pragma once

/// Changes of it break the interface.
#define TOOLBOX_VERSION_MAJOR 1
/// Changes of it add to the interface.
#define TOOLBOX_VERSION_MINOR 0
/// Changes of it do neither.
#define TOOLBOX_VERSION_PATCH 0

/// Later versions have greater numbers: 10203 is 1.2.3.
#define TOOLBOX_VERSION \
    (TOOLBOX_VERSION_MAJOR * 10000 + TOOLBOX_VERSION_MINOR * 100 + TOOLBOX_VERSION_PATCH)

/// The same as text: "1.2.3".
#define TOOLBOX_VERSION_TEXT                    \
    TOOLBOX_DETAIL_QUOTE(TOOLBOX_VERSION_MAJOR) \
    "." TOOLBOX_DETAIL_QUOTE(TOOLBOX_VERSION_MINOR) "." TOOLBOX_DETAIL_QUOTE(TOOLBOX_VERSION_PATCH)
/// The macro's value in quotation marks.
#define TOOLBOX_DETAIL_QUOTE(number) TOOLBOX_DETAIL_QUOTE_AS_IS(number)
/// For TOOLBOX_DETAIL_QUOTE.
#define TOOLBOX_DETAIL_QUOTE_AS_IS(number) #number

#if !defined(RC_INVOKED)

#include "toolbox/export.h"

namespace toolbox {

/// TOOLBOX_VERSION as the library was compiled.
TB_API int version();
/// TOOLBOX_VERSION_TEXT as the library was compiled. Never null, never freed.
TB_API const char* versionText();

}  // namespace toolbox

#endif
