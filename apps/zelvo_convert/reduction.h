// SPDX-License-Identifier: MIT
// Makes a mesh smaller, so that it fits into a file or is as small as the user asks.
#pragma once

#include "mesh.h"

#include <cstddef>

namespace convert {

/// Reduces a mesh of triangles to at most this many points and triangles, by removing edges where that
/// changes the shape least. Borders between surfaces are kept. If that does not reach the numbers, parts that
/// are close to each other are merged without regard to what is connected. False if that does not reach them
/// either.
bool reduce(Mesh &mesh, std::size_t most_points, std::size_t most_triangles);

} // namespace convert
