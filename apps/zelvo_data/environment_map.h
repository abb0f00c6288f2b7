// SPDX-License-Identifier: MIT
// The brightness map of a photo studio that polished objects reflect.
#pragma once

#include "shared/lwob_writer.h"

namespace zelvo_data {

// Returns 256 rows of 256 brightness values. Row and column 128 are the surface normal that points at the
// viewer. Rows count upwards and columns to the left, which is how the viewer's axes address the map.
Bytes build_environment_map();

} // namespace zelvo_data
