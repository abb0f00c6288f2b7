// SPDX-License-Identifier: MIT
// Reads an object file by the rules of its format, independently of the viewer.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct ReadPolygon {
    std::vector<int> corners;
    int surface;
};

struct ReadSurface {
    std::string name;
    std::array<int, 3> colour{};
    int flags = 0;
};

/// An object file; `chunks` has their names in order.
struct ReadObject {
    std::vector<std::string> chunks;
    std::vector<Vec3> points;
    std::vector<ReadPolygon> polygons;
    std::vector<ReadSurface> surfaces;
};

/// Throws std::runtime_error if a size is wrong, an index of a point or a surface, or the name of a surface.
ReadObject parse_object(const std::string &bytes);
