// SPDX-License-Identifier: MIT
// Replaces the C library's header of this name: the signed types of fixed width, with a 32-bit type that is
// long.
#ifndef _BITS_STDINT_INTN_H
#define _BITS_STDINT_INTN_H 1

#include <bits/types.h>

typedef __int8_t int8_t;
typedef __int16_t int16_t;
typedef long int32_t;
typedef __int64_t int64_t;

#endif
