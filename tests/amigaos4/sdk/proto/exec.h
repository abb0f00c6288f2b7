// SPDX-License-Identifier: MIT
// exec.library's calls. A library's calls are the methods of its interface; __USE_INLINE__, defined before
// the first of these headers, makes them look like plain functions. The system's interfaces are structures of
// function pointers, to which the cross compiler passes the interface. Here they are classes, which are
// called in the same way.
#ifndef PROTO_EXEC_H
#define PROTO_EXEC_H

#include <exec/exec.h>

struct ExecIFace {
    struct InterfaceData Data;
    struct Library *OpenLibrary(CONST_STRPTR name, ULONG version);
    APTR CloseLibrary(struct Library *library);
    struct Interface *GetInterface(struct Library *library, CONST_STRPTR name, ULONG version,
                                   const struct TagItem *tags);
    void DropInterface(struct Interface *interface);
    struct Message *GetMsg(struct MsgPort *port);
    void ReplyMsg(struct Message *message);
};

extern struct Library *SysBase;
extern struct ExecIFace *IExec;

#ifdef __USE_INLINE__
#define OpenLibrary(name, version) IExec->OpenLibrary((name), (version))
#define CloseLibrary(library) IExec->CloseLibrary((library))
#define GetInterface(library, name, version, tags) IExec->GetInterface((library), (name), (version), (tags))
#define DropInterface(interface) IExec->DropInterface((interface))
#define GetMsg(port) IExec->GetMsg((port))
#define ReplyMsg(message) IExec->ReplyMsg((message))
#endif

#endif
