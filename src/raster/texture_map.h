// SPDX-License-Identifier: MIT
// The texture of the mapped modes, as the filler reads it.
#pragma once

#include "core/heap_array.h"

#include <cstdint>

/// Bytes in the texture: 256 rows of 256 brightness levels.
constexpr int envmap_bytes = 65536;

/// The texture's rows, top row first. Allocated at start-up, filled from the texture file.
extern HeapArray<std::uint8_t> envmap;

/// Index of the map's centre texel, column 128 of row 128: map coordinates are signed and count from there.
constexpr std::uint32_t map_centre = 128 * 256 + 128;

/// Allocates the texture, or ends the program.
void allocate_envmap();

/// Releases the texture.
void release_envmap();
