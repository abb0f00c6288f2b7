// SPDX-License-Identifier: MIT
// exec's basic types. This folder declares the parts of AmigaOS 4 that the program uses. The text is the
// project's own; the names, types, constness, packing and values are the system's.
#ifndef EXEC_TYPES_H
#define EXEC_TYPES_H

#include <stdint.h>

typedef unsigned long uint32;
typedef signed long int32;
typedef unsigned short uint16;
typedef signed short int16;
typedef unsigned char uint8;
typedef signed char int8;

typedef uint32 ULONG;
typedef int32 LONG;
typedef uint16 UWORD;
typedef int16 WORD;
typedef uint8 UBYTE;
typedef int8 BYTE;
typedef short BOOL;
typedef void *APTR;
typedef const void *CONST_APTR;

/* Texts are of plain char only where that is unsigned, as it is by default on PowerPC. */
#ifdef __CHAR_UNSIGNED__
typedef char TEXT;
#else
typedef unsigned char TEXT;
#endif
typedef TEXT *STRPTR;
typedef const TEXT *CONST_STRPTR;

/* Words that are still macros after the system's header. */
#define GLOBAL extern
#define IMPORT extern
#define STATIC static
#define REGISTER register
#define VOID void
#define CONST const
#define VOLATILE volatile
#define FLOAT float
#define DOUBLE double
#define TRUE 1
#define FALSE 0
#define BYTEMASK 0xFF

#endif
