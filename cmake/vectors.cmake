# SPDX-License-Identifier: MIT
# ZELVO_SIMD: whether the fast forms of the costly stages are built. They need Highway; without it, or switched off,
# the program draws the same frames by the plain forms.
find_package(hwy QUIET)
option(ZELVO_SIMD "Build the vector forms of the drawing stages (needs Highway)" ${hwy_FOUND})
if(ZELVO_SIMD AND NOT hwy_FOUND)
    message(FATAL_ERROR "ZELVO_SIMD needs Highway (Debian: libhwy-dev); configure with -DZELVO_SIMD=OFF without it")
endif()
