// SPDX-License-Identifier: MIT
// Cuts polygons that the viewer would draw wrongly. It draws a polygon as a fan of triangles around the first
// corner, and takes the polygon's direction from the first three corners.
#pragma once

#include "mesh.h"

#include <cstddef>

namespace convert {

/// What cutting changed.
struct Cut {
    /// Polygons that no fan covers, and that were cut.
    std::size_t concave_polygons = 0;
};

/// Begins each polygon with a corner whose fan covers it. Cuts those that have none, and those with more
/// corners than a file can hold, into triangles.
Cut cut_concave(Mesh &mesh);

/// Cuts all polygons into triangles.
void cut_all(Mesh &mesh);

} // namespace convert
