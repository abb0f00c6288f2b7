// SPDX-License-Identifier: MIT
// A walk over the polygon list that stops whenever a batch of triangles is full.
#pragma once

#include "object/polygon_list.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/vector_size.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fast {

/// Which sides of a polygon are drawn.
struct FaceSides {
    bool draws_front;
    bool draws_back;
};

/// Valid ranges for the words of a run of polygons with the same number of points: word i must be in
/// [least[i], least[i] + spread[i]]. For triangles of an object of 500 points the pattern repeats every five
/// words:
///
///     word      count   point   point   point   surface
///     least         3       0       0       0         0
///     spread        0     499     499     499     65535
///
/// A word fits if word - least, in 16 bits, is not above spread. A count of 4 leaves 1, an index of 500
/// leaves 500, and a count of 2 wraps to 65535: all of them exceed their spread.
struct WordPattern {
    /// The words of as many triangles as the widest vector has lanes; quads need fewer.
    static constexpr std::size_t words = triangle_words * vector_lanes;

    alignas(vector_bytes) std::array<std::uint16_t, words> least;
    alignas(vector_bytes) std::array<std::uint16_t, words> spread;
};

/// A place in the polygon list, and what the walk has to know to go on from there.
struct PolygonWalk {
    std::span<const std::uint16_t> words;
    /// Points of the object.
    std::int32_t points;
    FaceSides sides;
    /// Triangles and quads whose indices are points of the object, which needs one point at least.
    WordPattern triangles;
    WordPattern quads;

    /// The next polygon's word.
    std::size_t at = 0;
    /// Polygons passed.
    std::int32_t polygons = 0;
    /// Up to this word polygons are taken one at a time.
    std::size_t singly_until = 0;
    /// The rest of a polygon that was cut short by the end of a batch: the indices of its points, and the
    /// next triangle's last point; 0 if there is no rest.
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

} // namespace fast
