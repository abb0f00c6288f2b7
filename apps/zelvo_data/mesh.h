// SPDX-License-Identifier: MIT
// The polygon mesh that every object builder fills and the file writer stores.
#pragma once

#include "shared/lwob_writer.h"

#include <cstdint>
#include <vector>

namespace zelvo_data {

struct Point2 {
    double x;
    double y;
};

struct Point3 {
    double x;
    double y;
    double z;
};

Point3 operator+(const Point3 &a, const Point3 &b);
Point3 operator-(const Point3 &a, const Point3 &b);
Point3 operator*(const Point3 &a, double factor);
double dot(const Point3 &a, const Point3 &b);
Point3 cross(const Point3 &a, const Point3 &b);
Point3 normalized(const Point3 &a);

// Coordinates are stored as whole numbers of grid steps. So a last-bit difference between two processors can
// change a file only if a coordinate is that close to the border between two steps.
constexpr double grid_steps_per_unit = 1024.0;

struct GridPoint {
    std::int32_t x;
    std::int32_t y;
    std::int32_t z;
};

GridPoint to_grid(const Point3 &point);

using Surface = LwobSurface;

// Corners run clockwise as seen from outside in the left-handed axes of the file (x right, y up, z away from
// the viewer): cross(p1 - p0, p2 - p0) points outwards.
struct Polygon {
    std::vector<std::uint16_t> corners;
    std::uint16_t surface;
};

class Mesh {
public:
    // Adds a point and returns its index; throws std::length_error when 16 bits no longer suffice.
    std::uint16_t add_point(const Point3 &point);

    // Adds a surface and returns its number, counted from 1 as in the file.
    std::uint16_t add_surface(Surface surface);

    // Drops consecutive corners on the same grid point. Adds nothing if fewer than three corners remain.
    void add_polygon(const std::vector<std::uint16_t> &corners, std::uint16_t surface);

    const std::vector<GridPoint> &points() const { return points_; }
    const std::vector<Polygon> &polygons() const { return polygons_; }
    const std::vector<Surface> &surfaces() const { return surfaces_; }

private:
    std::vector<GridPoint> points_;
    std::vector<Polygon> polygons_;
    std::vector<Surface> surfaces_;
};

// The mesh as a file has it.
LwobObject to_object(const Mesh &mesh);

} // namespace zelvo_data
