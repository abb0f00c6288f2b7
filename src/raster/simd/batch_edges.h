// SPDX-License-Identifier: MIT
// The edges of a batch of triangles: what the setup passes to the rows.
#pragma once

#include "raster/simd/triangle_batch.h"

#include <array>
#include <cstdint>

namespace fast {

/// A 16.16 accumulator along an edge of each triangle: in row i of the triangle's drawn rows it is start + i
/// * step, wrapping. The plain loop adds the step row by row; the sum of i steps modulo 2^32 is this product.
struct EdgeAccumulator {
    BatchArray<std::uint32_t> start;
    BatchArray<std::uint32_t> step;
};

/// The left and the right edge of the same rows; quantities run along the left one alone.
struct EdgePair {
    EdgeAccumulator left_x;
    EdgeAccumulator right_x;
    std::array<EdgeAccumulator, 3> left;
};

/// What one pixel to the right adds to each quantity, as float and in 16.16; constant for a triangle.
struct BatchGradients {
    std::array<BatchArray<float>, 3> per_pixel;
    std::array<BatchArray<std::uint32_t>, 3> step;
};

/// What the rows of each triangle of a batch are made from.
struct BatchEdges {
    /// The first row drawn, counted from the first one of the target, the number of rows down to the middle
    /// vertex, and the number of all rows. A lane without a triangle has no rows.
    BatchArray<std::int32_t> first_row;
    BatchArray<std::int32_t> upper_rows;
    BatchArray<std::int32_t> rows;
    /// The edges of the rows down to the middle vertex, and of those below. Both count from `first_row`.
    EdgePair upper;
    EdgePair lower;
    BatchGradients gradients;
};

} // namespace fast
