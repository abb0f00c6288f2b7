// SPDX-License-Identifier: MIT
// Loads a vector of points and transposes them into one vector for each coordinate.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_LOAD_POINTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_LOAD_POINTS_INL_H
#undef ZELVO_RASTER_SIMD_LOAD_POINTS_INL_H
#else
#define ZELVO_RASTER_SIMD_LOAD_POINTS_INL_H
#endif

#include "hwy/highway.h"

#include "object/model.h"
#include "raster/simd/conversions-inl.h"

#include <array>
#include <cstddef>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// A vector of points.
struct Points {
    Floats x;
    Floats y;
    Floats z;
};

/// The records of the points of lanes `first`, `first` + 4, `first` + 8 and so on, one in each block of four
/// lanes. The fourth lane of a block is whatever follows the record in memory: every array of points has a
/// record to spare.
template <class D, typename PointOf>
HWY_INLINE hn::Vec<D> load_blocks(D lanes, const Vec3 *records, PointOf point_of, std::size_t first) {
    if constexpr (hn::MaxLanes(D()) == 4) {
        return hn::LoadU(lanes, &records[point_of(first)].x);
    } else {
        const hn::Half<D> half;
        return hn::Combine(lanes, load_blocks(half, records, point_of, first + hn::MaxLanes(half)),
                           load_blocks(half, records, point_of, first));
    }
}

/// The points `point_of(lane)`, one for each lane, from an array of records. A gather for each coordinate
/// would read the same; reading whole records and transposing them is three times as fast (docs/speed.md,
/// "Tried without gain").
///
/// With four lanes, a to d are the records of points 0 to 3:
///
///     a      x0 y0 z0 -      xy_ab  x0 x1 y0 y1      x   x0 x1 x2 x3
///     b      x1 y1 z1 -      xy_cd  x2 x3 y2 y3      y   y0 y1 y2 y3
///     c      x2 y2 z2 -      z_ab   z0 z1 -  -       z   z0 z1 z2 z3
///     d      x3 y3 z3 -      z_cd   z2 z3 -  -
///
/// Wider vectors do this in each block of four lanes: block 1 holds the points of lanes 4 to 7.
template <typename PointOf>
HWY_INLINE Points load_points(const Vec3 *records, PointOf point_of) {
    const FloatLanes floats;
    const hn::RepartitionToWide<WordLanes> pairs;
    std::array<Floats, 4> every_fourth;
    for (std::size_t i = 0; i < every_fourth.size(); ++i) {
        every_fourth[i] = load_blocks(floats, records, point_of, i);
    }
    const auto &[a, b, c, d] = every_fourth;
    const auto xy_ab = hn::BitCast(pairs, hn::InterleaveLower(floats, a, b));
    const auto xy_cd = hn::BitCast(pairs, hn::InterleaveLower(floats, c, d));
    const auto z_ab = hn::BitCast(pairs, hn::InterleaveUpper(floats, a, b));
    const auto z_cd = hn::BitCast(pairs, hn::InterleaveUpper(floats, c, d));
    return {hn::BitCast(floats, hn::InterleaveLower(pairs, xy_ab, xy_cd)),
            hn::BitCast(floats, hn::InterleaveUpper(pairs, xy_ab, xy_cd)),
            hn::BitCast(floats, hn::InterleaveLower(pairs, z_ab, z_cd))};
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
