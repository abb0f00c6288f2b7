// SPDX-License-Identifier: MIT
// A batch of visible triangles in structure-of-arrays form: what culling and lighting pass to the setup.
#pragma once

#include "raster/simd/vector_size.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace fast {

/// How a filler colours a pixel.
enum class Filler { zcolour, flat, gouraud, mapped };

/// How many quantities a filler interpolates: the depth, then a colour, or a map column and a map row.
constexpr std::size_t quantities_of(Filler filler) {
    return filler == Filler::mapped ? 3 : filler == Filler::gouraud ? 2 : 1;
}

/// Triangles that pass through the stages together. Their batch and edges stay in the first-level cache.
/// Batches of 128 and 256 took the same time (docs/speed.md, "Tried without gain").
constexpr std::size_t batch_triangles = 64;

/// One value per triangle, with a vector to spare.
template <typename T>
struct alignas(vector_bytes) BatchArray : std::array<T, batch_triangles + vector_lanes> {};

/// One value per corner of each triangle.
using CornerArrays = std::array<BatchArray<float>, 3>;

/// Triangles in the order of the polygon list.
struct TriangleBatch {
    static constexpr std::size_t capacity = batch_triangles;

    std::size_t count = 0;
    /// Which words of the polygon list name the first and the second corner. The third follows the second.
    BatchArray<std::uint32_t> first_corner;
    BatchArray<std::uint32_t> second_corner;
    /// Point indices of the corners, once `number_corners` has read them.
    std::array<BatchArray<std::uint32_t>, 3> point;
    /// The corners on the screen.
    CornerArrays x;
    CornerArrays y;
    /// The quantities of the filler, depth first.
    std::array<CornerArrays, 3> quantity;

    /// The first three corners of the polygon that the triangle is cut from, which it is lit by; kept only on
    /// request.
    bool keeps_lit_corners = false;
    CornerArrays lit_x;
    CornerArrays lit_y;
    CornerArrays lit_depth;

    /// The colour of a flat triangle, as a light gives it and as a byte.
    BatchArray<float> light;
    BatchArray<std::uint32_t> colour;
};

} // namespace fast
