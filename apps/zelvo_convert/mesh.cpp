// SPDX-License-Identifier: MIT
// The size of a mesh.
#include "mesh.h"

#include <cmath>

namespace convert {

double Bounds::diagonal() const {
    const Vector size = high - low;
    return std::sqrt(dot(size, size));
}

Bounds bounds_of(const Mesh &mesh) {
    Bounds bounds;
    for (const std::uint32_t corner : mesh.corners) {
        bounds.include(Vector(mesh.points[corner]));
    }
    return bounds;
}

} // namespace convert
