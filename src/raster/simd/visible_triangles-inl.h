// SPDX-License-Identifier: MIT
// From the polygon list to a batch of triangles that face the viewer, in structure-of-arrays form.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_VISIBLE_TRIANGLES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_VISIBLE_TRIANGLES_INL_H
#undef ZELVO_RASTER_SIMD_VISIBLE_TRIANGLES_INL_H
#else
#define ZELVO_RASTER_SIMD_VISIBLE_TRIANGLES_INL_H
#endif

#include "object/model.h"
#include "raster/polygon_list.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/packing-inl.h"
#include "raster/simd/point_records-inl.h"
#include "raster/simd/triangle_batch.h"

#include <algorithm>
#include <array>
#include <cstddef>

// A processor without any vectors draws by the plain forms.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Three corners of a vector of triangles.
using Corners = std::array<Points, 3>;

/// Which lanes are drawn: all when faces are double-sided, else by their winding on the screen.
HWY_INLINE hn::Mask<FloatLanes> facing_viewer(const Corners &p, const FaceSides &sides) {
    const FloatLanes floats;
    const auto front = hn::Gt(hn::Mul(hn::Sub(p[1].x, p[0].x), hn::Sub(p[2].y, p[0].y)),
                              hn::Mul(hn::Sub(p[1].y, p[0].y), hn::Sub(p[2].x, p[0].x)));
    const auto all = hn::Eq(hn::Zero(floats), hn::Zero(floats));
    const auto none = hn::Not(all);
    return hn::Or(sides.draws_front ? front : none, sides.draws_back ? hn::Not(front) : none);
}

/// A point index for each lane.
struct alignas(vector_bytes) LaneIndices : std::array<std::uint32_t, vector_lanes> {};

/// The point indices of the next vector of triangles as the polygon list gives them: of their own corners,
/// and where those are others, of the second and third of the polygon that they are cut from, which tell
/// where it faces.
struct TriangleIndices {
    std::array<LaneIndices, 3> corner;
    std::array<LaneIndices, 2> tested;
};

/// Whether all corners are points of the object; the tested points are corners of one triangle or another.
HWY_INLINE bool are_usable(const std::array<LaneIndices, 3> &corners, const PolygonWalk &walk) {
    const WordLanes words;
    const auto second_or_third =
        hn::Max(hn::Load(words, corners[1].data()), hn::Load(words, corners[2].data()));
    const auto largest = hn::Max(hn::Load(words, corners[0].data()), second_or_third);
    return hn::AllTrue(words, hn::Lt(largest, hn::Set(words, static_cast<std::uint32_t>(walk.points))));
}

/// Puts those triangles of the vector that face the viewer behind the batch. False, with nothing done, if an
/// index is not one of a point.
template <bool is_quad>
HWY_INLINE bool append_facing(const TriangleIndices &indices, const PolygonWalk &walk, TriangleBatch &batch) {
    const FloatLanes floats;
    const WordLanes words;
    if (!are_usable(indices.corner, walk)) {
        return false;
    }
    const Vec3 *records = lwopoints3.get();
    Corners corners;
    for (std::size_t corner = 0; corner < 3; ++corner) {
        corners[corner] = load_points(records, indices.corner[corner].data());
    }
    Corners tested = corners;
    if (is_quad) {
        tested[1] = load_points(records, indices.tested[0].data());
        tested[2] = load_points(records, indices.tested[1].data());
    }
    const auto drawn = facing_viewer(tested, walk.sides);
    const std::size_t count = hn::CountTrue(floats, drawn);
    if (count == 0) {
        return true;
    }

    const std::size_t end = batch.count;
    const Packing append(hn::RebindMask(IntLanes(), drawn));
    for (std::size_t corner = 0; corner < 3; ++corner) {
        append(words, hn::Load(words, indices.corner[corner].data()), &batch.point[corner][end]);
        append(floats, corners[corner].x, &batch.x[corner][end]);
        append(floats, corners[corner].y, &batch.y[corner][end]);
        append(floats, corners[corner].z, &batch.quantity[0][corner][end]);
        if (batch.keeps_lit_corners) {
            append(floats, tested[corner].x, &batch.lit_x[corner][end]);
            append(floats, tested[corner].y, &batch.lit_y[corner][end]);
            append(floats, tested[corner].z, &batch.lit_depth[corner][end]);
        }
    }
    if (batch.keeps_lit_corners) {
        const auto all = hn::Set(words, 1);
        const auto even = hn::AndNot(hn::Iota(words, 0), all);
        append(words, is_quad ? even : all, &batch.begins_polygon[end]);
    }
    batch.count += count;
    return true;
}

/// Takes as many polygons as a vector has lanes if all of them are triangles of points of the object.
HWY_INLINE bool take_triangles(PolygonWalk &walk, TriangleBatch &batch) {
    constexpr std::size_t words_each = triangle_words;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    if (walk.at + words_each * lanes > walk.words.size()) {
        return false;
    }
    TriangleIndices indices;
    auto &[first, second, third] = indices.corner;
    const std::uint16_t *word = walk.words.data() + walk.at;
    std::uint32_t other_count = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane, word += words_each) {
        other_count |= word[0] ^ 3U;
        first[lane] = word[1];
        second[lane] = word[2];
        third[lane] = word[3];
    }
    if (other_count != 0 || !append_facing<false>(indices, walk, batch)) {
        return false;
    }
    walk.at += words_each * lanes;
    walk.polygons += static_cast<std::int32_t>(lanes);
    return true;
}

/// Takes half as many polygons as a vector has lanes if all of them are quads of points of the object; two
/// lanes hold the two triangles of each.
HWY_INLINE bool take_quads(PolygonWalk &walk, TriangleBatch &batch) {
    constexpr std::size_t words_each = 6;
    const std::size_t quads = hn::Lanes(FloatLanes()) / 2;
    if (walk.at + words_each * quads > walk.words.size()) {
        return false;
    }
    TriangleIndices indices;
    auto &[first, second, third] = indices.corner;
    auto &[tested_second, tested_third] = indices.tested;
    const std::uint16_t *word = walk.words.data() + walk.at;
    std::uint32_t other_count = 0;
    for (std::size_t lane = 0; lane < 2 * quads; lane += 2, word += words_each) {
        other_count |= word[0] ^ 4U;
        for (const std::size_t half : {std::size_t{0}, std::size_t{1}}) {
            first[lane + half] = word[1];
            second[lane + half] = word[2 + half];
            third[lane + half] = word[3 + half];
            tested_second[lane + half] = word[2];
            tested_third[lane + half] = word[3];
        }
    }
    if (other_count != 0 || !append_facing<true>(indices, walk, batch)) {
        return false;
    }
    walk.at += words_each * quads;
    walk.polygons += static_cast<std::int32_t>(quads);
    return true;
}

/// Fills the batch from where the walk stands; false once the list is at its end and nothing is left.
HWY_INLINE bool collect_triangles(PolygonWalk &walk, TriangleBatch &batch) {
    batch.count = 0;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    while (batch.count + lanes <= TriangleBatch::capacity && !walk.is_at_end()) {
        if (walk.fan_is_open() || walk.singly_until > walk.at) {
            take_polygon(walk, batch);
        } else if (!take_triangles(walk, batch) && !take_quads(walk, batch)) {
            // One unfit polygon spoils a whole vector, so that many of them cost one try in a vector.
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
