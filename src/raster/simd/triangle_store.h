// SPDX-License-Identifier: MIT
// Visible triangles of a part of the polygon list, kept while the frame is drawn in bands.
#pragma once

#include "raster/simd/bands.h"
#include "raster/simd/triangle_batch.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace fast {

/// The triangles of one batch, in the order of the polygon list.
struct StoredBatch {
    std::size_t count;
    /// The rows of all its triangles.
    RowRange rows;
    /// Point indices of the corners.
    std::array<BatchArray<std::uint32_t>, 3> point;
    /// The colour byte of a flat triangle.
    BatchArray<std::uint32_t> colour;
    /// The first and the last row that a triangle can have pixels in; those outside the frame count too.
    BatchArray<std::int32_t> first_row;
    BatchArray<std::int32_t> last_row;
};

/// As many batches as are drawn band by band together, about 60,000 triangles. They take 2 MiB, of which an
/// object touches what it needs.
struct TriangleStore {
    static constexpr std::size_t capacity = 1024;

    std::size_t count = 0;
    std::array<StoredBatch, capacity> batches;
};

/// The store of the frame that is being drawn.
extern TriangleStore triangle_store;

} // namespace fast
