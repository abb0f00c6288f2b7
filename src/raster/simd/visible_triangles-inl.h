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
#include "raster/simd/conversions-inl.h"
#include "raster/simd/triangle_batch.h"

#include <algorithm>
#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The corners of a vector of triangles on the screen, where the back-face test looks: the triangle's first
/// corner, and the second and third of the polygon that it is cut from.
struct TestedCorners {
    std::array<Floats, 3> x;
    std::array<Floats, 3> y;
};

/// One coordinate, 0 to 2, of the projected points with these indices.
HWY_INLINE Floats gather_coordinate(const Vec3 *records, Ints points, std::size_t coordinate) {
    const auto *floats = reinterpret_cast<const float *>(records) + coordinate;
    const auto at = hn::Add(points, hn::Add(points, points));
    return hn::GatherIndex(FloatLanes(), floats, at);
}

/// Which lanes are drawn: all when faces are double-sided, else by their winding on the screen.
HWY_INLINE hn::Mask<FloatLanes> facing_viewer(const TestedCorners &p, const FaceSides &sides) {
    const FloatLanes floats;
    const auto front = hn::Gt(hn::Mul(hn::Sub(p.x[1], p.x[0]), hn::Sub(p.y[2], p.y[0])),
                              hn::Mul(hn::Sub(p.y[1], p.y[0]), hn::Sub(p.x[2], p.x[0])));
    const auto all = hn::Eq(hn::Zero(floats), hn::Zero(floats));
    const auto none = hn::Not(all);
    return hn::Or(sides.draws_front ? front : none, sides.draws_back ? hn::Not(front) : none);
}

/// Appends the lanes of `value` that `drawn` selects.
template <class D, class M, typename T>
HWY_INLINE void append(D lanes, hn::Vec<D> value, M drawn, T *end) {
    hn::StoreU(hn::Compress(value, hn::RebindMask(lanes, drawn)), lanes, end);
}

/// The point indices of the next vector of triangles as the polygon list gives them.
struct TriangleIndices {
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> first;
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> second;
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> third;
    /// The second and third point of the triangle's polygon.
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> tested_second;
    alignas(vector_bytes) std::array<std::int32_t, vector_lanes> tested_third;
};

/// Puts those triangles of the vector that face the viewer behind the batch. False, with nothing done, if an
/// index is not one of a point.
template <bool is_quad>
HWY_INLINE bool append_facing(const TriangleIndices &indices, const PolygonWalk &walk, TriangleBatch &batch) {
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;
    const auto a = hn::Load(ints, indices.first.data());
    const auto b = hn::Load(ints, indices.second.data());
    const auto c = hn::Load(ints, indices.third.data());
    const auto tested_b = is_quad ? hn::Load(ints, indices.tested_second.data()) : b;
    const auto tested_c = is_quad ? hn::Load(ints, indices.tested_third.data()) : c;
    auto largest = hn::Max(a, hn::Max(b, c));
    if (is_quad) {
        largest = hn::Max(largest, tested_b);
    }
    if (!hn::AllTrue(ints, hn::Lt(largest, hn::Set(ints, walk.points)))) {
        return false;
    }

    const Vec3 *records = lwopoints3.get();
    TestedCorners tested;
    tested.x = {gather_coordinate(records, a, 0), gather_coordinate(records, tested_b, 0),
                gather_coordinate(records, tested_c, 0)};
    tested.y = {gather_coordinate(records, a, 1), gather_coordinate(records, tested_b, 1),
                gather_coordinate(records, tested_c, 1)};
    const auto drawn = facing_viewer(tested, walk.sides);
    const std::size_t count = hn::CountTrue(floats, drawn);
    if (count == 0) {
        return true;
    }

    const std::size_t end = batch.count;
    const std::array<Ints, 3> corners{a, b, c};
    for (std::size_t corner = 0; corner < 3; ++corner) {
        const auto x =
            is_quad && corner > 0 ? gather_coordinate(records, corners[corner], 0) : tested.x[corner];
        const auto y =
            is_quad && corner > 0 ? gather_coordinate(records, corners[corner], 1) : tested.y[corner];
        const auto depth = gather_coordinate(records, corners[corner], 2);
        append(words, hn::BitCast(words, corners[corner]), drawn, &batch.point[corner][end]);
        append(floats, x, drawn, &batch.x[corner][end]);
        append(floats, y, drawn, &batch.y[corner][end]);
        append(floats, depth, drawn, &batch.quantity[0][corner][end]);
        if (batch.keeps_lit_corners) {
            const std::array<Ints, 3> lit{a, tested_b, tested_c};
            append(floats, tested.x[corner], drawn, &batch.lit_x[corner][end]);
            append(floats, tested.y[corner], drawn, &batch.lit_y[corner][end]);
            append(floats, is_quad ? gather_coordinate(records, lit[corner], 2) : depth, drawn,
                   &batch.lit_depth[corner][end]);
        }
    }
    if (batch.keeps_lit_corners) {
        const auto all = hn::Set(words, 1);
        const auto even = hn::AndNot(hn::Iota(words, 0), all);
        append(words, is_quad ? even : all, drawn, &batch.begins_polygon[end]);
    }
    batch.count += count;
    return true;
}

/// Takes as many polygons as a vector has lanes if all of them are triangles of points of the object.
HWY_INLINE bool take_triangles(PolygonWalk &walk, TriangleBatch &batch) {
    constexpr std::size_t words_each = 5;
    const std::size_t lanes = hn::Lanes(FloatLanes());
    if (walk.at + words_each * lanes > walk.words.size()) {
        return false;
    }
    TriangleIndices indices;
    const std::uint16_t *word = walk.words.data() + walk.at;
    std::uint32_t other_count = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane, word += words_each) {
        other_count |= word[0] ^ 3U;
        indices.first[lane] = word[1];
        indices.second[lane] = word[2];
        indices.third[lane] = word[3];
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
    if (quads == 0 || walk.at + words_each * quads > walk.words.size()) {
        return false;
    }
    TriangleIndices indices;
    const std::uint16_t *word = walk.words.data() + walk.at;
    std::uint32_t other_count = 0;
    for (std::size_t lane = 0; lane < 2 * quads; lane += 2, word += words_each) {
        other_count |= word[0] ^ 4U;
        for (const std::size_t half : {std::size_t{0}, std::size_t{1}}) {
            indices.first[lane + half] = word[1];
            indices.second[lane + half] = word[2 + half];
            indices.third[lane + half] = word[3 + half];
            indices.tested_second[lane + half] = word[2];
            indices.tested_third[lane + half] = word[3];
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
            walk.singly_until = walk.at + 5 * lanes;
        }
    }
    return batch.count != 0;
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif
