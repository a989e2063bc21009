# Windows programs with Debian's mingw-w64; TOOLBOX_ARCH is i686 or x86_64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${TOOLBOX_ARCH})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOOLBOX_ARCH)

set(triple ${TOOLBOX_ARCH}-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)  # GoogleTest's build asks for one
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_RC_FLAGS_INIT "--codepage=1252")
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

if(TOOLBOX_ARCH STREQUAL "i686")
    # The x87 unit keeps 80 bits between operations; SSE gives the native build's results.
    set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
endif()

find_program(WINE wine)
set(CMAKE_CROSSCOMPILING_EMULATOR ${WINE})
