// SPDX-License-Identifier: MIT
// From rows to spans, a vector of rows at once: rows of several triangles, or of one.
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

/// The places of a triangle's first rows.
template <class D>
HWY_INLINE hn::Vec<D> row_places(D lanes, std::size_t triangle) {
    const auto lane = static_cast<hn::TFromD<D>>(triangle);
    return hn::Add(hn::ShiftLeft<place_shift>(hn::Iota(lanes, 0)), hn::Set(lanes, lane));
}

/// Rows of several triangles by their places, in the group that begins at `group` of a batch.
class RowsOfMany {
public:
    HWY_INLINE RowsOfMany(std::size_t group, Words place)
        : group_(group), triangle_(hn::IndicesFromVec(IntLanes(), triangles(place))),
          row_(hn::ShiftRight<place_shift>(place)) {}

    /// The number of each lane's row, from 0 on.
    Words row() const { return row_; }

    /// The entry of each lane's triangle in an array of the batch.
    template <typename T>
    HWY_INLINE hn::Vec<hn::ScalableTag<T>> of_triangle(const BatchArray<T> &array) const {
        const hn::ScalableTag<T> lanes;
        const auto group = hn::BitCast(IntLanes(), hn::Load(lanes, &array[group_]));
        return hn::BitCast(lanes, hn::TableLookupLanes(group, triangle_));
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
};

/// Consecutive rows of one triangle of a batch, from `first_row` on.
class RowsOfOne {
public:
    HWY_INLINE RowsOfOne(std::size_t triangle, std::size_t first_row)
        : triangle_(triangle), row_(hn::Add(hn::Iota(WordLanes(), 0),
                                            hn::Set(WordLanes(), static_cast<std::uint32_t>(first_row)))) {}

    /// As in RowsOfMany.
    Words row() const { return row_; }

    template <typename T>
    HWY_INLINE hn::Vec<hn::ScalableTag<T>> of_triangle(const BatchArray<T> &array) const {
        return hn::Set(hn::ScalableTag<T>(), array[triangle_]);
    }

private:
    std::size_t triangle_;
    Words row_;
};

/// The values of edges in a vector of rows.
template <class Rows>
class EdgeValues {
public:
    HWY_INLINE EdgeValues(const BatchEdges &edges, const Rows &rows)
        : rows_(rows), is_upper_(hn::RebindMask(
                           WordLanes(), hn::Lt(as_signed(rows.row()), rows.of_triangle(edges.upper_rows)))) {}

    /// The accumulator in each row, start + row * step, on the upper rows' edge or on the lower rows'.
    HWY_INLINE Words value(const EdgeAccumulator &upper, const EdgeAccumulator &lower) const {
        return hn::Add(choose(upper.start, lower.start),
                       hn::Mul(rows_.row(), choose(upper.step, lower.step)));
    }

private:
    HWY_INLINE Words choose(const BatchArray<std::uint32_t> &upper,
                            const BatchArray<std::uint32_t> &lower) const {
        return hn::IfThenElse(is_upper_, rows_.of_triangle(upper), rows_.of_triangle(lower));
    }

    const Rows &rows_;
    hn::Mask<WordLanes> is_upper_;
};

/// Where the spans of a vector of rows are. A row without pixels has no positive length.
struct RowPixels {
    /// The left edge's x accumulator.
    Words left_x;
    /// The first pixel, counted from the target's first.
    Words offset;
    Ints length;
};

template <class Rows>
HWY_INLINE RowPixels pixels_of(const Rows &rows, const BatchEdges &edges) {
    const IntLanes ints;
    const WordLanes words;
    const EdgeValues<Rows> at(edges, rows);
    const Words left_x = at.value(edges.upper.left_x, edges.lower.left_x);
    const Words right_x = at.value(edges.upper.right_x, edges.lower.right_x);
    const Ints right = hn::ShiftRight<16>(as_signed(right_x));
    const Ints first = hn::Max(hn::ShiftRight<16>(as_signed(left_x)), hn::Zero(ints));
    const Words frame_row = hn::Add(rows.row(), as_fixed(rows.of_triangle(edges.first_row)));
    const auto width = hn::Set(words, static_cast<std::uint32_t>(frame_width));
    return {left_x, hn::Add(hn::Mul(frame_row, width), as_fixed(first)),
            hn::Sub(hn::Min(right, hn::Set(ints, frame_width)), first)};
}

/// What the spans of a vector of rows draw: each quantity's value in the first pixel, and its step. The
/// operations are those of draw_span.
template <class Rows>
class RowQuantities {
public:
    HWY_INLINE RowQuantities(const Rows &rows, const BatchEdges &edges, Words left_x)
        : rows_(rows), edges_(edges), at_(edges, rows) {
        const IntLanes ints;
        const WordLanes words;
        // The left edge's quantities are corrected to the first pixel's own x, which is 0 where the edge is
        // left of the frame, and advanced by one whole pixel.
        const Ints outside = hn::Min(hn::ShiftRight<16>(as_signed(left_x)), hn::Zero(ints));
        skipped_and_one_ = hn::Sub(hn::Set(words, 1), as_fixed(outside));
        const Words fraction = hn::And(left_x, hn::Set(words, 0xFFFF));
        beyond_pixel_ = hn::ConvertTo(FloatLanes(), as_signed(fraction));
    }

