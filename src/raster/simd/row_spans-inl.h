// SPDX-License-Identifier: MIT
// From edges to spans: a vector of rows at once, of one triangle or of several, in drawing order.
// Compiled once for each instruction set.
#if defined(ZELVO_RASTER_SIMD_ROW_SPANS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#undef ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#else
#define ZELVO_RASTER_SIMD_ROW_SPANS_INL_H
#endif

#include "display/frame_buffers.h"
#include "raster/simd/conversions-inl.h"
#include "raster/simd/packing-inl.h"
#include "raster/simd/triangle_batch.h"

#include <algorithm>
#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace fast {
namespace HWY_NAMESPACE {

/// Takes a value of each lane's own triangle out of a vector that holds one value for each triangle of a
/// group.
class OfTriangle {
public:
    explicit OfTriangle(Ints triangle) : indices_(hn::IndicesFromVec(IntLanes(), triangle)) {}

    template <class D, typename T>
    HWY_INLINE hn::Vec<D> operator()(D lanes, const T *group) const {
        const auto values = hn::BitCast(IntLanes(), hn::Load(lanes, group));
        return hn::BitCast(lanes, hn::TableLookupLanes(values, indices_));
    }

private:
    decltype(hn::IndicesFromVec(IntLanes(), Ints())) indices_;
};

/// The accumulator in each lane's row: counted along the upper rows' edge or the lower rows'.
HWY_INLINE Words value_in_row(const EdgeWalk &upper, const EdgeWalk &lower, std::size_t group,
                              const OfTriangle &of_triangle, hn::Mask<WordLanes> is_upper, Words row) {
    const WordLanes words;
    const auto start = hn::IfThenElse(is_upper, of_triangle(words, &upper.start[group]),
                                      of_triangle(words, &lower.start[group]));
    const auto step = hn::IfThenElse(is_upper, of_triangle(words, &upper.step[group]),
                                     of_triangle(words, &lower.step[group]));
    return hn::Add(start, hn::Mul(row, step));
}

/// Appends the spans of a vector of rows, `row[i]` of the triangle in lane `triangle[i]` of the group, those
/// with pixels among the first `count` lanes.
template <std::size_t Count, bool has_colour>
HWY_INLINE void append_spans(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                             Ints triangle, Ints row, std::size_t count, SpanList &spans) {
    const FloatLanes floats;
    const IntLanes ints;
    const WordLanes words;
    const OfTriangle of_triangle(triangle);
    const auto is_upper = hn::RebindMask(words, hn::Lt(row, of_triangle(ints, &edges.upper_rows[group])));
    const Words row_word = as_fixed(row);

    const Words left_x =
        value_in_row(edges.upper.left_x, edges.lower.left_x, group, of_triangle, is_upper, row_word);
    const Words right_x =
        value_in_row(edges.upper.right_x, edges.lower.right_x, group, of_triangle, is_upper, row_word);
    const Ints left = hn::ShiftRight<16>(as_signed(left_x));
    const Ints right = hn::ShiftRight<16>(as_signed(right_x));
    const Ints first = hn::Max(left, hn::Zero(ints));
    const Ints length = hn::Sub(hn::Min(right, hn::Set(ints, frame_width)), first);
    const auto is_drawn = hn::And(hn::Gt(length, hn::Zero(ints)), hn::FirstN(ints, count));

    const Ints frame_row = hn::Add(row, of_triangle(ints, &edges.first_row[group]));
    const Words offset =
        hn::Add(hn::Mul(as_fixed(frame_row), hn::Set(words, static_cast<std::uint32_t>(frame_width))),
                as_fixed(first));
    const std::size_t end = spans.count;
    const Packing pack(is_drawn);
    const auto put = [&pack, end](auto lanes, auto value, auto &array)
                         HWY_ATTR { pack(lanes, value, &array[end]); };
    put(words, offset, spans.offset);
    put(ints, length, spans.length);

    // The left edge's quantities are corrected to the first pixel's own x and advanced by one whole pixel.
    const Words skipped_and_one = hn::Add(as_fixed(hn::Sub(first, left)), hn::Set(words, 1));
    const Floats beyond_pixel = hn::ConvertTo(floats, as_signed(hn::And(left_x, hn::Set(words, 0xFFFF))));
    for (std::size_t q = 0; q < Count; ++q) {
        const Words at_edge =
            value_in_row(edges.upper.left[q], edges.lower.left[q], group, of_triangle, is_upper, row_word);
        const Floats per_pixel = of_triangle(floats, &edges.per_pixel[q][group]);
        const Words pixel_step = of_triangle(words, &edges.pixel_step[q][group]);
        const Words at_pixel = hn::Sub(at_edge, as_fixed(to_int(hn::Mul(beyond_pixel, per_pixel))));
        put(words, hn::Add(at_pixel, hn::Mul(skipped_and_one, pixel_step)), spans.value[q]);
        put(words, pixel_step, spans.step[q]);
    }
    if (has_colour) {
        put(words, of_triangle(words, &batch.colour[group]), spans.colour);
    }
    spans.count += hn::CountTrue(ints, is_drawn);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif
