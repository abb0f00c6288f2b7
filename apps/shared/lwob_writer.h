// SPDX-License-Identifier: MIT
// Turns an object into the bytes of an IFF file of form LWOB.
#pragma once

#include "core/vec3.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// The appearance of a surface as stored in its SURF chunk; strengths run from 0 to 256.
struct LwobSurface {
    std::string name;
    std::array<std::uint8_t, 3> colour;
    std::uint16_t luminosity = 0;
    std::uint16_t diffuse = 256;
    bool is_two_sided = false;
};

/// A chunk of free text. Readers must skip chunks that they do not know.
struct LwobNote {
    std::string id;
    std::string text;
};

/// Axes are left-handed: x right, y up, z away from the viewer. A polygon's corners run clockwise as seen
/// from outside.
struct LwobObject {
    std::vector<Vec3> points;
    /// Per polygon the number of its corners, their points, and its surface, counted from 1.
    std::vector<std::uint16_t> polygon_words;
    std::vector<LwobSurface> surfaces;
    std::vector<LwobNote> notes_before_points;
    std::vector<LwobNote> notes_after_polygons;
};

/// The chunk order is: leading notes, PNTS, SRFS, POLS, trailing notes, one SURF per surface. Every chunk has
/// an even size, so no pad bytes occur between chunks. Throws std::length_error if a size does not fit.
Bytes encode_lwob(const LwobObject &object);
