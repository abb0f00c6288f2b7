// SPDX-License-Identifier: MIT
// Looks for a fan, and otherwise cuts off one ear after the other.
#include "cutting.h"

#include "cleaning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>

namespace convert {

namespace {

constexpr std::size_t most_corners = 65535;

struct Vector2 {
    double x;
    double y;
};

/// Twice the signed area of a triangle.
double turn(const Vector2 &a, const Vector2 &b, const Vector2 &c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The polygon seen along the longest axis of its normal, from the side where its area is positive.
std::vector<Vector2> flattened(const Mesh &mesh, std::span<const std::uint32_t> corners) {
    const Vector normal = area_vector(mesh, corners);
    const Vector size{std::abs(normal.x), std::abs(normal.y), std::abs(normal.z)};
    const Vector origin(mesh.points[corners[0]]);
    std::vector<Vector2> flat;
    flat.reserve(corners.size());
    for (const std::uint32_t corner : corners) {
        const Vector p = Vector(mesh.points[corner]) - origin;
        if (size.z >= size.x && size.z >= size.y) {
            flat.push_back(normal.z > 0 ? Vector2{p.x, p.y} : Vector2{p.y, p.x});
        } else if (size.y >= size.x) {
            flat.push_back(normal.y > 0 ? Vector2{p.z, p.x} : Vector2{p.x, p.z});
        } else {
            flat.push_back(normal.x > 0 ? Vector2{p.y, p.z} : Vector2{p.z, p.y});
        }
    }
    return flat;
}

double area_of(const std::vector<Vector2> &flat) {
    double area = 0.0;
    for (std::size_t i = 2; i < flat.size(); ++i) {
        area += turn(flat[0], flat[i - 1], flat[i]);
    }
    return area;
}

/// A triangle whose area is smaller than this part of the polygon's counts as having none.
constexpr double least_part = 1e-7;

/// Whether the fan around a corner covers the polygon: no triangle is turned over, and the first has an area.
bool is_fan(const std::vector<Vector2> &flat, std::size_t first, double area) {
    const std::size_t count = flat.size();
    const auto triangle = [&](std::size_t i) {
        return turn(flat[first], flat[(first + i) % count], flat[(first + i + 1) % count]);
    };
    if (!(triangle(1) > least_part * area)) {
        return false;
    }
    for (std::size_t i = 2; i + 1 < count; ++i) {
        if (triangle(i) < -least_part * area) {
            return false;
        }
    }
    return true;
}

/// The first corner whose fan covers the polygon.
std::optional<std::size_t> fan_corner(const std::vector<Vector2> &flat) {
    // A polygon may have thousands of corners; trying all of them would take too long.
    constexpr std::size_t most_tried = 256;
    const double area = area_of(flat);
    for (std::size_t first = 0; first < std::min(flat.size(), most_tried); ++first) {
        if (is_fan(flat, first, area)) {
            return first;
        }
    }
    return std::nullopt;
}

bool is_inside(const Vector2 &p, const Vector2 &a, const Vector2 &b, const Vector2 &c) {
    return turn(a, b, p) >= 0 && turn(b, c, p) >= 0 && turn(c, a, p) >= 0;
}

/// The corners of a polygon that are left while ears are cut off.
class Ears {
public:
    explicit Ears(std::vector<Vector2> flat_corners) : flat(std::move(flat_corners)), left(flat.size()) {
        std::iota(left.begin(), left.end(), std::size_t{0});
    }

    std::size_t count() const { return left.size(); }

    /// Cuts off the next ear and returns its corners.
    std::array<std::size_t, 3> cut() {
        std::size_t at = 0;
        while (at < left.size() && !is_ear((start + at) % left.size())) {
            ++at;
        }
        // A polygon that crosses itself may have no ear. Then any corner is as good.
        const std::size_t middle = (start + (at < left.size() ? at : 0)) % left.size();
        const std::array<std::size_t, 3> ear{before(middle), left[middle], after(middle)};
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(middle));
        // The next search begins at another corner. Always the same one would make a fan of thin triangles.
        start = middle + 1 < left.size() ? middle + 1 : 0;
        return ear;
    }

private:
    std::size_t before(std::size_t at) const { return left[(at + left.size() - 1) % left.size()]; }
    std::size_t after(std::size_t at) const { return left[(at + 1) % left.size()]; }

    bool is_ear(std::size_t at) const {
        const Vector2 &a = flat[before(at)];
        const Vector2 &b = flat[left[at]];
        const Vector2 &c = flat[after(at)];
        if (turn(a, b, c) <= 0) {
            return false;
        }
        return std::ranges::none_of(left, [&](std::size_t other) {
            const Vector2 &p = flat[other];
            const auto is_at = [&p](const Vector2 &corner) { return p.x == corner.x && p.y == corner.y; };
            return !is_at(a) && !is_at(b) && !is_at(c) && is_inside(p, a, b, c);
        });
    }

    std::vector<Vector2> flat;
    std::vector<std::size_t> left;
    std::size_t start = 0;
};

/// Adds a triangle to the result unless it has no area.
void add_triangle(const Mesh &mesh, const std::array<std::uint32_t, 3> &corners, std::uint32_t surface,
                  Mesh &result) {
    const Vector area = area_vector(mesh, corners);
    if (dot(area, area) > 0) {
        result.add_face(corners, surface);
    }
}

void add_ears(const Mesh &mesh, const Face &face, Mesh &result) {
    const std::span<const std::uint32_t> corners = mesh.corners_of(face);
    Ears ears(flattened(mesh, corners));
    while (ears.count() >= 3) {
        const auto [a, b, c] = ears.cut();
        add_triangle(mesh, {corners[a], corners[b], corners[c]}, face.surface, result);
    }
}

/// Replaces each face by those that `add` adds for it.
template <typename Add>
void replace_faces(Mesh &mesh, Add add) {
    Mesh result;
    for (const Face &face : mesh.faces) {
        add(face, result);
    }
    mesh.faces = std::move(result.faces);
    mesh.corners = std::move(result.corners);
}

/// Adds a polygon that begins where its fan does. False if it has no fan, or too many corners.
bool add_fan(const Mesh &mesh, const Face &face, Mesh &result) {
    if (face.corners > most_corners) {
        return false;
    }
    const std::span<const std::uint32_t> old = mesh.corners_of(face);
    std::vector<std::uint32_t> corners(old.begin(), old.end());
    if (face.corners > 3) {
        const std::optional<std::size_t> first = fan_corner(flattened(mesh, corners));
        if (!first) {
            return false;
        }
        std::rotate(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(*first), corners.end());
    }
    result.add_face(corners, face.surface);
    return true;
}

} // namespace

Cut cut_concave(Mesh &mesh) {
    Cut cut;
    replace_faces(mesh, [&](const Face &face, Mesh &result) {
        if (!add_fan(mesh, face, result)) {
            ++cut.concave_polygons;
            add_ears(mesh, face, result);
        }
    });
    return cut;
}

void cut_all(Mesh &mesh) {
    cut_concave(mesh);
    replace_faces(mesh, [&](const Face &face, Mesh &result) {
        const std::span<const std::uint32_t> corners = mesh.corners_of(face);
        for (std::size_t i = 2; i < corners.size(); ++i) {
            add_triangle(mesh, {corners[0], corners[i - 1], corners[i]}, face.surface, result);
        }
    });
}

} // namespace convert
