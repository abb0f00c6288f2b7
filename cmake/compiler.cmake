# SPDX-License-Identifier: MIT
# What every target is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# A fused multiply-add rounds once where the pictures' arithmetic rounds twice, so it would change every picture.
add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 sees overlaps in the standard library's own string concatenation.
    add_compile_options(-Wno-restrict)
endif()
if(ZELVO_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()
if(ZELVO_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
    add_compile_options(${sanitizers} -fno-omit-frame-pointer)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # With sanitizers GCC 12 sees uninitialised members in the standard library's own regular expressions.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
    add_link_options(${sanitizers})
    if(NOT ZELVO_FUZZ)
        # Tests wait longer for the compiler than for themselves; a report's lines are all that is asked of a debugger.
        add_compile_options(-O1 -g1)
    endif()
endif()
if(ZELVO_FUZZ)
    # Every file counts what it executes. Comparisons are not traced: the mutators know what the files look like, and in
    # the loops over pixels the tracing takes most of the time.
    add_compile_options(-fsanitize-coverage=inline-8bit-counters,pc-table)
endif()
