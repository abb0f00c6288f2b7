// SPDX-License-Identifier: MIT
// The texture of the mapped modes, as the filler reads it.
#pragma once

#include "main_68k/heap_array.h"

#include <cstdint>

/// 256 rows of 256 brightness bytes, top row first. Allocated at start-up, filled from the texture file.
extern HeapArray<std::uint8_t> envmap;

/// Index of the map's centre texel, column 128 of row 128: map coordinates are signed and count from there.
constexpr std::uint32_t map_centre = 128 * 256 + 128;
