// SPDX-License-Identifier: MIT
// From rows to spans: a vector of rows at once, of one triangle or of several, in drawing order.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_ROW_SPANS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#undef ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#else
#define ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#endif

#include "hwy/highway.h"

#include "display/frame_buffers.h"
#include "raster/simd/batch_edges.h"
#include "raster/simd/compress-inl.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/span_list.h"
#include "raster/simd/triangle_batch.h"
#include "raster/simd/vector_size.h"

#include <cstddef>
#include <cstdint>

// Without vectors (Highway's EMU128 and SCALAR) the plain forms are used: not all operations exist there.
#if HWY_TARGET < HWY_EMU128

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// A group is the triangles of one vector of a batch. A place packs a row of a group into one number: bits 0
/// to 3 are the lane of its triangle, the bits above are the row, counted from the triangle's first drawn
/// row. So rows of several triangles can share a vector, and each lane still finds what belongs to it:
///
///     lane of the vector        0         1         2         3
///     place                  0x40      0x50      0x01      0x02
///     triangle, place & 15      0         0         1         2
///     row, place >> 4           4         5         0         0
///     left x                 start[0] + 4 * step[0],  start[0] + 5 * step[0],  start[1],  start[2]
///
/// The starts and steps of the whole group fit one vector, so that start[triangle] is a lookup of lanes in a
/// register.
constexpr int place_shift = 4;
static_assert(vector_lanes == 1U << place_shift);

/// The places of consecutive rows of a triangle, from `first_row` on.
template <class D>
HWY_INLINE hn::Vec<D> row_places(D lanes, std::size_t triangle, std::size_t first_row) {
    const auto first = static_cast<hn::TFromD<D>>((first_row << place_shift) + triangle);
    return hn::Add(hn::ShiftLeft<place_shift>(hn::Iota(lanes, 0)), hn::Set(lanes, first));
}

/// A vector of rows by their places, in the group that begins at `group` of a batch.
class RowVector {
public:
    HWY_INLINE RowVector(const BatchEdges &edges, std::size_t group, Words place)
        : group_(group), triangle_(hn::IndicesFromVec(IntLanes(), triangles(place))),
          row_(hn::ShiftRight<place_shift>(place)),
          is_upper_(hn::RebindMask(WordLanes(), hn::Lt(as_signed(row_), of_triangle(edges.upper_rows)))) {}

    Words row() const { return row_; }

    /// The entry of each lane's triangle in an array of the batch.
    template <typename T>
    HWY_INLINE hn::Vec<hn::ScalableTag<T>> of_triangle(const BatchArray<T> &array) const {
        const hn::ScalableTag<T> lanes;
        const auto group = hn::BitCast(IntLanes(), hn::Load(lanes, &array[group_]));
        return hn::BitCast(lanes, hn::TableLookupLanes(group, triangle_));
    }

    /// The accumulator in each lane's row, start + row * step, on the upper rows' edge or on the lower rows'.
    HWY_INLINE Words value(const EdgeAccumulator &upper, const EdgeAccumulator &lower) const {
        const Words start = hn::IfThenElse(is_upper_, of_triangle(upper.start), of_triangle(lower.start));
        const Words step = hn::IfThenElse(is_upper_, of_triangle(upper.step), of_triangle(lower.step));
        return hn::Add(start, hn::Mul(row_, step));
    }

private:
    /// Lanes without a row may hold any place; the mask keeps their lookups inside the vector.
    static HWY_INLINE Ints triangles(Words place) {
        const WordLanes words;
        const auto last_lane = hn::Set(words, static_cast<std::uint32_t>(hn::Lanes(words) - 1));
        return as_signed(hn::And(place, last_lane));
    }

    std::size_t group_;
    decltype(hn::IndicesFromVec(IntLanes(), Ints())) triangle_;
    Words row_;
    hn::Mask<WordLanes> is_upper_;
};

/// Appends the spans of a vector of rows, which are those with pixels among the first `count` lanes: where
/// they are and which rows they are made from. Many rows have no pixel, so what the pixels need is computed
/// later, by complete_spans, in vectors that are full.
HWY_INLINE void append_spans(const BatchEdges &edges, std::size_t group, Words place, std::size_t count,
                             SpanList &spans) {
    const IntLanes ints;
    const WordLanes words;
    const RowVector rows(edges, group, place);
    const Words left_x = rows.value(edges.upper.left_x, edges.lower.left_x);
    const Words right_x = rows.value(edges.upper.right_x, edges.lower.right_x);
    const Ints right = hn::ShiftRight<16>(as_signed(right_x));
    const Ints first = hn::Max(hn::ShiftRight<16>(as_signed(left_x)), hn::Zero(ints));
    const Ints length = hn::Sub(hn::Min(right, hn::Set(ints, frame_width)), first);
    const auto is_drawn = hn::And(hn::Gt(length, hn::Zero(ints)), hn::FirstN(ints, count));

    const Words frame_row = hn::Add(rows.row(), as_fixed(rows.of_triangle(edges.first_row)));
    const auto width = hn::Set(words, static_cast<std::uint32_t>(frame_width));
    const std::size_t end = spans.count;
    const Compress append(is_drawn);
    append(words, hn::Add(hn::Mul(frame_row, width), as_fixed(first)), &spans.offset[end]);
    append(ints, length, &spans.length[end]);
    append(words, place, &spans.place[end]);
    append(words, left_x, &spans.left_x[end]);
    spans.count += hn::CountTrue(ints, is_drawn);
}

/// Computes the first pixel's quantities and the steps of the group's spans, which are those from
/// `first_span` on. The operations are those of draw_span.
template <Filler filler>
HWY_INLINE void complete_spans(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                               std::size_t first_span, SpanList &spans) {
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;
    for (std::size_t at = first_span; at < spans.count; at += hn::Lanes(words)) {
        const RowVector rows(edges, group, hn::LoadU(words, &spans.place[at]));
        const Words left_x = hn::LoadU(words, &spans.left_x[at]);
        // The left edge's quantities are corrected to the first pixel's own x, which is 0 where the edge is
        // left of the frame, and advanced by one whole pixel.
        const Ints outside = hn::Min(hn::ShiftRight<16>(as_signed(left_x)), hn::Zero(ints));
        const Words skipped_and_one = hn::Sub(hn::Set(words, 1), as_fixed(outside));
        const Words fraction = hn::And(left_x, hn::Set(words, 0xFFFF));
        const Floats beyond_pixel = hn::ConvertTo(floats, as_signed(fraction));
        for (std::size_t q = 0; q < quantities_of(filler); ++q) {
            const Words at_edge = rows.value(edges.upper.left[q], edges.lower.left[q]);
            const Floats per_pixel = rows.of_triangle(edges.gradients.per_pixel[q]);
            const Words pixel_step = rows.of_triangle(edges.gradients.step[q]);
            const Words at_pixel = hn::Sub(at_edge, as_fixed(to_int(hn::Mul(beyond_pixel, per_pixel))));
            hn::StoreU(hn::Add(at_pixel, hn::Mul(skipped_and_one, pixel_step)), words, &spans.value[q][at]);
            hn::StoreU(pixel_step, words, &spans.step[q][at]);
        }
        if constexpr (filler == Filler::flat) {
            hn::StoreU(rows.of_triangle(batch.colour), words, &spans.colour[at]);
        }
    }
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
