// SPDX-License-Identifier: MIT
// What the program needs besides the system's own calls and types, on every host: tags and argument slots
// that can hold the host's pointers, and files as streams of the C library.
#pragma once

#include <cstdio>

#ifdef __amigaos4__

#include <exec/types.h>

/// What a tag carries: a number or a pointer.
using TagData = ULONG;

/// One slot of ReadArgs' result: a number or a pointer.
using ArgumentSlot = LONG;

/// The C library of this system handles volumes itself.
inline std::FILE *open_file(const char *name, const char *mode) {
    return std::fopen(name, mode);
}

#else

#include <cstdint>

/// What a tag carries: a 32-bit number, or a pointer of the host's size.
using TagData = std::uintptr_t;

/// One slot of ReadArgs' result: a number, or a pointer of the host's size.
using ArgumentSlot = std::intptr_t;

/// fopen with the system's name for a file. A host maps the volumes ENV: and ENVARC: to its own folders; any
/// other name is a path. Null if there is no such file, or if it cannot be read like one (a folder, a pipe).
std::FILE *open_file(const char *name, const char *mode);

#endif

/// A pointer in the form that a tag carries.
inline TagData tag_pointer(const void *pointer) {
    return reinterpret_cast<TagData>(pointer);
}
