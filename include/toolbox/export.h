// Marks what the shared library exports.
//
// Applications that link the static library on Windows define TOOLBOX_STATIC; the CMake target
// toolbox::toolbox_static does it for them. TOOLBOX_BUILDING is for the library's own build.
#pragma once

#if defined(_WIN32)
#if defined(TOOLBOX_STATIC)
#define TB_API
#elif defined(TOOLBOX_BUILDING)
#define TB_API __declspec(dllexport)
#else
#define TB_API __declspec(dllimport)
#endif
#else
#define TB_API __attribute__((visibility("default")))
#endif
