// SPDX-License-Identifier: MIT
// Triangles that wait until their band is drawn: what the batches leave, and how a band chooses from it.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_TRIANGLE_STORE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_TRIANGLE_STORE_INL_H
#undef ZELVO_RASTER_SIMD_TRIANGLE_STORE_INL_H
#else
#define ZELVO_RASTER_SIMD_TRIANGLE_STORE_INL_H
#endif

#include "hwy/highway.h"

#include "object/model.h"
#include "raster/simd/bands.h"
#include "raster/simd/compress-inl.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/load_points-inl.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/triangle_store.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// The first and the last row of each triangle of a vector.
struct TriangleRows {
    Ints first;
    Ints last;
};

/// The rows that the vector of triangles at `at` of the batch can have pixels in. A triangle draws nothing if
/// a corner's y is NaN: two of its edges are then NaN, so that each row has one whose x is at or left of the
/// frame's edge, or whose depth is never nearer. So its rows may be any.
HWY_INLINE TriangleRows rows_of_triangles(const TriangleBatch &batch, std::size_t at) {
    const FloatLanes floats;
    const Floats a = hn::Load(floats, &batch.y[0][at]);
    const Floats b = hn::Load(floats, &batch.y[1][at]);
    const Floats c = hn::Load(floats, &batch.y[2][at]);
    return {to_int(hn::Min(a, hn::Min(b, c))), to_int(hn::Max(a, hn::Max(b, c)))};
}

/// Stores the triangles of a batch whose points are numbered. The store has room for it.
HWY_INLINE void store_batch(const TriangleBatch &batch, TriangleStore &store) {
    const IntLanes ints;
    const WordLanes words;
    StoredBatch &stored = store.batches[store.count++];
    Ints first = hn::Set(ints, std::numeric_limits<std::int32_t>::max());
    Ints last = hn::Set(ints, std::numeric_limits<std::int32_t>::min());
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(words)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            hn::Store(hn::Load(words, &batch.point[corner][at]), words, &stored.point[corner][at]);
        }
        hn::Store(hn::Load(words, &batch.colour[at]), words, &stored.colour[at]);
        const TriangleRows rows = rows_of_triangles(batch, at);
        hn::Store(rows.first, ints, &stored.first_row[at]);
        hn::Store(rows.last, ints, &stored.last_row[at]);
        const auto is_triangle = hn::FirstN(ints, batch.count - at);
        first = hn::Min(first, hn::IfThenElse(is_triangle, rows.first, first));
        last = hn::Max(last, hn::IfThenElse(is_triangle, rows.last, last));
    }
    stored.count = batch.count;
    stored.rows = {hn::GetLane(hn::MinOfLanes(ints, first)), hn::GetLane(hn::MaxOfLanes(ints, last))};
}

/// Appends those of the vector of stored triangles at `at` that can have pixels in the band to the batch,
/// which has room for a vector.
HWY_INLINE void append_in_band(const StoredBatch &stored, std::size_t at, const RowRange &band,
                               TriangleBatch &batch) {
    const IntLanes ints;
    const WordLanes words;
    const auto is_below = hn::Gt(hn::Load(ints, &stored.first_row[at]), hn::Set(ints, band.last));
    const auto is_above = hn::Lt(hn::Load(ints, &stored.last_row[at]), hn::Set(ints, band.first));
    const auto is_triangle = hn::FirstN(ints, stored.count - at);
    const auto in_band = hn::AndNot(hn::Or(is_below, is_above), is_triangle);
    const std::size_t end = batch.count;
    const Compress append(in_band);
    for (std::size_t corner = 0; corner < 3; ++corner) {
        append(words, hn::Load(words, &stored.point[corner][at]), &batch.point[corner][end]);
    }
    append(words, hn::Load(words, &stored.colour[at]), &batch.colour[end]);
    batch.count += hn::CountTrue(ints, in_band);
}

/// Reads the corners on the screen of a batch whose points are known.
HWY_INLINE void load_corners(TriangleBatch &batch) {
    const FloatLanes floats;
    const Vec3 *records = lwopoints3.get();
    for (std::size_t at = 0; at < batch.count; at += hn::Lanes(floats)) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t *points = &batch.point[corner][at];
            const Points p = load_points(records, [points](std::size_t lane) { return points[lane]; });
            hn::Store(p.x, floats, &batch.x[corner][at]);
            hn::Store(p.y, floats, &batch.y[corner][at]);
            hn::Store(p.z, floats, &batch.quantity[0][corner][at]);
        }
    }
}

/// Chooses the stored triangles that can have pixels in a band, in the order in which they were stored.
/// `draw` is called for each batch of them, which is then in `batch`.
template <typename Draw>
HWY_INLINE void draw_stored(const TriangleStore &store, const RowRange &band, TriangleBatch &batch,
                            Draw draw) {
    const std::size_t lanes = hn::Lanes(IntLanes());
    batch.count = 0;
    for (std::size_t i = 0; i < store.count; ++i) {
        const StoredBatch &stored = store.batches[i];
        if (stored.rows.first > band.last || stored.rows.last < band.first) {
            continue;
        }
        for (std::size_t at = 0; at < stored.count; at += lanes) {
            if (batch.count + lanes > TriangleBatch::capacity) {
                draw();
                batch.count = 0;
            }
            append_in_band(stored, at, band, batch);
        }
    }
    if (batch.count > 0) {
        draw();
    }
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
