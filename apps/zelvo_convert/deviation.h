// SPDX-License-Identifier: MIT
// How far a reduced mesh is from the one that it was made from.
#pragma once

#include "mesh.h"

namespace convert {

/// The greatest distance between the surfaces of two meshes of triangles, as a part of the size of the first,
/// which is its box's diagonal. It is measured in both directions, at each mesh's points, and at the middle
/// of its triangles and edges.
double deviation(const Mesh &original, const Mesh &reduced);

} // namespace convert
