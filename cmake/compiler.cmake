# SPDX-License-Identifier: MIT
# zelvo_flags: the options for compiling this project's code. The program and the hosts pass them on to everything that
# links them.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type; Release by default" FORCE)
endif()
set(is_gcc_12 OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12
   AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    set(is_gcc_12 ON)
endif()

add_library(zelvo_flags INTERFACE)
# No fused multiply-add: it rounds once instead of twice and would change every picture.
target_compile_options(zelvo_flags INTERFACE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast)
if(EMSCRIPTEN)
    # Without it a program ends at the first exception, even at one that would be caught.
    target_compile_options(zelvo_flags INTERFACE -fexceptions)
    target_link_options(zelvo_flags INTERFACE -fexceptions)
endif()
if(is_gcc_12)
    # GCC 12 wrongly reports overlaps in the standard library's string concatenation.
    target_compile_options(zelvo_flags INTERFACE -Wno-restrict)
endif()
# For translation units of several files. GCC takes the files for headers, whose classes should have no base in an unnamed
# namespace.
set(options_for_units $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
if(CMAKE_UNITY_BUILD)
    target_compile_options(zelvo_flags INTERFACE ${options_for_units})
endif()
# For code that takes longer to optimise than to run: tests, and sources that include large libraries of templates.
set(options_for_quick_compiling $<IF:$<BOOL:${ZELVO_SANITIZE}>,-O0,$<$<CONFIG:Release>:-O1>>)
if(ZELVO_WARNINGS_AS_ERRORS)
    target_compile_options(zelvo_flags INTERFACE -Werror)
endif()
if(ZELVO_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
    target_compile_options(zelvo_flags INTERFACE ${sanitizers} -fno-omit-frame-pointer)
    if(is_gcc_12)
        # With sanitizers GCC 12 wrongly reports uninitialised members in the standard library's regular expressions.
        target_compile_options(zelvo_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
    target_link_options(zelvo_flags INTERFACE ${sanitizers})
    if(NOT ZELVO_FUZZ)
        # Compiling takes longer than running the tests, and line numbers in reports are all the debug info needed. These
        # come before the options of targets, which may ask for less.
        set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -DNDEBUG")
    endif()
endif()
if(ZELVO_FUZZ)
    # Every file counts what it executes. Comparisons are not traced: the mutators know the file formats, and tracing
    # the loops over pixels would take most of the time.
    target_compile_options(zelvo_flags INTERFACE -fsanitize-coverage=inline-8bit-counters,pc-table)
endif()
