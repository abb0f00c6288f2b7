// SPDX-License-Identifier: MIT
// Tells that the fast forms are part of the program.
#include "raster/drawing_path.h"

const bool has_fast_path = true;
