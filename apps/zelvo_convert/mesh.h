// SPDX-License-Identifier: MIT
// The model on its way from any format to an object file.
#pragma once

#include "core/vec3.h"
#include "shared/lwob_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace convert {

/// The colour of a surface that has none.
constexpr std::array<std::uint8_t, 3> default_colour{200, 200, 200};

/// Corners that follow each other in the mesh's list, and the surface, counted from 0.
struct Face {
    std::size_t first;
    std::uint32_t corners;
    std::uint32_t surface;
};

/// Axes and winding are those of the object file: left-handed, x right, y up, z away from the viewer, corners
/// clockwise as seen from outside.
struct Mesh {
    std::vector<Vec3> points;
    /// The corners of all faces: indices of points.
    std::vector<std::uint32_t> corners;
    std::vector<Face> faces;
    std::vector<LwobSurface> surfaces;

    std::span<const std::uint32_t> corners_of(const Face &face) const {
        return {corners.data() + face.first, face.corners};
    }
    void add_face(std::span<const std::uint32_t> indices, std::uint32_t surface) {
        faces.push_back({corners.size(), static_cast<std::uint32_t>(indices.size()), surface});
        corners.insert(corners.end(), indices.begin(), indices.end());
    }
};

/// A point or a direction in double precision.
struct Vector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    Vector() = default;
    Vector(double a, double b, double c) : x(a), y(b), z(c) {}
    explicit Vector(const Vec3 &point) : x(point.x), y(point.y), z(point.z) {}
};

inline Vector operator+(const Vector &a, const Vector &b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector operator-(const Vector &a, const Vector &b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector operator*(const Vector &a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
inline double dot(const Vector &a, const Vector &b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector cross(const Vector &a, const Vector &b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The smallest box around some points. Without any, `low` is above `high`.
struct Bounds {
    Vector low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
               std::numeric_limits<double>::max()};
    Vector high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(),
                std::numeric_limits<double>::lowest()};

    void include(const Vector &p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    double diagonal() const;
};

/// The box around the points that faces use.
Bounds bounds_of(const Mesh &mesh);

} // namespace convert
