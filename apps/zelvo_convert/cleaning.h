// SPDX-License-Identifier: MIT
// Lets the faces of a mesh share their points, and drops faces without an area.
#pragma once

#include "mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace convert {

/// What cleaning dropped.
struct Cleaned {
    /// Points in the same place as another, and points that no face uses.
    std::size_t welded_points = 0;
    std::size_t unused_points = 0;
    /// Faces without an area, and faces with a coordinate that is infinite or NaN.
    std::size_t flat_faces = 0;
    std::size_t endless_faces = 0;
};

/// Merges points in the same place. Then drops corners that repeat the one before them, faces without an
/// area, and points that no face uses. Points and faces keep their order.
Cleaned clean(Mesh &mesh);

/// Twice the area of a face, as a vector along its normal, which points outwards.
Vector area_vector(const Mesh &mesh, std::span<const std::uint32_t> corners);

} // namespace convert
