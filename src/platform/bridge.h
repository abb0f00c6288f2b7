// SPDX-License-Identifier: MIT
// What the program needs beside the system's own calls and types: pointers in tags and argument slots have
// the size of the host's pointers, and files are opened as streams of the C library, wherever the program
// runs.
#pragma once

#include <cstdio>

#ifdef __amigaos4__

#include <exec/types.h>

/// What a tag carries: a number or a pointer.
using TagData = ULONG;

/// One slot of ReadArgs' result: a number or a pointer.
using ArgumentSlot = LONG;

/// The C library of this system knows volumes by itself.
inline std::FILE *open_file(const char *name, const char *mode) {
    return std::fopen(name, mode);
}

#else

#include <cstdint>

/// What a tag carries: a 32-bit number, or a pointer of the host's size.
using TagData = std::uintptr_t;

/// One slot of ReadArgs' result: a number, or a pointer of the host's size.
using ArgumentSlot = std::intptr_t;

/// fopen by the system's name: a host maps the volumes ENV: and ENVARC: to folders of its own and takes any
/// other name as a path. Null if there is no such file, or if it cannot be read like a file (a folder, a pipe
/// that nobody writes to).
std::FILE *open_file(const char *name, const char *mode);

#endif

/// A pointer as a tag carries it.
inline TagData tag_pointer(const void *pointer) {
    return reinterpret_cast<TagData>(pointer);
}
