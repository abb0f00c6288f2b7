# SPDX-License-Identifier: MIT
# ZELVO_SIMD: whether the fast forms of the costly stages are built. They need Highway. Without them the program draws
# the same frames with the plain forms.
set(ZELVO_SIMD AUTO CACHE STRING "Build the vector forms of the drawing stages: AUTO (if Highway is found), ON or OFF")
set_property(CACHE ZELVO_SIMD PROPERTY STRINGS AUTO ON OFF)

set(has_simd OFF)
# On other processors the vector code is untested, or the instruction set has no double-precision vectors.
string(REGEX MATCH "^(x86_64|AMD64|aarch64|arm64)$" tried_processor "${CMAKE_SYSTEM_PROCESSOR}")
if(ZELVO_SIMD AND tried_processor)
    find_package(hwy QUIET)
    set(has_simd ${hwy_FOUND})
endif()
if(ZELVO_SIMD AND NOT has_simd AND NOT ZELVO_SIMD STREQUAL "AUTO")
    message(FATAL_ERROR "ZELVO_SIMD needs Highway (Debian: libhwy-dev) on x86-64 or arm64; configure with -DZELVO_SIMD=OFF")
endif()
# The result for the rest of the build: ON or OFF.
set(ZELVO_SIMD ${has_simd})
