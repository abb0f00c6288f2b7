// SPDX-License-Identifier: MIT
// Makes a mesh one in which faces share points and all faces have an area.
#pragma once

#include "mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace convert {

/// What cleaning took away.
struct Cleaned {
    /// Points in the place of another, and points that no face uses.
    std::size_t welded_points = 0;
    std::size_t unused_points = 0;
    /// Faces without an area, and faces with a coordinate that is infinite or NaN.
    std::size_t flat_faces = 0;
    std::size_t endless_faces = 0;
};

/// Makes one point of all points in the same place, drops repeated corners that follow each other, faces that
/// have no area then, and points that no face uses. Points and faces keep their order.
Cleaned clean(Mesh &mesh);

/// Twice the area of a face, as a vector along its normal, which points outwards.
Vector area_vector(const Mesh &mesh, std::span<const std::uint32_t> corners);

} // namespace convert