    HWY_INLINE Words step(std::size_t q) const { return rows_.of_triangle(edges_.gradients.step[q]); }

    HWY_INLINE Words first(std::size_t q) const {
        const Words at_edge = at_.value(edges_.upper.left[q], edges_.lower.left[q]);
        const Floats per_pixel = rows_.of_triangle(edges_.gradients.per_pixel[q]);
        const Words at_pixel = hn::Sub(at_edge, as_fixed(to_int(hn::Mul(beyond_pixel_, per_pixel))));
        return hn::Add(at_pixel, hn::Mul(skipped_and_one_, step(q)));
    }

private:
    const Rows &rows_;
    const BatchEdges &edges_;
    const EdgeValues<Rows> at_;
    Words skipped_and_one_;
    Floats beyond_pixel_;
};

/// Which of the first `count` lanes are rows with pixels.
HWY_INLINE hn::Mask<IntLanes> drawn_rows(const RowPixels &pixels, std::size_t count) {
    const IntLanes ints;
    return hn::And(hn::Gt(pixels.length, hn::Zero(ints)), hn::FirstN(ints, count));
}

/// Appends the spans of the first `count` rows of a vector: where they are and which rows they are made from.
/// Many rows have no pixel, so what the pixels need is computed later, by complete_spans, in vectors that are
/// full.
HWY_INLINE void append_incomplete_spans(const BatchEdges &edges, std::size_t group, Words place,
                                        std::size_t count, SpanList &spans) {
    const IntLanes ints;
    const WordLanes words;
    const RowPixels pixels = pixels_of(RowsOfMany(group, place), edges);
    const auto is_drawn = drawn_rows(pixels, count);
    const std::size_t end = spans.count;
    const Compress append(is_drawn);
    append(words, pixels.offset, &spans.offset[end]);
    append(ints, pixels.length, &spans.length[end]);
    append(words, place, &spans.place[end]);
    append(words, pixels.left_x, &spans.left_x[end]);
    spans.count += hn::CountTrue(ints, is_drawn);
}

/// Computes what the group's spans draw, which are those from `first_span` on.
template <Filler filler>
HWY_INLINE void complete_spans(const TriangleBatch &batch, const BatchEdges &edges, std::size_t group,
                               std::size_t first_span, SpanList &spans) {
    const WordLanes words;
    for (std::size_t at = first_span; at < spans.count; at += hn::Lanes(words)) {
        const RowsOfMany rows(group, hn::LoadU(words, &spans.place[at]));
        const RowQuantities quantities(rows, edges, hn::LoadU(words, &spans.left_x[at]));
        for (std::size_t q = 0; q < quantities_of(filler); ++q) {
            hn::StoreU(quantities.first(q), words, &spans.value[q][at]);
            hn::StoreU(quantities.step(q), words, &spans.step[q][at]);
        }
        if constexpr (filler == Filler::flat) {
            hn::StoreU(rows.of_triangle(batch.colour), words, &spans.colour[at]);
        }
    }
}

/// Appends the spans of a triangle's next rows, at most a vector: the first `count` ones from `first_row` on.
template <Filler filler>
HWY_INLINE void append_spans(const TriangleBatch &batch, const BatchEdges &edges, std::size_t triangle,
                             std::size_t first_row, std::size_t count, SpanList &spans) {
    const IntLanes ints;
    const WordLanes words;
    const RowsOfOne rows(triangle, first_row);
    const RowPixels pixels = pixels_of(rows, edges);
    const RowQuantities quantities(rows, edges, pixels.left_x);
    const auto is_drawn = drawn_rows(pixels, count);
    const std::size_t end = spans.count;
    const Compress append(is_drawn);
    append(words, pixels.offset, &spans.offset[end]);
    append(ints, pixels.length, &spans.length[end]);
    for (std::size_t q = 0; q < quantities_of(filler); ++q) {
        append(words, quantities.first(q), &spans.value[q][end]);
        hn::StoreU(quantities.step(q), words, &spans.step[q][end]);
    }
    if constexpr (filler == Filler::flat) {
        hn::StoreU(rows.of_triangle(batch.colour), words, &spans.colour[end]);
    }
    spans.count += hn::CountTrue(ints, is_drawn);
}

} // namespace HWY_NAMESPACE
} // namespace fast
HWY_AFTER_NAMESPACE();

#endif

#endif
