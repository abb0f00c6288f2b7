// SPDX-License-Identifier: MIT
// The texture of modes 1 and 2, as the filler reads it.
#pragma once

#include "core/heap_array.h"

#include <cstdint>

/// Bytes in the texture, 256 rows of 256 brightness levels, and in one of its rows.
constexpr int envmap_bytes = 65536;
constexpr int map_row_bytes = 256;

/// The texture's rows, top row first. Allocated at start-up, filled from the texture file.
extern HeapArray<std::uint8_t> envmap;

/// Index of the centre texel, column 128 of row 128, from which the signed map coordinates count.
constexpr std::uint32_t map_centre = 128 * 256 + 128;

/// Allocates the texture, or ends the program.
void allocate_envmap();

/// Releases the texture.
void release_envmap();
