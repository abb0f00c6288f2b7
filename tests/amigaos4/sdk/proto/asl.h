// SPDX-License-Identifier: MIT
// asl.library's calls.
#ifndef PROTO_ASL_H
#define PROTO_ASL_H

#include <libraries/asl.h>

struct AslIFace {
    struct InterfaceData Data;
    APTR AllocAslRequest(ULONG type, const struct TagItem *tags);
    BOOL AslRequest(APTR requester, const struct TagItem *tags);
    void FreeAslRequest(APTR requester);
};

extern struct Library *AslBase;
extern struct AslIFace *IAsl;

#ifdef __USE_INLINE__
#define AllocAslRequest(type, tags) IAsl->AllocAslRequest((type), (tags))
#define AslRequest(requester, tags) IAsl->AslRequest((requester), (tags))
#define FreeAslRequest(requester) IAsl->FreeAslRequest((requester))
#endif

#endif
