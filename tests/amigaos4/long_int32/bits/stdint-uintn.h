// SPDX-License-Identifier: MIT
// Replaces the C library's header of this name: the unsigned types of fixed width, with a 32-bit type that is
// long.
#ifndef _BITS_STDINT_UINTN_H
#define _BITS_STDINT_UINTN_H 1

#include <bits/types.h>

typedef __uint8_t uint8_t;
typedef __uint16_t uint16_t;
typedef unsigned long uint32_t;
typedef __uint64_t uint64_t;

#endif
