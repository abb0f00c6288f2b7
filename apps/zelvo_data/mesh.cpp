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

// Grid steps are well below 2^24 and the grid divides by a power of two, so the float is exact.
float to_coordinate(std::int32_t grid_steps) {
    return static_cast<float>(grid_steps) / static_cast<float>(grid_steps_per_unit);
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

LwobObject to_object(const Mesh &mesh) {
    LwobObject object;
    for (const GridPoint &point : mesh.points()) {
        object.points.push_back({to_coordinate(point.x), to_coordinate(point.y), to_coordinate(point.z)});
    }
    for (const Polygon &polygon : mesh.polygons()) {
        std::vector<std::uint16_t> &words = object.polygon_words;
        words.push_back(static_cast<std::uint16_t>(polygon.corners.size()));
        words.insert(words.end(), polygon.corners.begin(), polygon.corners.end());
        words.push_back(polygon.surface);
    }
    object.surfaces = mesh.surfaces();
    return object;
}

} // namespace zelvo_data
