# SPDX-License-Identifier: MIT
# ZELVO_SIMD: whether the fast forms of the costly stages are built. They need Highway. Without them the program draws
# the same frames with the plain forms.
set(ZELVO_SIMD AUTO CACHE STRING "Build the vector forms of the drawing stages: AUTO (if Highway is found), ON or OFF")
set_property(CACHE ZELVO_SIMD PROPERTY STRINGS AUTO ON OFF)

set(has_simd OFF)
# On other processors the vector code is untested, or the instruction set has no double-precision vectors.
string(REGEX MATCH "^(x86_64|AMD64|aarch64|arm64)$" tried_processor "${CMAKE_SYSTEM_PROCESSOR}")
if(ZELVO_SIMD AND EMSCRIPTEN)
    # Headers are enough, since WebAssembly has one instruction set and nothing to choose from. They are copied, because
    # no other header of this system may be found beside them. Highway 1.0.3 looks bytes up one by one, for fear of a fault
    # in browsers that was fixed in April 2021; the copy uses the instruction for it.
    find_path(ZELVO_HIGHWAY_HEADERS hwy/highway.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
    if(ZELVO_HIGHWAY_HEADERS)
        set(highway_copy ${CMAKE_BINARY_DIR}/highway)
        set(wasm_vectors hwy/ops/wasm_128-inl.h)
        file(COPY ${ZELVO_HIGHWAY_HEADERS}/hwy DESTINATION ${highway_copy} PATTERN wasm_128-inl.h EXCLUDE)
        file(READ ${ZELVO_HIGHWAY_HEADERS}/${wasm_vectors} text)
        set(lookup "return Vec128<TI, NI>{wasm_i8x16_swizzle")
        string(REPLACE "#if 0\n  ${lookup}" "#if 1\n  ${lookup}" text "${text}")
        # A file that stays the same keeps its time, so that nothing is compiled again.
        file(GENERATE OUTPUT ${highway_copy}/${wasm_vectors} CONTENT "${text}")
        add_library(hwy::hwy INTERFACE IMPORTED)
        target_include_directories(hwy::hwy INTERFACE ${highway_copy})
        target_compile_options(hwy::hwy INTERFACE -msimd128)
        set(has_simd ON)
    endif()
elseif(ZELVO_SIMD AND tried_processor)
    find_package(hwy QUIET)
    set(has_simd ${hwy_FOUND})
endif()
if(ZELVO_SIMD AND NOT has_simd AND NOT ZELVO_SIMD STREQUAL "AUTO")
    message(FATAL_ERROR "ZELVO_SIMD needs Highway (Debian: libhwy-dev) on x86-64, arm64 or WebAssembly; configure with -DZELVO_SIMD=OFF")
endif()
# The result for the rest of the build: ON or OFF.
set(ZELVO_SIMD ${has_simd})
