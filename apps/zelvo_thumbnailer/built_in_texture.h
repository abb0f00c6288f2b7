// SPDX-License-Identifier: MIT
// The default texture inside the executable: a sandbox need not show the installed one, and no file is
// opened.
#pragma once

#include "raster/texture_map.h"

/// The bytes of data/Zelvo_envmap.chunky; the build writes the source file.
extern const unsigned char built_in_texture[envmap_bytes];
