// SPDX-License-Identifier: MIT
// From the polygon list to a batch of triangles that face the viewer: up to 16 are checked and culled per
// vector. Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_CULL_TRIANGLES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_CULL_TRIANGLES_INL_H
#undef ZELVO_RASTER_SIMD_CULL_TRIANGLES_INL_H
#else
#define ZELVO_RASTER_SIMD_CULL_TRIANGLES_INL_H
#endif

#include "hwy/highway.h"

#include "object/model.h"
#include "object/polygon_list.h"
#include "raster/simd/compress-inl.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/load_points-inl.h"
#include "raster/simd/polygon_walk.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/word_pattern-inl.h"

#include <array>
#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The positions of the three corners of a vector of triangles.
using CornerPoints = std::array<Points, 3>;

/// Which lanes are drawn: all when faces are double-sided, else by is_front_face.
HWY_INLINE hn::Mask<FloatLanes> facing_viewer(const CornerPoints &p, const FaceSides &sides) {
    const FloatLanes floats;
    const auto front = hn::Gt(hn::Mul(hn::Sub(p[1].x, p[0].x), hn::Sub(p[2].y, p[0].y)),
                              hn::Mul(hn::Sub(p[1].y, p[0].y), hn::Sub(p[2].x, p[0].x)));
    const auto all = hn::Eq(hn::Zero(floats), hn::Zero(floats));
    const auto none = hn::Not(all);
    return hn::Or(sides.draws_front ? front : none, sides.draws_back ? hn::Not(front) : none);
}

/// How polygons of one kind fill a vector: one triangle per lane, or one quad per two lanes, as two
/// triangles.
enum class Kind { triangles, quads };

constexpr std::size_t words_each(Kind kind) {
    return kind == Kind::triangles ? triangle_words : quad_words;
}

constexpr std::size_t lanes_each(Kind kind) {
    return kind == Kind::triangles ? 1 : 2;
}

/// The word that names a corner of a lane's polygon, counted from the count of the vector's first polygon.
constexpr std::size_t polygon_corner(Kind kind, std::size_t lane, std::size_t corner) {
    return lane / lanes_each(kind) * words_each(kind) + 1 + corner;
}

/// The word that names a corner of a lane's triangle: a quad's second one takes the last two corners.
constexpr std::size_t triangle_corner(Kind kind, std::size_t lane, std::size_t corner) {
    return polygon_corner(kind, lane, corner == 0 ? 0 : corner + lane % lanes_each(kind));
}

/// A number for each lane.
template <typename OfLane>
constexpr std::array<std::uint32_t, vector_lanes> lane_numbers(OfLane of_lane) {
    std::array<std::uint32_t, vector_lanes> numbers{};
    for (std::size_t lane = 0; lane < vector_lanes; ++lane) {
        numbers[lane] = static_cast<std::uint32_t>(of_lane(lane));
    }
    return numbers;
}

/// Which words name a corner of each lane's triangle, counted like `triangle_corner`.
template <Kind kind, std::size_t corner>
HWY_INLINE Words corner_words() {
    alignas(vector_bytes) static constexpr auto numbers =
        lane_numbers([](std::size_t lane) { return triangle_corner(kind, lane, corner); });
    return hn::Load(WordLanes(), numbers.data());
}

/// Appends those triangles of the vector of polygons at the walk's word that face the viewer to the batch.
/// Loading the corners is not a separate function: GCC would return them through memory, and flat frames
/// would take 10 percent longer.
template <Kind kind>
HWY_INLINE void append_facing(const PolygonWalk &walk, TriangleBatch &batch) {
    const FloatLanes floats;
    const WordLanes words;
    const Vec3 *records = lwopoints3.get();
    const std::uint16_t *list = walk.words.data() + walk.at;
    CornerPoints corners;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        corners[corner] = load_points(
            records, [list, corner](std::size_t lane) { return list[triangle_corner(kind, lane, corner)]; });
    }
    // A polygon is tested, and lit, by its first three corners.
    CornerPoints tested = corners;
    if constexpr (kind == Kind::quads) {
        for (const std::size_t corner : {1U, 2U}) {
            tested[corner] = load_points(records, [list, corner](std::size_t lane) {
                return list[polygon_corner(kind, lane, corner)];
            });
        }
    }
    const auto facing = facing_viewer(tested, walk.sides);
    const std::size_t count = hn::CountTrue(floats, facing);
    if (count == 0) {
        return;
    }

    const std::size_t end = batch.count;
    const Compress append(hn::RebindMask(IntLanes(), facing));
    const Words at = hn::Set(words, static_cast<std::uint32_t>(walk.at));
    append(words, hn::Add(at, corner_words<kind, 0>()), &batch.first_corner[end]);
    append(words, hn::Add(at, corner_words<kind, 1>()), &batch.second_corner[end]);
    for (std::size_t corner = 0; corner < 3; ++corner) {
        append(floats, corners[corner].x, &batch.x[corner][end]);
        append(floats, corners[corner].y, &batch.y[corner][end]);
        append(floats, corners[corner].z, &batch.quantity[0][corner][end]);
        if (batch.keeps_lit_corners) {
            append(floats, tested[corner].x, &batch.lit_x[corner][end]);
            append(floats, tested[corner].y, &batch.lit_y[corner][end]);
            append(floats, tested[corner].z, &batch.lit_depth[corner][end]);
        }
    }
    batch.count += count;
}

/// Takes as many polygons as fill a vector if all of them are of this kind and all their indices are points
/// of the object; returns whether it did.
template <Kind kind>
HWY_INLINE bool take_vector(PolygonWalk &walk, const WordPattern &pattern, TriangleBatch &batch) {
    constexpr std::size_t polygons = hn::MaxLanes(FloatLanes()) / lanes_each(kind);
    constexpr std::size_t words = polygons * words_each(kind);
    if (walk.points == 0 || walk.at + words > walk.words.size() ||
        !follow<words>(walk.words.data() + walk.at, pattern)) {
        return false;
    }
    append_facing<kind>(walk, batch);
    walk.at += words;
    walk.polygons += static_cast<std::int32_t>(polygons);
    return true;
}

/// Fills the batch from where the walk is; false once the list is at its end and nothing is left.
HWY_INLINE bool collect_triangles(PolygonWalk &walk, TriangleBatch &batch) {
    batch.count = 0;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    while (batch.count + lanes <= TriangleBatch::capacity && !walk.is_at_end()) {
        if (walk.fan_is_open() || walk.singly_until > walk.at) {
            take_polygon(walk, batch);
        } else if (!take_vector<Kind::triangles>(walk, walk.triangles, batch) &&
                   !take_vector<Kind::quads>(walk, walk.quads, batch)) {
            // After a failed vector, take one vector's worth of words polygon by polygon before trying again.
            walk.singly_until = walk.at + triangle_words * lanes;
        }
    }
    return batch.count != 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
