// SPDX-License-Identifier: MIT
// What a filler needs of a batch besides the corners on the screen: map coordinates or colours.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_BATCH_ATTRIBUTES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_BATCH_ATTRIBUTES_INL_H
#undef ZELVO_RASTER_SIMD_BATCH_ATTRIBUTES_INL_H
#else
#define ZELVO_RASTER_SIMD_BATCH_ATTRIBUTES_INL_H
#endif

#include "hwy/highway.h"

#include "object/model.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/load_points-inl.h"
#include "raster/simd/triangle_batch.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Copies x and y of each corner's record into the map coordinates, as place_map_coordinates.
HWY_INLINE void copy_map_coordinates(TriangleBatch &batch, const Vec3 *records) {
    const FloatLanes floats;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(floats)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t *points = &batch.point[corner][at];
            const Points p = load_points(records, [points](std::size_t lane) { return points[lane]; });
            hn::Store(p.x, floats, &batch.quantity[1][corner][at]);
            hn::Store(p.y, floats, &batch.quantity[2][corner][at]);
        }
    }
}

/// Copies each corner's colour from `lwofis`.
HWY_INLINE void gather_colours(TriangleBatch &batch) {
    const FloatLanes floats;
    const IntLanes ints;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(floats)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const auto points = hn::BitCast(ints, hn::Load(WordLanes(), &batch.point[corner][at]));
            hn::Store(hn::GatherIndex(floats, lwofis.get(), points), floats, &batch.quantity[1][corner][at]);
        }
    }
}

/// Truncates the lights of flat triangles to bytes, as fill_tri_flat.
HWY_INLINE void make_colour_bytes(TriangleBatch &batch) {
    const WordLanes words;
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(words)) {
        const Words colour = as_fixed(to_int(hn::Load(FloatLanes(), &batch.light[at])));
        hn::Store(hn::And(colour, hn::Set(words, 0xFF)), words, &batch.colour[at]);
    }
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
