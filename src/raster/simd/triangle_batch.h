// SPDX-License-Identifier: MIT
// What passes between the stages of a fast face loop, in structure-of-arrays form: triangles that face the
// viewer, their edges, and the spans of their rows. None of it depends on an instruction set.
#pragma once

#include "display/frame_buffers.h"
#include "object/model.h"
#include "raster/face_loops.h"
#include "raster/polygon_list.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fast {

/// Bytes of the widest vector, which every array here is aligned to and padded by.
constexpr std::size_t vector_bytes = 64;
constexpr std::size_t vector_lanes = vector_bytes / sizeof(float);

/// The narrowest frame that is drawn on vectors. A vector that starts in the last drawn row may reach beyond
/// it; the rows below, which nothing draws into, hold that many pixels in every frame but the narrowest.
constexpr std::int32_t least_width = vector_bytes / (first_drawn_row - 1) + 1;

/// Triangles that pass through the stages together. Their batch and edges stay in the first-level cache.
constexpr std::size_t batch_triangles = 64;

template <typename T>
struct alignas(vector_bytes) BatchArray : std::array<T, batch_triangles + vector_lanes> {};

/// One value a corner of each triangle.
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
    /// What is interpolated over the triangle: the depth, then a colour, or a map column and a map row.
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

/// Which sides of a polygon are drawn.
struct FaceSides {
    bool draws_front;
    bool draws_back;
};

/// What the words of polygons of equally many points may be, from a polygon's count on: word i is right if it
/// is `least[i]` or up to `spread[i]` more.
struct WordPattern {
    /// The words of as many triangles as the widest vector takes; quads need fewer.
    static constexpr std::size_t words = triangle_words * vector_lanes;

    alignas(vector_bytes) std::array<std::uint16_t, words> least;
    alignas(vector_bytes) std::array<std::uint16_t, words> spread;
};

/// A walk over the polygon list that stops whenever a batch is full.
struct PolygonWalk {
    std::span<const std::uint16_t> words;
    /// Points of the object.
    std::int32_t points;
    FaceSides sides;
    /// Triangles and quads of points of the object, which needs one point at least.
    WordPattern triangles;
    WordPattern quads;

    /// The next polygon's word.
    std::size_t at = 0;
    /// Polygons passed.
    std::int32_t polygons = 0;
    /// Up to this word polygons are taken one at a time.
    std::size_t singly_until = 0;
    /// What is left of a polygon that was cut short by the end of a batch: the indices of its points, and the
    /// next triangle's last point; 0 if nothing is left.
    std::span<const std::uint16_t> fan;
    std::size_t next_of_fan = 0;

    bool fan_is_open() const { return next_of_fan != 0; }
    bool is_at_end() const { return at >= words.size() && !fan_is_open(); }
};

/// A walk over the current object's polygons by the current flags.
PolygonWalk start_polygon_walk();

/// Takes one polygon of any number of points, or goes on with the one that the last batch had no room for.
/// The batch has room for one triangle at least.
void take_polygon(PolygonWalk &walk, TriangleBatch &batch);

/// Reads the point indices of the batch's corners from the polygon list.
void number_corners(TriangleBatch &batch);

/// Lights every triangle of the batch by its polygon's first three corners.
void light_faces(TriangleBatch &batch, FaceLights face_lights);

/// Lights the points of the batch that are not yet lit, into `lwofis`.
void light_points(const TriangleBatch &batch, VertexLights vertex_lights);

/// An accumulator along an edge: its value in row i of a triangle's drawn rows is start + i * step.
struct EdgeWalk {
    BatchArray<std::uint32_t> start;
    BatchArray<std::uint32_t> step;
};

/// The left and the right edge beside each other in the rows above, and those below, the middle vertex.
struct EdgePair {
    EdgeWalk left_x;
    EdgeWalk right_x;
    std::array<EdgeWalk, 3> left;
};

/// What the rows of each triangle of a batch are made from.
struct BatchEdges {
    /// The first row drawn, the number of rows down to the middle vertex, and the number of all rows.
    BatchArray<std::int32_t> first_row;
    BatchArray<std::int32_t> upper_rows;
    BatchArray<std::int32_t> rows;
    EdgePair upper;
    EdgePair lower;
    /// What one pixel to the right adds to each quantity, as float and in 16.16.
    std::array<BatchArray<float>, 3> per_pixel;
    std::array<BatchArray<std::uint32_t>, 3> pixel_step;
};

/// Rows of triangles that have pixels, in drawing order.
struct SpanList {
    static constexpr std::size_t capacity = 256;

    template <typename T>
    struct alignas(vector_bytes) Array : std::array<T, capacity + vector_lanes> {};

    std::size_t count = 0;
    /// The first pixel, counted from the frame's first, and the number of pixels.
    Array<std::uint32_t> offset;
    Array<std::int32_t> length;
    /// The row that the span is made from, by its place, and the left edge's accumulator there.
    Array<std::uint32_t> place;
    Array<std::uint32_t> left_x;
    /// The quantities of the first pixel in 16.16, and what each pixel adds.
    std::array<Array<std::uint32_t>, 3> value;
    std::array<Array<std::uint32_t>, 3> step;
    /// The colour byte of a flat triangle.
    Array<std::uint32_t> colour;
};

} // namespace fast
