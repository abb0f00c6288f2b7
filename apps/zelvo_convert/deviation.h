// SPDX-License-Identifier: MIT
// How far a reduced mesh is from the original.
#pragma once

#include "mesh.h"

namespace convert {

/// The greatest distance between two meshes of triangles, as a part of the diagonal of the first one's
/// bounds. It is measured in both directions: from the points of each mesh, and from the middles of its edges
/// and triangles, to the surface of the other.
double deviation(const Mesh &original, const Mesh &reduced);

} // namespace convert
