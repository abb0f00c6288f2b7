// SPDX-License-Identifier: MIT
// Takes the records of a vector of points apart into a vector of each coordinate.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_POINT_RECORDS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_POINT_RECORDS_INL_H
#undef ZELVO_RASTER_SIMD_POINT_RECORDS_INL_H
#else
#define ZELVO_RASTER_SIMD_POINT_RECORDS_INL_H
#endif

#include "object/model.h"
#include "raster/simd/conversions-inl.h"

#include <array>
#include <cstddef>

// A processor without any vectors has no blocks of lanes, and draws by the plain forms.
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

/// The records of every fourth point from that of lane `first` on, one in each block of four lanes. The last
/// lane of a block is what follows the record in memory: every array of points has a record to spare.
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

/// The points `point_of(lane)`, one for each lane, out of an array of records. A gather for each coordinate
/// would read the same; whole records, read and transposed, are three times as fast.
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
