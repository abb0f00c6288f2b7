// SPDX-License-Identifier: MIT
// The choice between the forms, which starts at the fast one.
#include "raster/drawing_path.h"

bool draws_fast = true;
