// SPDX-License-Identifier: MIT
// The walk over the polygon list: its start, and polygons of any number of points, one at a time. The vectors
// of triangles and quads are in cull_triangles-inl.h.
#include "raster/simd/polygon_walk.h"

#include "main_68k/viewer_state.h"
#include "object/model.h"
#include "raster/face_loops.h"

#include <algorithm>
#include <optional>

namespace fast {

namespace {

/// Puts a corner of the next triangle into the batch, and the corner that its polygon is lit by.
void put_corner(TriangleBatch &batch, std::size_t corner, std::uint16_t index, std::uint16_t lit_index) {
    const std::size_t at = batch.count;
    const Vec3 &point = lwopoints3[index];
    batch.x[corner][at] = point.x;
    batch.y[corner][at] = point.y;
    batch.quantity[0][corner][at] = point.z;
    const Vec3 &lit = lwopoints3[lit_index];
    batch.lit_x[corner][at] = lit.x;
    batch.lit_y[corner][at] = lit.y;
    batch.lit_depth[corner][at] = lit.z;
}

/// Opens the fan of the polygon at the walk's word and moves the walk past it; the fan stays closed if the
/// polygon is not drawn.
void open_fan(PolygonWalk &walk) {
    const std::optional<Polygon> polygon = polygon_at(walk.words, walk.at);
    if (!polygon) {
        walk.at = walk.words.size();
        return;
    }
    walk.at = polygon->next(walk.at);
    ++walk.polygons;
    const auto &indices = polygon->indices;
    if (!polygon->has_valid_indices) {
        return;
    }
    const bool front = is_front_face(lwopoints3[indices[0]], lwopoints3[indices[1]], lwopoints3[indices[2]]);
    if (front ? walk.sides.draws_front : walk.sides.draws_back) {
        walk.fan = indices;
        walk.next_of_fan = 2;
    }
}

/// The pattern of a run of polygons with this many points, all of them points of the object.
WordPattern word_pattern(std::size_t vertices, std::int32_t points) {
    constexpr std::uint16_t any = 0xFFFF;
    const auto last_point = static_cast<std::uint16_t>(std::min<std::int32_t>(points - 1, any));
    WordPattern pattern;
    for (std::size_t i = 0; i < WordPattern::words; ++i) {
        const std::size_t word = i % (vertices + 2);
        const bool is_count = word == 0;
        const bool is_surface = word > vertices;
        pattern.least[i] = is_count ? static_cast<std::uint16_t>(vertices) : 0;
        pattern.spread[i] = is_count ? 0 : is_surface ? any : last_point;
    }
    return pattern;
}

} // namespace

PolygonWalk start_polygon_walk() {
    const bool both = viewer.doubleside != 0;
    PolygonWalk walk;
    walk.words = polygon_words();
    walk.points = point_count();
    walk.sides = {both || viewer.flip != 1, both || viewer.flip != 0};
    walk.triangles = word_pattern(3, walk.points);
    walk.quads = word_pattern(4, walk.points);
    return walk;
}

void take_polygon(PolygonWalk &walk, TriangleBatch &batch) {
    if (!walk.fan_is_open()) {
        open_fan(walk);
        if (!walk.fan_is_open()) {
            return;
        }
    }
    const auto &fan = walk.fan;
    const auto fan_at = static_cast<std::size_t>(fan.data() - walk.words.data());
    while (walk.next_of_fan < fan.size() && batch.count < TriangleBatch::capacity) {
        const std::size_t k = walk.next_of_fan++;
        put_corner(batch, 0, fan[0], fan[0]);
        put_corner(batch, 1, fan[k - 1], fan[1]);
        put_corner(batch, 2, fan[k], fan[2]);
        batch.first_corner[batch.count] = static_cast<std::uint32_t>(fan_at);
        batch.second_corner[batch.count] = static_cast<std::uint32_t>(fan_at + k - 1);
        ++batch.count;
    }
    if (walk.next_of_fan == fan.size()) {
        walk.next_of_fan = 0;
    }
}

} // namespace fast
