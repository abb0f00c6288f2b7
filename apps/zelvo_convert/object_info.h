// SPDX-License-Identifier: MIT
// What is in an object file, and what the viewer makes of it.
#pragma once

#include "mesh.h"

#include <string>

namespace convert {

/// Sends the file's chunks as notes, and what the viewer's own reader finds. The process ends if the viewer
/// refuses the file. Only for a process that run_in_child started.
void describe_object(const std::string &path);

/// `x from -1 to 1, y from 0 to 2.5, z from -1 to 1`.
std::string shown_bounds(const Bounds &bounds);

} // namespace convert
