// SPDX-License-Identifier: MIT
// Makes a mesh smaller, so that it fits into a file or is as small as the user asks.
#pragma once

#include "mesh.h"

#include <cstddef>

namespace convert {

/// Reduces a mesh of triangles to at most this many points and triangles, by removing edges where that
/// changes the shape least. Borders between surfaces are kept. If that is not enough, points that are close
/// to each other are merged even if no edge connects them. False if that is not enough either.
bool reduce(Mesh &mesh, std::size_t most_points, std::size_t most_triangles);

} // namespace convert
