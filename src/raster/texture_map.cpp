// SPDX-License-Identifier: MIT
// The texture's memory.
#include "raster/texture_map.h"

HeapArray<std::uint8_t> envmap;

void allocate_envmap() {
    envmap = allocate_or_exit<std::uint8_t>(envmap_bytes, "Couldn't allocate envmap filebuffer memory\n");
}

void release_envmap() {
    envmap.reset();
}
