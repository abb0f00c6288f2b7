// SPDX-License-Identifier: MIT
// Cuts polygons into triangles. The viewer draws a polygon as a fan of triangles around its first corner, and
// takes its direction from the first three corners; this makes polygons such that this is right.
#pragma once

#include "mesh.h"

#include <cstddef>

namespace convert {

/// What cutting changed.
struct Cut {
    /// Polygons that no fan covers, which became several.
    std::size_t concave_polygons = 0;
};

/// Begins each polygon with a corner whose fan covers it. Cuts those that have none, and those with more
/// corners than a file can hold, into triangles.
Cut cut_concave(Mesh &mesh);

/// Cuts all polygons into triangles.
void cut_all(Mesh &mesh);

} // namespace convert
