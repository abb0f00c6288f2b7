# SPDX-License-Identifier: MIT
# Toolchain for AmigaOS 4: the cross compiler ppc-amigaos-g++, which must be in the PATH. docs/amigaos4.md says how to
# build with it. CMake has no platform for this system; Generic has no rules of any operating system.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR ppc)
set(CMAKE_CXX_COMPILER ppc-amigaos-g++)

set(ZELVO_AMIGAOS4_CLIB clib4 CACHE STRING "C library on AmigaOS 4: clib4, or newlib, which is part of the system")
set_property(CACHE ZELVO_AMIGAOS4_CLIB PROPERTY STRINGS clib4 newlib)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZELVO_AMIGAOS4_CLIB)

# Compiling and linking must use the same library. The C++ library's object for the system's threads is linked only if
# it is named.
set(CMAKE_CXX_FLAGS_INIT -mcrt=${ZELVO_AMIGAOS4_CLIB})
set(CMAKE_EXE_LINKER_FLAGS_INIT -athread=native)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
