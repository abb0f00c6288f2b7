# SPDX-License-Identifier: MIT
# ZELVO_SIMD: whether the fast forms of the costly stages are built. They need Highway; without it, or switched off,
# the program draws the same frames by the plain forms. Builds for another processor, and those that only compare
# frames, do without any library unless they are asked for it.
if(ZELVO_SIMD OR NOT (CMAKE_CROSSCOMPILING OR ZELVO_FRAMES_ONLY))
    find_package(hwy QUIET)
endif()
# On other processors the vector code is untested, or the instruction set has no double-precision vectors.
string(REGEX MATCH "^(x86_64|AMD64|aarch64|arm64)$" tried_processor "${CMAKE_SYSTEM_PROCESSOR}")
if(hwy_FOUND AND tried_processor)
    set(has_highway ON)
else()
    set(has_highway OFF)
endif()
option(ZELVO_SIMD "Build the vector forms of the drawing stages (needs Highway)" ${has_highway})
if(ZELVO_SIMD AND NOT has_highway)
    message(FATAL_ERROR "ZELVO_SIMD needs Highway (Debian: libhwy-dev) on x86-64 or arm64; configure with -DZELVO_SIMD=OFF")
endif()
