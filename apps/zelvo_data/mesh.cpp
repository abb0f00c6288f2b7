// SPDX-License-Identifier: MIT
// Vector arithmetic, rounding to the coordinate grid and the bookkeeping of a mesh.
#include "mesh.h"

#include <cmath>
#include <stdexcept>
#include <utility>

namespace zelvo_data {

Point3 operator+(const Point3 &a, const Point3 &b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Point3 operator-(const Point3 &a, const Point3 &b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point3 operator*(const Point3 &a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

double dot(const Point3 &a, const Point3 &b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Point3 cross(const Point3 &a, const Point3 &b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Point3 normalized(const Point3 &a) {
    return a * (1.0 / std::sqrt(dot(a, a)));
}

namespace {

// Design values often lie exactly halfway between two grid steps. The small bias moves the border between
// the steps away from those values, so a rounding error in the last bit cannot tip them either way.
constexpr double tie_bias = 1.0 / 4096.0;

std::int32_t to_grid_step(double value) {
    return static_cast<std::int32_t>(std::floor(value * grid_steps_per_unit + 0.5 + tie_bias));
}

bool same_place(const GridPoint &a, const GridPoint &b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

} // namespace

GridPoint to_grid(const Point3 &point) {
    return {to_grid_step(point.x), to_grid_step(point.y), to_grid_step(point.z)};
}

std::uint16_t Mesh::add_point(const Point3 &point) {
    if (points_.size() >= 65535) {
        throw std::length_error("an object may have at most 65535 points");
    }
    points_.push_back(to_grid(point));
    return static_cast<std::uint16_t>(points_.size() - 1);
}

std::uint16_t Mesh::add_surface(Surface surface) {
    surfaces_.push_back(std::move(surface));
    return static_cast<std::uint16_t>(surfaces_.size());
}

void Mesh::add_polygon(const std::vector<std::uint16_t> &corners, std::uint16_t surface) {
    std::vector<std::uint16_t> kept;
    for (const std::uint16_t corner : corners) {
        if (kept.empty() || !same_place(points_[kept.back()], points_[corner])) {
            kept.push_back(corner);
        }
    }
    while (kept.size() > 1 && same_place(points_[kept.front()], points_[kept.back()])) {
        kept.pop_back();
    }
    if (kept.size() >= 3) {
        polygons_.push_back({kept, surface});
    }
}

} // namespace zelvo_data
