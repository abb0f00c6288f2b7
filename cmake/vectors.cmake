# SPDX-License-Identifier: MIT
# ZELVO_SIMD: whether the fast forms of the costly stages are built. They need Highway; without it, or switched off,
# the program draws the same frames by the plain forms. Builds for another processor, and those that only compare
# frames, do without any library.
if(NOT CMAKE_CROSSCOMPILING AND NOT ZELVO_FRAMES_ONLY)
    find_package(hwy QUIET)
endif()
if(hwy_FOUND)
    set(has_highway ON)
else()
    set(has_highway OFF)
endif()
option(ZELVO_SIMD "Build the vector forms of the drawing stages (needs Highway)" ${has_highway})
if(ZELVO_SIMD AND NOT has_highway)
    message(FATAL_ERROR "ZELVO_SIMD needs Highway (Debian: libhwy-dev); configure with -DZELVO_SIMD=OFF without it")
endif()
