// SPDX-License-Identifier: MIT
// exec's structures: messages and their ports, libraries and their interfaces, tags.
#ifndef EXEC_EXEC_H
#define EXEC_EXEC_H

#include <exec/types.h>

typedef uint32 Tag;

/* Structures are packed to two bytes, so that pointers and longs may lie at any even address. */
#pragma pack(2)

struct TagItem {
    Tag ti_Tag;
    uint32 ti_Data;
};

struct Node {
    struct Node *ln_Succ;
    struct Node *ln_Pred;
    UBYTE ln_Type;
    BYTE ln_Pri;
    STRPTR ln_Name;
};

struct MsgPort {
    struct Node mp_Node;
};

struct Message {
    struct Node mn_Node;
    struct MsgPort *mn_ReplyPort;
    UWORD mn_Length;
};

struct Library {
    struct Node lib_Node;
    UWORD lib_Version;
};

struct InterfaceData {
    struct Node Link;
    struct Library *LibBase;
};

struct Interface {
    struct InterfaceData Data;
};

#pragma pack()

#define TAG_DONE 0
#define TAG_USER ((uint32)(1UL << 31))

#endif
