// SPDX-License-Identifier: MIT
// exec.library: the system's basic types, opening libraries, taking messages from a port.
#pragma once

#include "platform/bridge.h"

#ifdef __amigaos4__

#ifndef __USE_INLINE__ // makefiles of this system often define it for all files
#define __USE_INLINE__
#endif
#include <proto/exec.h>

#else

#include <cstdint>

using BYTE = std::int8_t;
using UBYTE = std::uint8_t;
using WORD = std::int16_t;
using UWORD = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using BOOL = std::int16_t;
using APTR = void *;
using STRPTR = char *;
using CONST_STRPTR = const char *;
constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;

/// One attribute of a call and its value. A list of them ends with TAG_DONE.
struct TagItem {
    ULONG ti_Tag;
    TagData ti_Data;
};
constexpr ULONG TAG_DONE = 0;
constexpr ULONG TAG_USER = 0x80000000;

struct Library;
struct Interface;
struct MsgPort;
struct Message {};

/// Opens a library of at least this version; null if there is none. A host must provide every library whose
/// calls it implements.
Library *OpenLibrary(CONST_STRPTR name, ULONG version);

/// Closes what OpenLibrary opened; null is ignored.
void CloseLibrary(Library *library);

/// The named interface of an open library; null if it has none. The library's calls are made through it.
Interface *GetInterface(Library *library, CONST_STRPTR name, ULONG version, const TagItem *tags);

/// Gives back what GetInterface returned; null is ignored.
void DropInterface(Interface *interface);

/// The oldest message waiting at a port; null if there is none. The program owns it until it replies.
Message *GetMsg(MsgPort *port);

/// Returns a message to its sender. It must not be read afterwards.
void ReplyMsg(Message *message);

#endif
