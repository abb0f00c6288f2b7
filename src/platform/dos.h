// SPDX-License-Identifier: MIT
// dos.library: the command line and paths.
#pragma once

#include "platform/exec.h"

#ifdef __amigaos4__

#include <proto/dos.h>

#else

struct RDArgs;

/// Parses the command line by a template such as "FILE/A" into one slot per item; null if it does not fit.
/// The result owns the texts that the slots point to.
RDArgs *ReadArgs(CONST_STRPTR arguments_template, ArgumentSlot *slots, RDArgs *reserved);

/// Frees the result of ReadArgs and the texts that it owns; null is ignored.
void FreeArgs(RDArgs *arguments);

/// Joins `file` to `drawer` in place, with a "/" between them unless the drawer is empty or ends in ":" or
/// "/". Returns FALSE and leaves the drawer alone if the path does not fit into `size` bytes.
BOOL AddPart(STRPTR drawer, CONST_STRPTR file, ULONG size);

#endif
