// SPDX-License-Identifier: MIT
// dos.library: the command line, paths, and files by the system's names.
#pragma once

#include "platform/exec.h"

#include <cstdio>

#ifdef __amigaos4__

#include <proto/dos.h>

using ArgumentSlot = LONG;

/// The C library of this system knows volumes by itself.
inline std::FILE *open_file(const char *name, const char *mode) {
    return std::fopen(name, mode);
}

#else

/// One slot of ReadArgs' result: a number, or a pointer of the host's size.
using ArgumentSlot = std::intptr_t;

struct RDArgs;

/// Parses the command line by a template such as "FILE/A" into one slot an item; null if it does not fit.
/// The result owns the texts that the slots point to.
RDArgs *ReadArgs(CONST_STRPTR arguments_template, ArgumentSlot *slots, RDArgs *reserved);

/// Frees the result of ReadArgs and the texts that it owns; null is ignored.
void FreeArgs(RDArgs *arguments);

/// Joins `file` to `drawer` in place, with a "/" between them unless the drawer is empty or ends in ":" or
/// "/". Returns FALSE and leaves the drawer alone if the path does not fit into `size` bytes.
BOOL AddPart(STRPTR drawer, CONST_STRPTR file, ULONG size);

/// fopen by the system's name: a host maps the volumes ENV: and ENVARC: to folders of its own and takes any
/// other name as a path. Null if there is no such file, or if it is not one that can be read like a file
/// (a folder, a pipe nobody writes to).
std::FILE *open_file(const char *name, const char *mode);

#endif
