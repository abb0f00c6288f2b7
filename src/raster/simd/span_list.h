// SPDX-License-Identifier: MIT
// Spans: rows of triangles that have pixels, in drawing order. What the rows pass to the drawing.
#pragma once

#include "raster/simd/vector_size.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace fast {

/// Which of a span's quantities are the column and the row in the map. The first quantity is the depth.
constexpr std::size_t map_column = 1;
constexpr std::size_t map_row = 2;

/// Spans that are drawn together.
struct SpanList {
    /// The width of the vectors is chosen once per list. Lists of 128 or 64 spans were slower by up to 7
    /// percent (docs/speed.md, "Tried without gain").
    static constexpr std::size_t capacity = 256;

    template <typename T>
    struct alignas(vector_bytes) Array : std::array<T, capacity + vector_lanes> {};

    std::size_t count = 0;
    /// The first pixel, counted from the target's first, and the number of pixels.
    Array<std::uint32_t> offset;
    Array<std::int32_t> length;
    /// For spans that are not complete yet: the place of the row that the span is made from, and the left
    /// edge's x accumulator there (row_spans-inl.h).
    Array<std::uint32_t> place;
    Array<std::uint32_t> left_x;
    /// The quantities of the first pixel in 16.16, and what each pixel adds.
    std::array<Array<std::uint32_t>, 3> value;
    std::array<Array<std::uint32_t>, 3> step;
    /// The colour byte of a flat triangle.
    Array<std::uint32_t> colour;
};

} // namespace fast
