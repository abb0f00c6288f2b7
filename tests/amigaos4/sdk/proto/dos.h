// SPDX-License-Identifier: MIT
// dos.library's calls.
#ifndef PROTO_DOS_H
#define PROTO_DOS_H

#include <exec/exec.h>

struct RDArgs;

struct DOSIFace {
    struct InterfaceData Data;
    struct RDArgs *ReadArgs(CONST_STRPTR arguments_template, int32 *array, struct RDArgs *arguments);
    void FreeArgs(struct RDArgs *arguments);
    int32 AddPart(STRPTR drawer, CONST_STRPTR file, uint32 size);
};

extern struct Library *DOSBase;
extern struct DOSIFace *IDOS;

#ifdef __USE_INLINE__
#define ReadArgs(arguments_template, array, arguments)                                                       \
    IDOS->ReadArgs((arguments_template), (array), (arguments))
#define FreeArgs(arguments) IDOS->FreeArgs((arguments))
#define AddPart(drawer, file, size) IDOS->AddPart((drawer), (file), (size))
#endif

#endif
