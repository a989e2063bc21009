# Compile options of every target and the helpers that declare tests, examples and benchmarks.

# What makes a fault in the code harder to use: a check of the stack's frame at the end of functions that
# have arrays, the C library's checked calls (they need the optimizer, and mingw's do not link), tables of
# the program's imports that are read-only once it runs, addresses that differ from run to run.
# tests/checks/hardening_test.py asks the built files.
function(toolbox_harden target)
    target_compile_options(${target} PRIVATE -fstack-protector-strong)
    if(WIN32)
        # The static run-time of the check: no further DLL beside the program. Of the system's libraries
        # the last, for the sake of programs that link the static library.
        target_link_libraries(${target} PRIVATE -l:libssp.a)
        target_link_options(${target} PRIVATE -Wl,--dynamicbase,--nxcompat)
        if(CMAKE_SIZEOF_VOID_P EQUAL 8)
            target_link_options(${target} PRIVATE -Wl,--high-entropy-va)
        endif()
        return()
    endif()
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
    if(NOT TOOLBOX_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
        # Debian's packages define it already, at a lower level.
        target_compile_options(${target} PRIVATE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
    endif()
endfunction()

function(toolbox_compile_options target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
        -Wold-style-cast -Wformat=2 -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
        # What these find depends on what the optimizer inlined, and GCC 12 has false alarms about
        # its own strings. They are for the unoptimized builds only.
        target_compile_options(${target} PRIVATE -Wno-restrict
            -Wno-array-bounds -Wno-dangling-pointer -Wno-free-nonheap-object -Wno-maybe-uninitialized
            -Wno-mismatched-new-delete -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
    if(TOOLBOX_HARDEN)
        toolbox_harden(${target})
    endif()
    # No fused operations: figures agree to the last digit between the builds.
    target_compile_options(${target} PRIVATE -ffp-contract=off)
    if(WIN32)
        target_compile_definitions(${target} PRIVATE NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
        if(CMAKE_BUILD_TYPE STREQUAL "Debug")
            target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
        endif()
    else()
        # Files over 2 GiB open in 32-bit builds too.
        target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64)
    endif()
    if(TOOLBOX_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${TOOLBOX_SANITIZE}
            -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${TOOLBOX_SANITIZE})
    endif()
endfunction()

# toolbox_system_libraries(<variable>)
#   The linker's flags for the libraries that a program of the static library needs besides.
function(toolbox_system_libraries variable)
    get_target_property(libraries toolbox_static INTERFACE_LINK_LIBRARIES)
    set(flags)
    foreach(library IN LISTS libraries)
        if(library MATCHES "^[a-z0-9]+$")
            list(APPEND flags -l${library})
        elseif(library MATCHES "^[$]<LINK_ONLY:(-l:[a-z0-9.]+)>$")
            list(PREPEND flags ${CMAKE_MATCH_1})   # it needs some of the others
        endif()
    endforeach()
    set(${variable} ${flags} PARENT_SCOPE)
endfunction()

# The DLLs that every program here needs beside it. Windows has no run path, so the programs of one
# build all go to <build>/bin, and the compiler's run-time DLLs are copied there once.
if(WIN32)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    foreach(dll IN ITEMS libstdc++-6.dll libwinpthread-1.dll libgcc_s_dw2-1.dll
                         libgcc_s_seh-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT EXISTS "${path}")
            # winpthread lies with the C run-time rather than with the compiler.
            set(path /usr/${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32/lib/${dll})
        endif()
        if(EXISTS "${path}")
            file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
            list(APPEND TOOLBOX_RUNTIME_DLLS ${path})
        endif()
    endforeach()
endif()

# The headers of the standard library that most sources need: parsed once for each target.
set(TOOLBOX_USUAL_HEADERS <algorithm> <array> <map> <memory> <span> <string> <string_view> <utility>
                          <vector>)

# toolbox_sources(<target> <file>...)
#   target_sources() for files that may be resource scripts: the resource compiler does not tell what
#   a script includes.
function(toolbox_sources target)
    target_sources(${target} PRIVATE ${ARGN})
    foreach(script IN LISTS ARGN)
        if(script MATCHES "[.]rc$")
            get_filename_component(path ${script} ABSOLUTE)
            get_filename_component(folder ${path} DIRECTORY)
            file(GLOB included CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*
                 ${folder}/*.inc ${folder}/*.h ${folder}/*.rc)
            set_property(SOURCE ${script} APPEND PROPERTY OBJECT_DEPENDS ${included})
        endif()
    endforeach()
endfunction()

# toolbox_program(<name> [INTERNAL] SOURCES <file>...)
#   A program linked with the shared library; INTERNAL links the static one and may include what
#   lies under src/ (an exported interface is not needed then).
function(toolbox_program name)
    cmake_parse_arguments(arg "INTERNAL" "" "SOURCES" ${ARGN})
    add_executable(${name})
    toolbox_sources(${name} ${arg_SOURCES})
    toolbox_compile_options(${name})
    if(arg_INTERNAL)
        target_link_libraries(${name} PRIVATE toolbox::toolbox_static)
        target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src)
    else()
        target_link_libraries(${name} PRIVATE toolbox::toolbox)
    endif()
endfunction()

# toolbox_add_test(<name> [LONG] COMMAND <command>...)
#   add_test under a name that starts with the build, and the build as its label, so that one ctest
#   run over several builds tells them apart. LONG tests have the label "long" besides: a plain ./test
#   leaves them out, ./test long runs them. A test may take 2 minutes, a LONG one 5.
function(toolbox_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "LONG" "" "")
    set(full ${TOOLBOX_TEST_PREFIX}${name})
    add_test(NAME ${full} ${arg_UNPARSED_ARGUMENTS})
    set(labels)
    set(seconds 120)
    if(TOOLBOX_TEST_PREFIX)
        string(REGEX REPLACE "[.]$" "" labels ${TOOLBOX_TEST_PREFIX})
    endif()
    if(arg_LONG)
        list(APPEND labels long)
        set(seconds 300)
    endif()
    set_tests_properties(${full} PROPERTIES TIMEOUT ${seconds} LABELS "${labels}")
endfunction()

# What compiles tests faster: the library is what is optimized, not they. (Native release builds check
# the C library's calls, which needs the optimizer.)
function(toolbox_test_options target)
    if(WIN32 AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
        target_compile_options(${target} PRIVATE -O0)
    endif()
endfunction()

# toolbox_test(<name> [INTERNAL] [DISPLAY] [LONG] [TIMEOUT <s>] SOURCES <file>...)
#   A GoogleTest program and its one ctest entry. DISPLAY marks tests that open windows
#   or use the clipboard: on Windows they run one at a time and have the window kit of tests/support.
function(toolbox_test name)
    cmake_parse_arguments(arg "INTERNAL;DISPLAY;LONG" "TIMEOUT" "SOURCES" ${ARGN})
    set(internal)
    if(arg_INTERNAL)
        set(internal INTERNAL)
    endif()
    set(long)
    if(arg_LONG)
        set(long LONG)
    endif()
    toolbox_program(${name} ${internal} SOURCES ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE toolbox_test_support)
    toolbox_test_options(${name})
    if(TOOLBOX_PRECOMPILE)
        string(TOLOWER "test_headers_${internal}" headers)
        target_precompile_headers(${name} REUSE_FROM ${headers})
    endif()
    set(command ${name})
    if(CMAKE_CROSSCOMPILING_EMULATOR)
        set(command ${PROJECT_SOURCE_DIR}/scripts/run-windows-test $<TARGET_FILE:${name}>)
    endif()
    toolbox_add_test(${name} ${long} COMMAND ${command})
    if(arg_TIMEOUT)
        set_tests_properties(${TOOLBOX_TEST_PREFIX}${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
    endif()
    if(arg_DISPLAY AND WIN32)
        target_link_libraries(${name} PRIVATE toolbox_window_kit)
        set_tests_properties(${TOOLBOX_TEST_PREFIX}${name} PROPERTIES RESOURCE_LOCK display)
    endif()
endfunction()

# toolbox_fuzz(<name> [RUNS <n>] [SEEDS <folder>] SOURCES <file>...)
#   A libFuzzer program. As a test it makes a fixed number of runs from a fixed seed, starting from
#   the files in a folder, else in <name>_seeds beside its sources, when there is one.
function(toolbox_fuzz name)
    cmake_parse_arguments(arg "" "RUNS;SEEDS" "SOURCES" ${ARGN})
    if(NOT arg_RUNS)
        set(arg_RUNS 20000)
    endif()
    toolbox_program(${name} INTERNAL SOURCES ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz
                                               ${PROJECT_SOURCE_DIR}/tests)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set(seeds ${arg_SEEDS})
    if(NOT seeds)
        set(seeds ${CMAKE_CURRENT_SOURCE_DIR}/${name}_seeds)
    endif()
    if(NOT IS_DIRECTORY ${seeds})
        set(seeds)
    endif()
    # What it finds goes to the first folder named, so that the seeds stay as they are.
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${name}_found)
    toolbox_add_test(${name} COMMAND ${name} -runs=${arg_RUNS} -seed=1 -timeout=20
                     ${CMAKE_CURRENT_BINARY_DIR}/${name}_found ${seeds})
endfunction()

# Every subfolder that has a CMakeLists.txt.
function(toolbox_add_subfolders)
    file(GLOB folders CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*/CMakeLists.txt)
    foreach(file IN LISTS folders)
        get_filename_component(folder ${file} DIRECTORY)
        add_subdirectory(${folder})
    endforeach()
endfunction()
