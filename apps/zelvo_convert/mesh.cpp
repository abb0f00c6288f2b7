// SPDX-License-Identifier: MIT
// The size of a mesh.
#include "mesh.h"

#include <algorithm>
#include <cmath>

namespace convert {

double Bounds::diagonal() const {
    const Vector size = high - low;
    return std::sqrt(dot(size, size));
}

Bounds bounds_of(const Mesh &mesh) {
    if (mesh.corners.empty()) {
        return {};
    }
    Bounds bounds{Vector(mesh.points[mesh.corners[0]]), Vector(mesh.points[mesh.corners[0]])};
    for (const std::uint32_t corner : mesh.corners) {
        const Vector point(mesh.points[corner]);
        bounds.low = {std::min(bounds.low.x, point.x), std::min(bounds.low.y, point.y),
                      std::min(bounds.low.z, point.z)};
        bounds.high = {std::max(bounds.high.x, point.x), std::max(bounds.high.y, point.y),
                       std::max(bounds.high.z, point.z)};
    }
    return bounds;
}

} // namespace convert
